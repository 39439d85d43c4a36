#pragma once

#include "Oru/BusinessEntityModel/Edits/Edit.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace Catalogue {

/// The catalogue's file: clips, groups and edits go in and come out. All that the catalogue asks of the
/// database stands in this class.
///
/// Each operation that writes is one transaction: it stores all of what it is given, or throws
/// `std::runtime_error` and stores nothing.
class ClipStore {
 public:
  using MediaAsset = Oru::DataModel::MediaAssets::MediaAsset;
  using Edit = Oru::BusinessEntityModel::Edits::Edit;

  enum class Outcome { Added, Updated };

  /// Opens the file, and makes it if it isn't there.
  /// @param log  where the database tells what SQLite refused
  ClipStore(const std::string& file, const std::shared_ptr<std::ostream>& log);

  /// Stores what a media file says. Of a clip that is stored already, all that users have added stays:
  /// description, annotations, operator metadata, profiles of other names, and its places in groups.
  Outcome Put(MediaAsset& clip);

  /// All clips, or those with a text in their names, by name: the row of each, and nothing below it.
  std::vector<MediaAsset> Clips(const std::string& nameContains = "");
  /// The one clip whose identifier begins with the text, or whose name is the text.
  /// @throws std::runtime_error if there is none, or several
  MediaAsset Find(const std::string& idOrName);
  /// What a search shows of a clip. In the name and the description, what matched stands between "<b>" and
  /// "</b>".
  struct Hit {
    std::string id;
    std::string name;
    std::string description;
  };
  /// The clips that hold all of the words in their names and descriptions, the best first. The last word may
  /// be the start of one.
  std::vector<Hit> Search(const std::string& words);
  /// What the list shows of a clip: adds its metadata and resources.
  void ReadSummary(MediaAsset& clip);
  /// Adds what users can change of a clip: bounds, metadata, operator metadata and annotations.
  void ReadUsersPart(MediaAsset& clip);
  /// Adds all that the file holds of a clip.
  void ReadAll(MediaAsset& clip);

  /// Lets `change` work on what users may change of a clip, and stores it.
  void Change(const std::string& idOrName, const std::function<void(MediaAsset&)>& change);

  /// Deletes a clip, and with it what no other clip uses: its resource, tracks, and groups left empty.
  void Remove(MediaAsset& clip);
  /// The clips that lie on a server, each with its operator metadata.
  std::vector<MediaAsset> ClipsOnServer(const Oru::DataModel::MediaAssets::ZuServerId& server);
  /// Deletes them.
  void RemoveByServer(const Oru::DataModel::MediaAssets::ZuServerId& server);

  /// Stores a group in place of the one of the same identifier, as a multi-angle group or a plain one.
  void PutGroup(Oru::DataModel::MediaAssets::AnglesMediaAssetGroup& group, bool hasAngles);
  /// All groups with their items, and of each whether it is a multi-angle group.
  std::vector<std::pair<Oru::DataModel::MediaAssets::MediaAssetGroup, bool>> Groups();

  /// Stores an edit with its sequences, in place of the one of the same identifier.
  void PutEdit(Edit& edit);
  /// All edits with their sequences.
  std::vector<Edit> Edits();

  /// Copies the catalogue, in use or not, into a new file.
  /// @param progress  told how many pages remain, and of how many
  void Backup(const std::string& file, const std::function<void(int remaining, int total)>& progress);
  /// What is damaged in the file; empty if nothing is.
  std::vector<std::string> Check() { return mDatabase.CheckIntegrity(); }

 private:
  Oru::DataModel::MediaAssets::Database::MediaAssetTable& Assets() { return mDatabase.GetMediaAssetTable(); }
  void KeepUsersPart(MediaAsset& clip, MediaAsset& stored);
  void DropFilePart(const MediaAsset& clip);
  void LinkFilePart(MediaAsset& clip);

  Oru::DataModel::MediaAssets::Database::DataModelDatabase mDatabase;
};

}  // namespace Catalogue
