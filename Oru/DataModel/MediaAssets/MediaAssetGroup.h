#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/MediaAssetReference.h"
#include "Oru/DataModel/MediaAssets/OwnedMetadata.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// A named set of media assets.
///
/// A copy has metadata of its own and shares the items with its original; `Clone` has items of its own. Both
/// keep the object ids and refer to the same assets.
class ORU_DATAMODEL_EXPORT MediaAssetGroup : public BaseTypes::PersistentObject {
 public:
  MediaAssetGroup();
  /// A group without items.
  MediaAssetGroup(MediaAssetGroupId groupId, BaseTypes::Utf8String groupName);
  MediaAssetGroup(const MediaAssetGroup&);
  MediaAssetGroup(MediaAssetGroup&&) noexcept;
  MediaAssetGroup& operator=(const MediaAssetGroup&);
  MediaAssetGroup& operator=(MediaAssetGroup&&) noexcept;
  virtual ~MediaAssetGroup();

  /// A copy of the object's own class.
  virtual std::unique_ptr<MediaAssetGroup> Clone() const;

  /// What callers know it by; unique among its kind in a file.
  const MediaAssetGroupId& Id() const noexcept { return id; }
  void Id(MediaAssetGroupId value) noexcept { id = std::move(value); }
  /// Free text: it doesn't make a group a multi-angle one.
  const BaseTypes::Utf8String& Type() const noexcept { return type; }
  void Type(BaseTypes::Utf8String value) noexcept { type = std::move(value); }
  /// The name that people see; needn't be unique.
  const BaseTypes::Utf8String& Name() const noexcept { return name; }
  void Name(BaseTypes::Utf8String value) noexcept { name = std::move(value); }

  /// The items in order.
  const MediaAssetGroupItemArray& Items() const noexcept { return items; }
  MediaAssetGroupItemArray& Items() noexcept { return items; }
  /// Stored for multi-angle groups only, and of them only the operator's profile.
  const BaseTypes::MetadataProfileDictionary& Metadata() const noexcept { return *metadata; }
  BaseTypes::MetadataProfileDictionary& Metadata() noexcept { return *metadata; }

  /// The first item that refers to the asset; null if there is none.
  std::shared_ptr<MediaAssetGroupItem> Find(const MediaAssetId& assetId) const;
  /// Whether an item refers to the asset.
  bool HasAsset(const MediaAssetId& assetId) const { return Find(assetId) != nullptr; }

  /// The item at an index from 0; std::out_of_range for one that isn't there, as in the next two.
  const MediaAssetGroupItem& Item(std::size_t index) const { return *items.at(index); }
  MediaAssetGroupItem& Item(std::size_t index) { return *items.at(index); }
  /// What the item refers to.
  const MediaAssetReference& ItemReference(std::size_t index) const { return Item(index).MediaAsset(); }
  /// The asset of the item; null if it isn't loaded.
  std::shared_ptr<const MediaAsset> Asset(std::size_t index) const;

  /// The same number of items, equal in pairs in their order. This group's items are the ones that are asked.
  bool AreItemsEqual(const MediaAssetGroup& other) const;

  /// The same identifier, type, name, metadata and items. Object ids and classes of groups don't count.
  bool operator==(const MediaAssetGroup& other) const;
  bool operator!=(const MediaAssetGroup& other) const { return !(*this == other); }

 private:
  OwnedMetadata metadata;
  MediaAssetGroupId id;
  BaseTypes::Utf8String type;
  BaseTypes::Utf8String name;
  MediaAssetGroupItemArray items;
};

}  // namespace Oru::DataModel::MediaAssets
