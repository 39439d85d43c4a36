#pragma once

#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace Catalogue {

/// The catalogue's file: the database and what stores and reads clips, groups and edits in it.
class ClipStore {
 public:
  using MediaAsset = Oru::DataModel::MediaAssets::MediaAsset;
  using MediaAssetParts = Oru::DataModel::MediaAssets::MediaAssetParts;

  enum class Outcome { Added, Updated, Refused };

  struct Added {
    /// One a clip.
    std::vector<Outcome> outcomes;
    std::vector<Oru::DataModel::MediaAssets::Database::NotStored> refused;
  };

  /// Opens the file, and makes it if it isn't there.
  /// @param log  where the database writes what SQLite refused
  ClipStore(const std::string& file, const std::shared_ptr<std::ostream>& log);

  Oru::DataModel::MediaAssets::Database::DataModelDatabase& Database() { return mDatabase; }
  Oru::DataModel::MediaAssets::Database::MediaAssetRepository& Clips() { return mClips; }
  Oru::DataModel::MediaAssets::Database::MediaAssetGroupRepository& Groups() { return mGroups; }
  Oru::BusinessEntityModel::Edits::Database::EditRepository& Edits() { return mEdits; }

  /// Stores what media files say, in one transaction. Of a clip that is stored already, all that people have added
  /// stays. A clip that can't be stored costs itself alone.
  Added Add(std::vector<MediaAsset>& clips);

  /// The one clip whose identifier begins with the text, or whose name is the text.
  /// @throws std::runtime_error if there is none, or several
  MediaAsset Find(const std::string& idOrName, MediaAssetParts parts = MediaAssetParts::Row);

  /// Lets `change` work on a clip, and stores it with the present modification date.
  /// @return the clip as stored
  MediaAsset Change(const std::string& idOrName, const std::function<void(MediaAsset&)>& change);

  /// Stores a group in place of the one of the same identifier, whatever the kinds of the two are. To
  /// be called within a transaction.
  void PutGroup(Oru::DataModel::MediaAssets::MediaAssetGroup& group);

 private:
  Oru::DataModel::MediaAssets::Database::DataModelDatabase mDatabase;
  Oru::DataModel::MediaAssets::Database::MediaAssetRepository mClips;
  Oru::DataModel::MediaAssets::Database::MediaAssetGroupRepository mGroups;
  Oru::BusinessEntityModel::Edits::Database::EditRepository mEdits;
};

}  // namespace Catalogue
