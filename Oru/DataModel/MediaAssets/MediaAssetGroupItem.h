#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/MediaAssetReference.h"

#include <memory>
#include <vector>

namespace Oru::DataModel::MediaAssets {

/// An asset as a member of a group. A copy refers to the same asset, as a clone does: the asset isn't the
/// item's own.
class ORU_DATAMODEL_EXPORT MediaAssetGroupItem : public BaseTypes::PersistentObject {
 public:
  MediaAssetGroupItem();
  /// An item that refers to the asset.
  explicit MediaAssetGroupItem(MediaAssetReference asset);
  MediaAssetGroupItem(const MediaAssetGroupItem&);
  MediaAssetGroupItem(MediaAssetGroupItem&&) noexcept;
  MediaAssetGroupItem& operator=(const MediaAssetGroupItem&);
  MediaAssetGroupItem& operator=(MediaAssetGroupItem&&) noexcept;
  virtual ~MediaAssetGroupItem();

  /// The same identifier of the asset. Object ids and loaded assets don't count. A derived class may ask for
  /// more, so that the answer can depend on which of the two is asked.
  virtual bool operator==(const MediaAssetGroupItem& other) const;
  virtual bool operator!=(const MediaAssetGroupItem& other) const;

  /// A copy of the object's own class, with its object id.
  virtual std::unique_ptr<MediaAssetGroupItem> Clone() const;

  /// What the item refers to.
  const MediaAssetReference& MediaAsset() const noexcept { return mediaAsset; }
  void MediaAsset(const MediaAssetReference& value);
  void MediaAsset(MediaAssetReference&& value) noexcept;

 private:
  MediaAssetReference mediaAsset;
};

/// The items of a group, in its order. No pointer is null.
using MediaAssetGroupItemArray = std::vector<std::shared_ptr<MediaAssetGroupItem>>;

}  // namespace Oru::DataModel::MediaAssets
