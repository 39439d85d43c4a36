#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/DateTime.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorSharedPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Annotation.h"
#include "Oru/DataModel/MediaAssets/AssetType.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/MediaAssetParts.h"
#include "Oru/DataModel/MediaAssets/MediaAssetReference.h"
#include "Oru/DataModel/MediaAssets/MediaResource.h"
#include "Oru/DataModel/MediaAssets/MediaResourceReferenceVector.h"
#include "Oru/DataModel/MediaAssets/OwnedMetadata.h"
#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"
#include "Oru/DataModel/MediaAssets/Track.h"
#include "Oru/DataModel/MediaAssets/TrackLayout.h"
#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/TimeBoundary.h"

#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// A media asset, as a clip: what it is called, when its material runs, and all that belongs to it.
///
/// A copy has bounds and metadata of its own, and shares its tracks, layouts, resources and annotations with
/// the original. `Clone` shares none of these; only the assets of `Ancestor` and `Parent` are not part of
/// this one and stay shared. Both keep all object ids: the copy represents the same rows.
class ORU_DATAMODEL_EXPORT MediaAsset : public BaseTypes::PersistentObject {
 public:
  /// Tracks by their identifiers, and layouts of them:
  using TrackVector = BaseTypes::SortedVectorSharedPointer<Track>;
  using TrackLayoutVector = BaseTypes::SortedVectorSharedPointer<TrackLayout>;

  MediaAsset();
  /// A new object of that identifier, not stored yet.
  explicit MediaAsset(MediaAssetId assetId);
  MediaAsset(const MediaAsset&);
  MediaAsset(MediaAsset&&) noexcept;
  MediaAsset& operator=(const MediaAsset&);
  MediaAsset& operator=(MediaAsset&&) noexcept;
  ~MediaAsset();

  /// What callers know it by; unique among its kind in a file.
  const MediaAssetId& Id() const noexcept { return id; }
  void Id(MediaAssetId value) noexcept { id = std::move(value); }
  /// What kind of asset it is.
  MediaAssets::AssetType AssetType() const noexcept { return assetType; }
  void AssetType(MediaAssets::AssetType value) noexcept { assetType = value; }
  /// Of the two references a file keeps the identifier only.
  const MediaAssetReference& Ancestor() const noexcept { return ancestor; }
  void Ancestor(MediaAssetReference value) noexcept { ancestor = std::move(value); }
  /// As the ancestor.
  const MediaAssetReference& Parent() const noexcept { return parent; }
  void Parent(MediaAssetReference value) noexcept { parent = std::move(value); }
  /// The name that people see; needn't be unique.
  const BaseTypes::Utf8String& Name() const noexcept { return name; }
  void Name(BaseTypes::Utf8String value) noexcept { name = std::move(value); }
  /// A text about it.
  const BaseTypes::Utf8String& Description() const noexcept { return description; }
  void Description(BaseTypes::Utf8String value) noexcept { description = std::move(value); }

  /// Seconds since 1970, as all dates.
  BaseTypes::DateTime CreationDate() const noexcept { return creationDate; }
  /// Sets the modification date to the same.
  void CreationDate(BaseTypes::DateTime value) noexcept;
  /// Seconds since 1970, not below the creation date.
  BaseTypes::DateTime ModificationDate() const noexcept { return modificationDate; }
  /// @throws std::runtime_error for a date below the creation date; the modification date then stays
  void ModificationDate(BaseTypes::DateTime value);

  /// The in and out marks, those of `PhysicalTimebounds`.
  const TimePoints::TimeBoundary& InBoundary() const noexcept { return physicalTimebounds.InBoundary(); }
  void InBoundary(const TimePoints::TimeBoundary& value) noexcept { physicalTimebounds.InBoundary(value); }
  /// The out mark of `PhysicalTimebounds`.
  const TimePoints::TimeBoundary& OutBoundary() const noexcept { return physicalTimebounds.OutBoundary(); }
  void OutBoundary(const TimePoints::TimeBoundary& value) noexcept { physicalTimebounds.OutBoundary(value); }

  /// The stretches of time for which there is material.
  const TimeBoundsArray& PhysicalTimebounds() const noexcept { return physicalTimebounds; }
  TimeBoundsArray& PhysicalTimebounds() noexcept { return physicalTimebounds; }
  /// Generic profiles and the operator's profile.
  const BaseTypes::EditorialMetadata& Metadata() const noexcept { return *metadata; }
  BaseTypes::EditorialMetadata& Metadata() noexcept { return *metadata; }
  /// The tracks, shared with the assets that use them too.
  const TrackVector& Tracks() const noexcept { return tracks; }
  TrackVector& Tracks() noexcept { return tracks; }
  /// Not stored.
  const TrackLayoutVector& TrackLayouts() const noexcept { return trackLayouts; }
  TrackLayoutVector& TrackLayouts() noexcept { return trackLayouts; }
  /// References to the resources that hold the material.
  const MediaResourceReferenceVector& MediaResources() const noexcept { return mediaResources; }
  MediaResourceReferenceVector& MediaResources() noexcept { return mediaResources; }
  /// The annotations, in the caller's order.
  const AnnotationArray& Annotations() const noexcept { return annotations; }
  AnnotationArray& Annotations() noexcept { return annotations; }

  /// Whether `Metadata` holds the operator's profile. False if a profile of another class has its name.
  bool HasDapOperatorMetadata() const;
  /// The operator's profile in `Metadata`.
  /// @throws std::out_of_range "map::at" without one, std::bad_cast if a profile of another class has its
  ///         name
  const DapOperatorMetadataProfile& DapOperatorMetadata() const;
  DapOperatorMetadataProfile& DapOperatorMetadata();

  /// How much material there is, as `TimeBoundsArray::GetDuration` of the physical bounds.
  TimePoints::Duration GetDuration() const { return physicalTimebounds.GetDuration(); }
  /// The time between the marks, as `TimeBoundsArray::GetInOutDuration` of the physical bounds.
  TimePoints::Duration GetInOutDuration() const { return physicalTimebounds.GetInOutDuration(); }

  /// Which parts of the asset this object holds: all of them, unless `MediaAssetRepository` read it in part.
  /// A `MediaAssetRepository::Put` writes these parts and leaves the others as the file has them.
  MediaAssetParts HeldParts() const noexcept { return heldParts; }
  void HeldParts(MediaAssetParts value) noexcept { heldParts = value; }

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<MediaAsset> Clone() const;

  /// The same identifier and content. Annotations compare by value, tracks by identifier and name, resources
  /// by identifier and, where both sides hold them, by value; the ancestor and the parent by identifier.
  /// Object ids and held parts don't count.
  /// @throws std::runtime_error where track layouts that are to be compared have lost a track
  bool operator==(const MediaAsset& other) const;
  bool operator!=(const MediaAsset& other) const { return !(*this == other); }
  /// By identifier.
  bool operator<(const MediaAsset& other) const noexcept { return id < other.id; }

 private:
  MediaAssetId id;
  MediaAssets::AssetType assetType = MediaAssets::AssetType::unknown;
  MediaAssetReference ancestor;
  MediaAssetReference parent;
  BaseTypes::Utf8String name;
  BaseTypes::Utf8String description;
  TimeBoundsArray physicalTimebounds;
  BaseTypes::DateTime creationDate = 0;
  BaseTypes::DateTime modificationDate = 0;
  OwnedMetadata metadata;
  TrackVector tracks;
  TrackLayoutVector trackLayouts;
  MediaResourceReferenceVector mediaResources;
  AnnotationArray annotations;
  MediaAssetParts heldParts = MediaAssetParts::All;
};

}  // namespace Oru::DataModel::MediaAssets
