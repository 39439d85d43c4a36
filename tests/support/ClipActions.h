#pragma once

#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include "support/CapturedLog.h"
#include "support/SharedClips.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace Oru::TestSupport {

/// Saves, deletes, links and unlinks clips that share resources and tracks, and groups over them, at random
/// through one or more connections to a file; after each action the file must hold what `SharedClips` says.
class ClipActions {
 public:
  using Database = DataModel::MediaAssets::Database::DataModelDatabase;

  /// @param count  how many connections act in turn
  ClipActions(uint64_t seed, const std::string& file, std::size_t count) : engine(seed), connections(count) {
    for (auto& connection : connections) {
      connection.emplace(file, log.Stream());
      Open(*connection);
    }
  }

  /// Does one action and compares.
  void Step() {
    if (!open) db = &*connections[Below(connections.size())];
    action.clear();
    using Action = void (ClipActions::*)();
    static constexpr Action actions[] = {&ClipActions::SaveAsset,
                                         &ClipActions::SaveAsset,
                                         &ClipActions::SaveAsset,
                                         &ClipActions::SaveGroup,
                                         &ClipActions::SaveLooseResource,
                                         &ClipActions::DeleteGroup,
                                         &ClipActions::Unlink,
                                         &ClipActions::WritePlainSql,
                                         &ClipActions::BeginEndOrReopen,
                                         &ClipActions::Delete,
                                         &ClipActions::Delete,
                                         &ClipActions::Delete};
    (this->*actions[Below(std::size(actions))])();
    if (action.empty()) return;
    if (!open) db = &*connections[Below(connections.size())];
    ASSERT_EQ(Differences(), "") << "after: " << action << "\n" << log.Text();
    ASSERT_TRUE(Column(*db, "PRAGMA foreign_key_check").empty()) << "after: " << action;
  }

  /// Ends an open transaction, deletes everything and checks the file as a whole.
  void Finish() {
    if (open) End(true);
    EXPECT_EQ(Differences(), "");
    for (auto& connection : connections) {
      EXPECT_EQ(Column(*connection, "PRAGMA integrity_check"), std::vector<std::string>{"ok"});
      EXPECT_TRUE(
          connection->ExecuteStatement("INSERT INTO MediaAssetFts(MediaAssetFts, rank) "
                                       "VALUES('integrity-check', 1)"));
    }
    EXPECT_TRUE(connections.back()->GetMediaAssetTable().DeleteAll());
    EXPECT_TRUE(SharedClips::RowsOf(*connections.front()).empty());
    EXPECT_EQ(Value(*connections.front(), "SELECT count(*) FROM Essence"), "0");
    EXPECT_EQ(log.Text(), "");
  }

 private:
  using Query = Common::Databases::Sqlite::QuerySqlite;

  std::size_t Below(std::size_t end) { return static_cast<std::size_t>(engine() % end); }
  std::string Any(char kind, std::size_t count) { return kind + std::to_string(Below(count)); }
  std::string AnyAsset() { return Any('m', 25); }
  std::string AnyResource() { return Any('r', 12); }
  std::string AnyTrack() { return Any('t', 12); }
  std::string AnyGroup() { return Any('g', 8); }

  void Open(Database& database) {
    database.Open();
    EXPECT_TRUE(database.ExecuteStatement("PRAGMA synchronous = off"));
  }

  void SaveAsset() {
    const std::string id = AnyAsset();
    const bool isNew = clips.assets.count(id) == 0;
    SharedClips::Asset& asset = clips.assets[id];
    if (isNew) {
      for (auto count = Below(3); count > 0; --count)
        asset.resources.insert(AnyResource());
      for (auto count = Below(3); count > 0; --count)
        asset.tracks.insert(AnyTrack());
    }
    SharedClips::Asset written = asset;
    written.server = 10 * static_cast<int>(Below(4));
    if (written.server != 0) asset.server = written.server;
    // A resource that comes later is stored, but not linked.
    if (Below(4) == 0) written.resources.insert(AnyResource());
    if (isNew) asset.resources = written.resources;
    clips.resources.insert(written.resources.begin(), written.resources.end());
    for (const std::string& track : written.tracks)
      clips.tracks[track] = SharedClips::ChannelSource(written.resources);
    auto made = SharedClips::Make(id, written);
    Expect(db->GetMediaAssetTable().Save(made), "save of " + id);
  }

  void SaveGroup() {
    using namespace DataModel::MediaAssets;
    const std::string id = AnyGroup();
    AnglesMediaAssetGroup made(MediaAssetGroupId(id), "group");
    SharedClips::Group& group = clips.groups[id];
    group.items.clear();
    for (auto count = Below(4); count > 0 && !clips.assets.empty(); --count) {
      const std::string& asset = std::next(clips.assets.begin(), SignedBelow(clips.assets.size()))->first;
      group.items.emplace_back(static_cast<int>(group.items.size()), asset);
      made.Items().push_back(
          std::make_shared<AnglesMediaAssetGroupItem>("angle", MediaAssetReference(MediaAssetId(asset))));
    }
    const bool hasAngles = Below(2) == 0, hasProfile = Below(2) == 0;
    if (hasProfile) made.Metadata().Set(std::make_shared<AnglesDapOperatorMetadataProfile>());
    group.hasAngles |= hasAngles;
    group.hasProfile |= hasAngles && hasProfile;
    Expect(
        hasAngles ? db->GetAnglesMediaAssetGroupTable().Save(made) : db->GetMediaAssetGroupTable().Save(made),
        "save of " + id);
  }

  void SaveLooseResource() {
    const std::string id = AnyResource();
    clips.resources.insert(id);
    Expect(db->GetMediaResourceTable().Save(*SharedClips::MakeResource(id)), "save of loose " + id);
  }

  void DeleteGroup() {
    const std::string id = AnyGroup();
    clips.groups.erase(id);
    const DataModel::MediaAssets::MediaAssetGroupId groupId(id);
    Expect(Below(2) == 0 ? db->GetAnglesMediaAssetGroupTable().Delete(groupId)
                         : db->GetMediaAssetGroupTable().Delete(
                               db->GetMediaAssetGroupTable().GetObjectIdFromIdentifier(groupId)),
           "deletion of " + id);
  }

  // Takes links away through their tables, which cleans up nothing.
  void Unlink() {
    const std::string id = AnyAsset();
    Query query;
    query.Equals("refMediaAsset", KeyOf(id));
    const bool isOfResources = Below(2) == 0;
    if (const auto asset = clips.assets.find(id); asset != clips.assets.end())
      (isOfResources ? asset->second.resources : asset->second.tracks).clear();
    Expect(isOfResources ? db->GetRelationMediaAssetMediaResource().Delete(query)
                         : db->GetRelationAssetTrackTable().Delete(query),
           "unlinking of " + id);
  }

  // Writes that know nothing of the tables, and so have to be noticed by the file itself.
  void WritePlainSql() {
    const std::string from = AnyTrack(), to = AnyTrack(), asset = AnyAsset(), resource = AnyResource();
    const std::string oldKey = KeyText("Track", from), newKey = KeyText("Track", to);
    const std::string moving = "FROM RelationAssetTrack WHERE refTrack = " + oldKey +
                               " AND refMediaAsset NOT IN (SELECT refMediaAsset FROM RelationAssetTrack WHERE"
                               " refTrack = " +
                               newKey + ")";
    const auto kind = Below(6);
    if (kind == 0) {
      clips.Remove([&](const std::string& other, const auto&) { return other == asset; });
      Write("DELETE FROM MediaAsset WHERE id = '" + asset + "'");
    } else if (kind == 1) {
      for (auto& entry : clips.assets)
        entry.second.resources.erase(resource);
      Write("DELETE FROM RelationMediaAssetMediaResource WHERE refMediaResource = " +
            KeyText("MediaResource", resource));
    } else if (kind < 4 && clips.tracks.count(to) > 0) {
      for (auto& [id, moved] : clips.assets) {
        if (moved.tracks.count(to) == 0 && moved.tracks.erase(from) > 0) moved.tracks.insert(to);
      }
      Write(kind == 2 ? "UPDATE RelationAssetTrack SET refTrack = " + newKey +
                            " WHERE rowid IN (SELECT rowid " + moving + ")"
                      : "REPLACE INTO RelationAssetTrack(rowid, refMediaAsset, refTrack) SELECT rowid, "
                        "refMediaAsset, " +
                            newKey + " " + moving);
    } else if (kind == 4 && clips.tracks.emplace(from, "").second) {
      // Under the lowest free key, after which there are others.
      Write("INSERT INTO Track(key, id) SELECT k + 1, '" + from +
            "' FROM (SELECT 0 AS k UNION ALL SELECT key FROM Track) WHERE k + 1 NOT IN (SELECT key "
            "FROM Track) ORDER BY k LIMIT 1");
    } else if (kind == 5) {
      const std::string source = AnyGroup(), target = AnyGroup();
      const auto group = clips.groups.find(source), other = clips.groups.find(target);
      if (group == clips.groups.end() || other == clips.groups.end() || group == other) return;
      auto items = std::exchange(group->second.items, {});
      std::move(items.begin(), items.end(), std::back_inserter(other->second.items));
      Write("UPDATE MediaAssetGroupItem SET refMediaAssetGroup = " + KeyText("MediaAssetGroup", target) +
            " WHERE refMediaAssetGroup = " + KeyText("MediaAssetGroup", source));
    }
  }

  void BeginEndOrReopen() {
    if (open) return End(Below(2) == 0);
    if (Below(3) == 0) {
      db->Close();
      Open(*db);
      action = "reopening";
      return;
    }
    open = true;
    before = clips;
    db->BeginTransaction();
    action = "begin";
  }

  void End(bool isCommitted) {
    open = false;
    if (!isCommitted) clips = before;
    db->EndTransaction(isCommitted);
    action = isCommitted ? "commit" : "rollback";
  }

  void Delete() {
    using namespace DataModel::MediaAssets;
    auto& table = db->GetMediaAssetTable();
    const std::string id = AnyAsset(), second = AnyAsset(), resource = AnyResource();
    const int server = 10 * static_cast<int>(1 + Below(3));
    Query query;
    SharedClips::Choice choice = [&](const std::string& other, const auto&) { return other == id; };
    const auto kind = Below(8);
    if (kind == 0) {
      MediaAsset asset{MediaAssetId(id)};
      asset.ObjectId(KeyOf(id));
      Expect(table.Delete(asset) && asset.ObjectId() == -1, "deletion of the object " + id);
    } else if (kind == 1) {
      choice = [&](const std::string& other, const auto&) { return other == id || other == second; };
      DeleteBy(query.In("id", std::vector<std::string>{id, second}), "in values");
    } else if (kind == 2) {
      // All but those of a server and those without any.
      choice = [&](const auto&, const SharedClips::Asset& asset) {
        return asset.server != 0 && asset.server != server;
      };
      Query ofServer;
      ofServer.Equals("zuServerId", int32_t{server});
      DeleteBy(query.In("key", "DapOperatorMetadata", "refMediaAsset", Query().Not(ofServer)),
               "not of the server");
    } else if (kind == 3) {
      choice = [&](const auto&, const SharedClips::Asset& asset) {
        return asset.resources.count(resource) > 0;
      };
      Query links;
      links.In("refMediaResource", "MediaResource", "key", Query().Equals("id", resource));
      DeleteBy(query.In("key", "RelationMediaAssetMediaResource", "refMediaAsset", links),
               "linked to " + resource);
    } else if (kind == 4) {
      choice = [&](const auto&, const SharedClips::Asset& asset) { return asset.server == server; };
      Expect(table.DeleteByServerId(ZuServerId(server)), "deletion by server");
    } else if (kind == 5) {
      choice = [](const auto&, const auto&) { return false; };
      Expect(table.CleanUpDependentData(), "clean-up");
    } else if (kind == 6 && Below(15) == 0) {
      choice = [](const auto&, const auto&) { return true; };
      Expect(table.DeleteAll(), "deletion of all");
    } else {
      Expect(table.Delete(KeyOf(id)), "deletion of the key of " + id);
    }
    clips.Remove(choice);
    clips.CleanUp();
  }

  void DeleteBy(Common::Databases::Query& query, const std::string& what) {
    Expect(db->GetMediaAssetTable().Delete(query), "deletion by query: " + what);
  }

  void Expect(bool isDone, const std::string& what) {
    action = what;
    EXPECT_TRUE(isDone) << what << "\n" << log.Text();
  }
  void Write(const std::string& sql) { Expect(db->ExecuteStatement(sql), sql); }

  int64_t KeyOf(const std::string& asset) {
    return db->GetMediaAssetTable().GetObjectIdFromIdentifier(DataModel::MediaAssets::MediaAssetId(asset));
  }
  static std::string KeyText(const std::string& table, const std::string& id) {
    return "(SELECT key FROM " + table + " WHERE id = '" + id + "')";
  }
  std::ptrdiff_t SignedBelow(std::size_t end) { return static_cast<std::ptrdiff_t>(Below(end)); }

  // The rows that are missing and those that are too many.
  std::string Differences() {
    const auto expected = clips.Rows(), stored = SharedClips::RowsOf(*db);
    std::vector<std::string> missing, extra;
    std::set_difference(expected.begin(), expected.end(), stored.begin(), stored.end(),
                        std::back_inserter(missing));
    std::set_difference(stored.begin(), stored.end(), expected.begin(), expected.end(),
                        std::back_inserter(extra));
    return missing.empty() && extra.empty()
               ? ""
               : "missing " + testing::PrintToString(missing) + ", too many " + testing::PrintToString(extra);
  }

  std::mt19937_64 engine;
  CapturedLog log;
  std::vector<std::optional<Database>> connections;
  Database* db = nullptr;
  SharedClips clips, before;
  bool open = false;
  std::string action;
};

}  // namespace Oru::TestSupport
