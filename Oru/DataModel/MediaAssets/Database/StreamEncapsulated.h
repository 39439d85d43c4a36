#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/StreamReference.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What `StreamTable` writes: a stream beside the key of the resource that it belongs to.
/// The stream stays the caller's.
struct ORU_DATAMODEL_DATABASE_EXPORT StreamEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  StreamEncapsulated(int64_t mediaResourceKey, Stream& ownedStream)
      : fk(mediaResourceKey), stream(ownedStream) {}
  /// @param reference  must hold a loaded stream
  StreamEncapsulated(int64_t mediaResourceKey, StreamReference& reference)
      : StreamEncapsulated(mediaResourceKey, reference.Value()) {}

  /// The key of the owner.
  int64_t fk;
  /// What is stored. The table that stores it sets its object id.
  const Stream& stream;
};

}  // namespace Oru::DataModel::MediaAssets::Database
