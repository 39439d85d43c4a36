#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/DateTime.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/OwnedSharedMetadata.h"
#include "Oru/DataModel/MediaAssets/ResourceFormat.h"
#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/StreamReference.h"
#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"

#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// A media resource: what one recording or one import brought in, as a number of streams. Several assets may
/// refer to one resource.
///
/// A copy has metadata of its own and shares the streams with its original; `Clone` has streams of its own.
/// Both keep the object ids. A resource that was moved from may only be assigned to or destroyed.
class ORU_DATAMODEL_EXPORT MediaResource : public BaseTypes::PersistentObject {
 public:
  MediaResource();
  /// A new object of that identifier, not stored yet.
  explicit MediaResource(MediaResourceId resourceId);
  MediaResource(const MediaResource&);
  MediaResource(MediaResource&&) noexcept;
  MediaResource& operator=(const MediaResource&);
  MediaResource& operator=(MediaResource&&) noexcept;
  ~MediaResource();

  /// What callers know it by; unique among its kind in a file.
  const MediaResourceId& Id() const noexcept { return id; }
  void Id(MediaResourceId value) noexcept { id = std::move(value); }
  /// The name that people see; needn't be unique.
  BaseTypes::Utf8String Name() const { return name; }
  void Name(BaseTypes::Utf8String value) noexcept { name = std::move(value); }
  /// How the material is packed, in general.
  ResourceFormat GeneralFormat() const noexcept { return generalFormat; }
  void GeneralFormat(ResourceFormat value) noexcept { generalFormat = value; }

  /// Seconds since 1970, as all dates.
  BaseTypes::DateTime CreationDate() const noexcept { return creationDate; }
  /// Sets the modification date to the same.
  void CreationDate(BaseTypes::DateTime value) noexcept;
  /// Seconds since 1970, not below the creation date.
  BaseTypes::DateTime ModificationDate() const noexcept { return modificationDate; }
  /// @throws std::runtime_error for a date below the present modification date, which then stays
  void ModificationDate(BaseTypes::DateTime value);

  /// In the order in which they were read or added; may hold references that only know an identifier.
  const StreamReferenceVector& Streams() const noexcept { return streams; }
  StreamReferenceVector& Streams() noexcept { return streams; }
  /// The stretches of time for which there is material.
  const TimeBoundsArray& Timebounds() const noexcept { return timebounds; }
  TimeBoundsArray& Timebounds() noexcept { return timebounds; }
  /// Never null.
  const std::shared_ptr<BaseTypes::MetadataProfileDictionary>& Metadata() const noexcept {
    return metadata.Pointer();
  }

  /// Appends a reference that holds the stream.
  /// @throws std::invalid_argument for a null pointer
  void Adopt(std::unique_ptr<Stream>&& stream);
  /// Appends a reference that only knows the identifier of its stream.
  void Add(const MediaResourceId& streamId);

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<MediaResource> Clone() const;

  /// The same identifier and content. Streams compare by identifier and, where both sides hold them, by
  /// value. Object ids don't count.
  bool operator==(const MediaResource& other) const;
  bool operator!=(const MediaResource& other) const { return !(*this == other); }
  /// By identifier.
  bool operator<(const MediaResource& other) const noexcept { return id < other.id; }

 private:
  MediaResourceId id;
  BaseTypes::Utf8String name;
  ResourceFormat generalFormat = ResourceFormat::unknown;
  StreamReferenceVector streams;
  TimeBoundsArray timebounds;
  BaseTypes::DateTime creationDate = 0;
  BaseTypes::DateTime modificationDate = 0;
  OwnedSharedMetadata metadata;
};

}  // namespace Oru::DataModel::MediaAssets
