#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorWeakPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/Track.h"

#include <utility>

namespace Oru::DataModel::MediaAssets {

/// One place of a track layout, with the tracks that belong there. It doesn't keep the tracks alive: they are
/// those of the asset. Not stored.
class ORU_DATAMODEL_EXPORT TrackLayoutItem : public BaseTypes::PersistentObject {
 public:
  /// Tracks that the item doesn't keep alive.
  using TrackVector = BaseTypes::SortedVectorWeakPointer<Track>;

  TrackLayoutItem() = default;
  /// Takes the identifier and the name; empty otherwise.
  explicit TrackLayoutItem(BaseTypes::Identifier itemId, BaseTypes::Utf8String itemName = {})
      : id(std::move(itemId)), name(std::move(itemName)) {}

  /// What callers know it by; unique among its kind in a file.
  const BaseTypes::Identifier& Id() const noexcept { return id; }
  void Id(BaseTypes::Identifier value) noexcept { id = std::move(value); }
  /// The name that people see; needn't be unique.
  const BaseTypes::Utf8String& Name() const noexcept { return name; }
  void Name(BaseTypes::Utf8String value) noexcept { name = std::move(value); }
  /// The tracks that the item shows.
  const TrackVector& Tracks() const noexcept { return tracks; }
  TrackVector& Tracks() noexcept { return tracks; }

  /// The same identifier, name and tracks.
  /// @throws std::runtime_error where a track that is to be compared is gone
  bool operator==(const TrackLayoutItem& other) const;
  bool operator!=(const TrackLayoutItem& other) const { return !(*this == other); }
  /// By identifier.
  bool operator<(const TrackLayoutItem& other) const noexcept { return id < other.id; }

 private:
  BaseTypes::Identifier id;
  BaseTypes::Utf8String name;
  TrackVector tracks;
};

}  // namespace Oru::DataModel::MediaAssets
