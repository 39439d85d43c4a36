#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/DataModel/MediaAssets/Essence.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/Location.h"
#include "Oru/DataModel/MediaAssets/OwnedSharedMetadata.h"
#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"
#include "Oru/DataModel/MediaAssets/WrapperFormat.h"

#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// One stream of a media resource, as a file or a transport, and the essences inside it.
///
/// A copy owns what it holds, essences and metadata included, and keeps the object ids; `Clone` gives such a
/// copy. A stream that was moved from may only be assigned to or destroyed.
class ORU_DATAMODEL_EXPORT Stream : public BaseTypes::PersistentObject {
 public:
  Stream();
  /// A new object of that identifier, not stored yet.
  explicit Stream(StreamId id);
  Stream(const Stream&);
  Stream(Stream&&) noexcept;
  Stream& operator=(const Stream&);
  Stream& operator=(Stream&&) noexcept;
  ~Stream();

  /// What callers know it by; unique among its kind in a file.
  const StreamId& Id() const noexcept { return streamId; }
  void Id(StreamId value) noexcept { streamId = std::move(value); }
  /// How the file is packed.
  WrapperFormat Format() const noexcept { return format; }
  void Format(WrapperFormat value) noexcept { format = value; }

  /// The stretches of time for which there is material.
  const TimeBoundsArray& Timebounds() const noexcept { return timebounds; }
  TimeBoundsArray& Timebounds() noexcept { return timebounds; }
  /// Never null.
  const std::shared_ptr<BaseTypes::MetadataProfileDictionary>& Metadata() const noexcept {
    return metadata.Pointer();
  }
  /// The essences, numbered by their positions.
  const EssenceArray& Essences() const noexcept { return essences; }
  EssenceArray& Essences() noexcept { return essences; }
  /// Not stored.
  const LocationArray& Locations() const noexcept { return locations; }
  LocationArray& Locations() noexcept { return locations; }

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<Stream> Clone() const;

  /// The same identifier and content, with essences compared by value. Object ids don't count.
  bool operator==(const Stream& other) const;
  bool operator!=(const Stream& other) const { return !(*this == other); }

 private:
  WrapperFormat format = WrapperFormat::unknown;
  TimeBoundsArray timebounds;
  OwnedSharedMetadata metadata;
  EssenceArray essences;
  LocationArray locations;
  StreamId streamId;
};

}  // namespace Oru::DataModel::MediaAssets
