#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVector.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/TrackLayoutItem.h"

#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// A named arrangement of the tracks of an asset. Not stored: an asset that was stored comes back without
/// layouts.
///
/// A copy has items of its own, with the same tracks.
class ORU_DATAMODEL_EXPORT TrackLayout : public BaseTypes::PersistentObject {
 public:
  /// The items in their order.
  using ItemVector = BaseTypes::SortedVector<TrackLayoutItem>;

  TrackLayout() = default;
  /// Takes the identifier and the name; empty otherwise.
  explicit TrackLayout(BaseTypes::Identifier layoutId, BaseTypes::Utf8String layoutName = {})
      : id(std::move(layoutId)), name(std::move(layoutName)) {}

  /// What callers know it by; unique among its kind in a file.
  const BaseTypes::Identifier& Id() const noexcept { return id; }
  void Id(BaseTypes::Identifier value) noexcept { id = std::move(value); }
  /// The name that people see; needn't be unique.
  const BaseTypes::Utf8String& Name() const noexcept { return name; }
  void Name(BaseTypes::Utf8String value) noexcept { name = std::move(value); }
  /// The items.
  const ItemVector& TrackLayoutItems() const noexcept { return trackLayoutItems; }
  ItemVector& TrackLayoutItems() noexcept { return trackLayoutItems; }

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<TrackLayout> Clone() const;

  /// The same identifier, name and items.
  /// @throws std::runtime_error where a track that is to be compared is gone
  bool operator==(const TrackLayout& other) const;
  bool operator!=(const TrackLayout& other) const { return !(*this == other); }
  /// By identifier.
  bool operator<(const TrackLayout& other) const noexcept { return id < other.id; }

 private:
  BaseTypes::Identifier id;
  BaseTypes::Utf8String name;
  ItemVector trackLayoutItems;
};

}  // namespace Oru::DataModel::MediaAssets
