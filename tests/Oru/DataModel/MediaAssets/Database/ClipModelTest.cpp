#include "support/ClipModel.h"

#include "support/DatabasePrelude.h"
#include "support/EditFields.h"
#include "support/RandomAsset.h"

#include <deque>

namespace Oru::DataModel::MediaAssets::Database {
namespace {

// One way to a file.
struct Desk {
  Desk(const std::string& file, const CapturedLog& log)
      : database("file:" + file + "?_synchronous=off", log.Stream()),
        clips(database),
        groups(database),
        edits(database) {
    database.Open();
  }

  DataModelDatabase database;
  MediaAssetTable& table = database.GetMediaAssetTable();
  MediaAssetRepository clips;
  MediaAssetGroupRepository groups;
  Edits::Database::EditRepository edits;
};

// Any sequence of writes through tables, repositories and plain SQL, on one connection or on several in turn; some
// are refused, fail or are rolled back. After each, the file must hold what plain maps hold.
class ClipWalk {
 public:
  // What one way leaves another may clean up, so each has walks of its own.
  enum class Ways { Repositories, Tables, Both };

  ClipWalk(uint64_t seed, std::size_t deskCount, Ways someWays) : random(seed), ways(someWays) {
    while (desks.size() < deskCount)
      desks.emplace_back(folder.File("clips.db"), log);
    desk = &desks.front();
  }

  void Step() {
    desk = &desks[random.Below(desks.size())];
    if (random.Chance(10)) {
      desk->database.Close();
      desk->database.Open();
      action = "reopening";
    }
    if (!random.Chance(5)) return Write();
    const ClipModel before = model;
    TransactionGuard transaction(desk->database);
    Write();
    if (random.Chance(2)) {
      const ClipModel within = model;
      SavepointGuard savepoint(desk->database);
      Write();
      if (random.Chance(2)) {
        savepoint.Commit();
      } else {
        model = within;
      }
    }
    Write();
    Check(*desk);
    if (random.Chance(2)) {
      transaction.Commit();
    } else {
      model = before;
    }
  }

  void Check() { Check(desks[random.Below(desks.size())]); }

  // Deletes everything and checks the file as a whole.
  void Finish() {
    for (Desk& each : desks) {
      desk = &each;
      EXPECT_TRUE(each.database.CheckIntegrity().empty());
      for (const auto& clip : model.clips)
        CheckAlone(each, clip.first);
    }
    EXPECT_TRUE(desks.back().table.DeleteAll());
    EXPECT_EQ(Value(desks.front().database,
                    "SELECT (SELECT count(*) FROM Essence) + (SELECT count(*) FROM Annotation)"
                    " + (SELECT count(*) FROM DapOperatorKeywords) + (SELECT count(*) FROM TrackChannel)"),
              "0");
  }

  std::string Last() const { return action + "\n" + log.Text(); }

 private:
  using Operation = void (ClipWalk::*)();

  void Write() {
    static const std::vector<Operation> throughRepositories = {
        &ClipWalk::Put,     &ClipWalk::Put,       &ClipWalk::Put,      &ClipWalk::PutAll,
        &ClipWalk::Copy,    &ClipWalk::Change,    &ClipWalk::Change,   &ClipWalk::Remove,
        &ClipWalk::Remove,  &ClipWalk::RemoveAll, &ClipWalk::PutGroup, &ClipWalk::RemoveGroup,
        &ClipWalk::PutEdit, &ClipWalk::PutEdit,   &ClipWalk::Remove,   &ClipWalk::RemoveEdit};
    static const std::vector<Operation> throughTables = {
        &ClipWalk::Save,          &ClipWalk::Save,          &ClipWalk::Save,   &ClipWalk::SaveGroup,
        &ClipWalk::RemoveGroup,   &ClipWalk::Unlink,        &ClipWalk::Unlink, &ClipWalk::Delete,
        &ClipWalk::WritePlainSql, &ClipWalk::WritePlainSql, &ClipWalk::Delete, &ClipWalk::Delete};
    const bool isThroughTables = ways == Ways::Tables || (ways == Ways::Both && random.Chance(2));
    const auto& operations = isThroughTables ? throughTables : throughRepositories;
    (this->*operations[random.Below(operations.size())])();
  }

  // All that is stored, and no other rows.
  void Check(Desk& from) {
    const auto parts =
        random.Chance(3) ? static_cast<MediaAssetParts>(random.Below(64)) : MediaAssetParts::All;
    const auto stored =
        from.clips.Find(MediaAssetSearch().OrderBy(MediaAssetOrder::Identifier), parts).assets;
    ASSERT_EQ(stored.size(), model.clips.size());
    auto each = stored.begin();
    for (const auto& clip : model.clips) {
      const MediaAsset expected = model.Asset(clip.first, parts);
      ASSERT_TRUE(*each == expected) << clip.first;
      ASSERT_EQ(each->HeldParts(), parts);
      ASSERT_EQ(Channels(*each++), Channels(expected)) << clip.first;
    }
    const auto byPlace =
        from.clips.Find(MediaAssetSearch().OrderBy(MediaAssetOrder::Place), MediaAssetParts::Operator).assets;
    ASSERT_EQ(byPlace.size(), stored.size());
    ASSERT_TRUE(std::is_sorted(byPlace.begin(), byPlace.end(), [](const auto& left, const auto& right) {
      return PlaceOf(left) < PlaceOf(right);
    }));
    if (!model.clips.empty()) CheckAlone(from, AnyOf(model.clips));
    CheckGroups(from);
    CheckEdits(from);
    CheckIds(from, "MediaResource", model.resources);
    CheckIds(from, "Track", model.tracks);
    ASSERT_TRUE(Column(from.database, "PRAGMA foreign_key_check").empty());
  }

  static constexpr auto isNameBefore = [](const auto& left, const auto& right) {
    return left.Name() < right.Name();
  };

  template <class Map>
  static void CheckIds(Desk& from, const std::string& table, const Map& expected) {
    std::multiset<std::string> ids;
    for (const auto& entry : expected)
      ids.insert(entry.first.Value());
    const auto stored = Column(from.database, "SELECT id FROM " + table);
    ASSERT_EQ(std::multiset<std::string>(stored.begin(), stored.end()), ids) << table;
  }

  void CheckAlone(Desk& from, const Identifier& id) {
    ASSERT_EQ(from.clips.Find(id), model.Asset(id));
    const int64_t key = from.table.GetObjectIdFromIdentifier(id);
    ASSERT_TRUE(IsReadingOf(model.Asset(id), ReadDeep(from.database, key))) << id;
    ASSERT_TRUE(IsReadingOf(model.Asset(id), ReadLazy(from.database, key))) << id;
  }

  void CheckGroups(Desk& from) {
    CheckIds(from, "MediaAssetGroup", model.groups);
    const std::vector<MediaAssetGroup> all = from.groups.All();
    ASSERT_TRUE(std::is_sorted(all.begin(), all.end(), isNameBefore));
    for (const auto& [id, group] : model.groups) {
      const auto multiAngle = from.groups.FindAngles(id);
      ASSERT_EQ(multiAngle.has_value(), group.isMultiAngle) << id;
      ASSERT_TRUE(!multiAngle || *multiAngle == *group.object) << id;
      const auto expected = group.object->Clone();
      expected->Metadata().Clear();
      ASSERT_TRUE(*from.groups.Find(id) == *expected) << id;
      ASSERT_EQ(std::count(all.begin(), all.end(), *expected), 1) << id;
    }
    ASSERT_EQ(Value(from.database,
                    "SELECT count(*) FROM AnglesMediaAssetGroupItem JOIN MediaAssetGroupItem ON key = "
                    "refMediaAssetGroupItem GROUP BY refMediaAssetGroup, angleIndex HAVING count(*) > 1"),
              "(no row)")
        << "two items have one place";
  }

  void CheckEdits(Desk& from) {
    const std::vector<Edits::Edit> all = from.edits.All();
    ASSERT_EQ(all.size(), model.edits.size());
    ASSERT_TRUE(std::is_sorted(all.begin(), all.end(), isNameBefore));
    int sequences = 0;
    for (const Edits::Edit& edit : all) {
      ASSERT_EQ(edit, model.edits.at(edit.Id()));
      ASSERT_EQ(from.edits.Find(edit.Id()), edit);
      sequences += edit.Sequences().Size();
    }
    ASSERT_EQ(Value(from.database, "SELECT count(*) FROM Sequence"), std::to_string(sequences));
  }

  // A stored identifier three times out of four, if there is one.
  Identifier AnyId() {
    return model.clips.size() < 6 || random.Chance(4) ? Identifier(random.Id()) : AnyOf(model.clips);
  }
  template <class Map>
  Identifier AnyOf(const Map& map) {
    return map.empty() ? Identifier(random.Id()) : std::next(map.begin(), Place(map.size()))->first;
  }
  std::ptrdiff_t Place(std::size_t count) { return static_cast<std::ptrdiff_t>(random.Below(count)); }

  // An asset of new content that shares some of what is stored, and now and then refers to what isn't.
  MediaAsset Make(const Identifier& id) {
    const auto stored = model.clips.find(id);
    MediaAsset asset = stored != model.clips.end() && random.Chance(2) ? model.Asset(id) : random.Next();
    asset.Id(id);
    if (random.Chance(2)) AddSharedResource(asset);
    random.Change(asset);
    for (auto& resource : asset.MediaResources()) {
      auto& streams = resource->Streams();
      for (auto& stream : streams) {
        if (!stream->Essences().Empty() && random.Chance(4))
          stream->Essences().Erase(static_cast<int32_t>(random.Below(stream->Essences().Size())));
      }
      if (!streams.empty() && random.Chance(5)) streams.erase(streams.begin() + Place(streams.size()));
      if (random.Chance(4)) std::reverse(streams.begin(), streams.end());
    }
    if (random.Chance(2)) AddSharedTrack(asset);
    if (random.Chance(3)) Add(asset, random.Chance(6) ? Identifier(random.Id()) : AnyOf(model.resources));
    if (!asset.Tracks().Empty() && random.Chance(5))
      asset.Tracks().Erase(random.Below(asset.Tracks().Size()));
    if (!asset.MediaResources().Empty() && random.Chance(5))
      asset.MediaResources().Erase(random.Below(asset.MediaResources().Size()));
    if (random.Chance(4)) asset.HeldParts(static_cast<MediaAssetParts>(random.Below(64)));
    return asset;
  }

  void AddSharedResource(MediaAsset& asset) {
    const auto shared = model.resources.find(AnyOf(model.resources));
    if (shared == model.resources.end()) return;
    Add(asset, std::shared_ptr<MediaResource>(shared->second->Clone()));
  }
  void AddSharedTrack(MediaAsset& asset) {
    const auto shared = model.tracks.find(AnyOf(model.tracks));
    const auto isShared = [&](const auto& held) { return held->Id() == shared->first; };
    if (shared == model.tracks.end() || std::any_of(asset.Tracks().begin(), asset.Tracks().end(), isShared))
      return;
    asset.Tracks().Insert(shared->second->Clone());
  }
  static void Add(MediaAsset& asset, const SharedReference<MediaResource>& reference) {
    if (asset.MediaResources().Find(reference) == asset.MediaResources().end())
      asset.MediaResources().Insert(reference);
  }

  // Whether the operation was done, and not refused.
  template <class Run>
  bool IsDone(Run run) {
    try {
      run();
      return true;
    } catch (const NotStoredException& exception) {
      action += std::string(", refused: ") + exception.what();
    } catch (const std::length_error& exception) {
      action += exception.what();
    }
    return false;
  }

  // Now and then the object of an earlier put, whose keys may since have gone to others: by a rollback, or by a
  // removal on another connection.
  void Put() {
    MediaAsset given = random.Chance(4) ? *reused.Clone() : Make(AnyId());
    if (random.Chance(8)) given.Id(AnyId());
    action = "put of " + given.Id().Value();
    const bool isExpected = model.Put(given, given.Id());
    EXPECT_EQ(IsDone([&] { desk->clips.Put(given); }), isExpected) << action;
    if (isExpected) {
      EXPECT_EQ(given.ObjectId(), desk->table.GetObjectIdFromIdentifier(given.Id()));
    }
    reused = std::move(given);
  }

  void PutAll() {
    std::vector<MediaAsset> assets;
    std::vector<Identifier> refused, leftOut;
    for (auto count = random.Below(5); count > 0; --count) {
      assets.push_back(Make(AnyId()));
      if (!model.Put(assets.back(), assets.back().Id())) refused.push_back(assets.back().Id());
    }
    action = "put of " + std::to_string(assets.size());
    for (const NotStored& notStored : desk->clips.PutAll(assets))
      leftOut.push_back(notStored.id);
    EXPECT_EQ(leftOut, refused) << action;
  }

  void Change() {
    const Identifier id = AnyId();
    const Identifier newId = random.Chance(3) ? AnyId() : id;
    const bool isThrown = random.Chance(6);
    MediaAsset content = Make(id);
    content.Id(newId);
    action = "change of " + id.Value() + " to " + newId.Value();
    const bool isFree = newId == id || model.clips.count(newId) == 0;
    const bool isExpected = !isThrown && model.clips.count(id) > 0 && isFree && model.Put(content, id);
    EXPECT_EQ(IsDone([&] {
                desk->clips.Change(id, [&](MediaAsset& asset) {
                  EXPECT_TRUE(isExpected || asset == model.Asset(id));
                  asset = *content.Clone();
                  if (isThrown) throw std::length_error("by the caller");
                });
              }),
              isExpected)
        << action;
  }

  void Copy() {
    const Identifier from = AnyOf(model.clips), to = random.Chance(4) ? AnyId() : Identifier(random.Id());
    const bool isOwn = random.Chance(2);
    action = "copy of " + from.Value() + " to " + to.Value();
    bool isExpected = model.clips.count(from) > 0 && model.clips.count(to) == 0;
    if (isExpected) {
      MediaAsset copy = model.Asset(from);
      copy.Id(to);
      if (isOwn) Rename(copy, to.Value() + "/");
      isExpected = !(isOwn && model.SharesAnyOf(copy)) && model.Put(copy, to);
    }
    EXPECT_EQ(IsDone([&] {
                const MediaAsset copy =
                    desk->clips.Copy(from, to, isOwn ? CopyResources::Own : CopyResources::Share);
                EXPECT_TRUE(copy == model.Asset(to)) << action;
              }),
              isExpected)
        << action;
  }

  static void Rename(MediaAsset& asset, const std::string& start) {
    std::set<Identifier> streams;
    for (auto& resource : asset.MediaResources()) {
      for (auto& stream : resource->Streams()) {
        streams.insert(stream.Id());
        stream->Id(start + stream.Id().Value());
        stream.UpdateIdentifier();
      }
      resource->Id(start + resource.Id().Value());
      resource.UpdateIdentifier();
    }
    for (const auto& track : asset.Tracks()) {
      track->Id(start + track->Id().Value());
      for (const auto& channel : track->Channels()) {
        const Identifier stream = channel->Stream().Id();
        channel->Stream(Identifier(streams.count(stream) > 0 ? start + stream.Value() : stream.Value()));
      }
    }
  }

  // A file may say of the interface alone what of an object holds for the user, too.
  Protection AnyProtection() {
    Run("UPDATE DapOperatorMetadata SET userProtected = 0 WHERE dapUIProtected");
    return random.Chance(3) ? Protection::Ignore : Protection::Respect;
  }

  // What a removal does to a clip.
  RemoveOutcome RemoveFromModel(const Identifier& id, Protection protection) {
    const auto clip = model.clips.find(id);
    if (clip == model.clips.end()) return RemoveOutcome::Absent;
    const MediaAsset& own = clip->second.own;
    const bool isProtected = own.HasDapOperatorMetadata() && own.DapOperatorMetadata().IsUserProtected();
    if (isProtected && protection == Protection::Respect) return RemoveOutcome::Protected;
    model.Remove(id);
    return RemoveOutcome::Removed;
  }

  void Remove() {
    const Identifier id = AnyId();
    const Protection protection = AnyProtection();
    action = "removal of " + id.Value();
    EXPECT_EQ(desk->clips.Remove(id, protection), RemoveFromModel(id, protection)) << action;
  }

  void RemoveAll() {
    const auto length = static_cast<int64_t>(random.Below(4));
    const auto direction = random.Chance(2) ? Direction::Ascending : Direction::Descending;
    const Protection protection = AnyProtection();
    action = "removal of " + std::to_string(length);
    std::vector<Identifier> ids;
    for (const auto& clip : model.clips)
      ids.push_back(clip.first);
    if (direction == Direction::Descending) std::reverse(ids.begin(), ids.end());
    ids.resize(std::min(ids.size(), static_cast<std::size_t>(length)));
    const auto expected = std::count_if(ids.begin(), ids.end(), [&](const Identifier& id) {
      return RemoveFromModel(id, protection) == RemoveOutcome::Removed;
    });
    const auto search = MediaAssetSearch().OrderBy(MediaAssetOrder::Identifier, direction).Limit(length);
    EXPECT_EQ(desk->clips.RemoveAll(search, protection), expected) << action;
  }

  // Through the tables: of a stored asset all is saved that is stored of it, so that nothing has to be deleted.
  void Save() {
    const Identifier id = AnyId();
    const bool isNew = model.clips.count(id) == 0;
    action = "save of " + id.Value();
    const bool isShared = random.Chance(2);
    MediaAsset asset = isNew ? random.Next() : model.Asset(id);
    if (!isNew && !isShared && random.Chance(2)) {
      asset = ReadDeep(desk->database, desk->table.GetObjectIdFromIdentifier(id));
    } else {
      asset.Id(id);
      if (isShared) {
        AddSharedResource(asset);
        AddSharedTrack(asset);
        // Stored and not linked, when the asset is stored already.
        Add(asset, std::make_shared<MediaResource>(random.Id()));
      }
      MediaAssetRepository::ForgetKeys(asset);
      for (const std::string& line : Keys(asset))
        EXPECT_NE(line.find(" -1"), std::string::npos) << line;
    }
    random.Change(asset);
    model.Save(asset);
    EXPECT_TRUE(desk->table.Save(asset)) << log.Text();
    if (isNew || !isShared) {
      EXPECT_TRUE(IsStored(desk->database, asset)) << "with its keys";
    }
  }

  std::unique_ptr<MediaAssetGroup> MakeGroup(bool isMultiAngle, bool areAllNamed) {
    const Identifier id =
        model.groups.size() > 5 || random.Chance(2) ? AnyOf(model.groups) : Identifier(random.Id());
    std::unique_ptr<MediaAssetGroup> group = std::make_unique<MediaAssetGroup>();
    if (isMultiAngle) group = std::make_unique<AnglesMediaAssetGroup>();
    SetFields(*group, random);
    group->Id(id);
    for (auto count = random.Below(4); count > 0; --count) {
      const MediaAssetReference asset(random.Chance(12) && !areAllNamed ? Identifier("missing")
                                                                        : AnyOf(model.clips));
      // An angle has a name; the item of a plain group may have one.
      if (isMultiAngle || areAllNamed || random.Chance(2)) {
        group->Items().push_back(std::make_shared<AnglesMediaAssetGroupItem>("x" + random.Text(), asset));
      } else {
        group->Items().push_back(std::make_shared<MediaAssetGroupItem>(asset));
      }
    }
    if (isMultiAngle && random.Chance(2)) {
      const auto identity = std::make_shared<AnglesDapOperatorMetadataProfile>();
      SetFields(*identity, random);
      group->Metadata().Set(identity);
    }
    return group;
  }

  void PutGroup() {
    const bool isMultiAngle = random.Chance(2);
    const auto group = MakeGroup(isMultiAngle, false);
    action = "put of group " + group->Id().Value();
    const auto stored = model.groups.find(group->Id());
    bool isExpected = isMultiAngle || stored == model.groups.end() || !stored->second.isMultiAngle;
    for (const auto& item : group->Items())
      isExpected = isExpected && model.clips.count(item->MediaAsset().Id()) > 0;
    EXPECT_EQ(IsDone([&] { desk->groups.Put(*group); }), isExpected) << action;
    EXPECT_EQ(group->ObjectId() != -1, isExpected) << action;
    if (!isExpected) return;
    const auto found = desk->groups.Find(group->Id());
    EXPECT_EQ(found->ObjectId(), group->ObjectId());
    for (std::size_t i = 0; i < group->Items().size(); ++i)
      EXPECT_EQ(found->Item(i).ObjectId(), group->Item(i).ObjectId());
    // What a put isn't given it deletes.
    if (stored != model.groups.end()) model.groups.erase(stored);
    model.Write(*group, isMultiAngle);
  }

  void SaveGroup() {
    if (model.clips.empty()) return;
    const auto group = MakeGroup(random.Chance(2), true);
    auto* multiAngle = dynamic_cast<AnglesMediaAssetGroup*>(group.get());
    action = "save of group " + group->Id().Value();
    model.Write(*group, multiAngle != nullptr);
    EXPECT_TRUE(multiAngle ? desk->database.GetAnglesMediaAssetGroupTable().Save(*multiAngle)
                           : desk->database.GetMediaAssetGroupTable().Save(*group))
        << log.Text();
  }

  void RemoveGroup() {
    const Identifier id = AnyOf(model.groups);
    action = "removal of group " + id.Value();
    const bool wasThere = model.groups.erase(id) > 0;
    auto& table = desk->database.GetAnglesMediaAssetGroupTable();
    EXPECT_EQ(random.Chance(2) ? desk->groups.Remove(id) : table.Delete(id) && wasThere, wasThere) << action;
  }

  // There are so few sequences that edits meet over them.
  void PutEdit() {
    Edits::Edit edit("it's " + std::to_string(random.Below(4)));
    SetFields(edit, random);
    edit.ObjectId(random.Int64());
    std::set<Identifier> taken;
    for (const auto& [id, other] : model.edits) {
      for (const auto& sequence : other.Sequences())
        if (id != edit.Id()) taken.insert(sequence->Id());
    }
    bool isExpected = true;
    for (auto count = random.Below(6); count > 0; --count) {
      const std::string start = random.Chance(3) ? "shared" : edit.Id().Value();
      Edits::Sequence sequence(start + " " + std::to_string(random.Below(6)));
      isExpected = taken.insert(sequence.Id()).second && isExpected;
      SetFields(sequence, random);
      if (random.Chance(2))
        sequence.Metadata().Erase(Edits::DapOperatorMetadataProfile::StaticFullyQualifiedName());
      if (sequence.HasDapOperatorMetadata()) sequence.DapOperatorMetadata().ObjectId(random.Int64());
      sequence.ObjectId(random.Int64());
      edit.Sequences().Add(std::move(sequence));
    }
    const auto keysOf = [](const Edits::Edit& of) {
      std::vector<int64_t> keys{of.ObjectId()};
      for (const auto& sequence : of.Sequences())
        keys.push_back(sequence->ObjectId());
      return keys;
    };
    const std::vector<int64_t> before = keysOf(edit);
    action = "put of edit " + edit.Id().Value();
    EXPECT_EQ(IsDone([&] { desk->edits.Put(edit); }), isExpected) << action;
    EXPECT_EQ(keysOf(edit), isExpected ? keysOf(*desk->edits.Find(edit.Id())) : before) << action;
    if (isExpected) model.edits.insert_or_assign(edit.Id(), std::move(edit));
  }

  void RemoveEdit() {
    const Identifier id = AnyOf(model.edits);
    action = "removal of edit " + id.Value();
    EXPECT_EQ(desk->edits.Remove(id), model.edits.erase(id) == 1) << action;
  }

  // Takes links away through their tables, which cleans up nothing.
  void Unlink() {
    const Identifier id = AnyId();
    action = "unlinking of " + id.Value();
    QuerySqlite query;
    query.Equals("refMediaAsset", desk->table.GetObjectIdFromIdentifier(id));
    const bool isOfResources = random.Chance(2);
    if (const auto clip = model.clips.find(id); clip != model.clips.end())
      (isOfResources ? clip->second.resources : clip->second.tracks).clear();
    EXPECT_TRUE(isOfResources ? desk->database.GetRelationMediaAssetMediaResource().Delete(query)
                              : desk->database.GetRelationAssetTrackTable().Delete(query));
  }

  // Writes that know nothing of the tables, and so have to be noticed by the file itself.
  void WritePlainSql() {
    const auto key = [](const auto& table, const Identifier& id) {
      return std::to_string(table.GetObjectIdFromIdentifier(id));
    };
    const Identifier id = AnyId(), resource = AnyOf(model.resources), to = AnyOf(model.tracks);
    const auto clip = model.clips.find(id);
    const auto kind = random.Below(6);
    if (kind == 5 && clip != model.clips.end()) {
      clip->second.own.Metadata().Erase(DapOperatorMetadataProfile::StaticFullyQualifiedName());
      Run("DELETE FROM DapOperatorMetadata WHERE refMediaAsset = " + key(desk->table, id));
    } else if (kind == 0) {
      model.Erase({id});
      Run("DELETE FROM MediaAsset WHERE key = " + key(desk->table, id));
    } else if (kind == 1) {
      for (auto& other : model.clips)
        other.second.resources.erase(resource);
      Run("DELETE FROM RelationMediaAssetMediaResource WHERE refMediaResource = " +
          key(desk->database.GetMediaResourceTable(), resource));
    } else if (kind == 2) {
      // Under the lowest free key, after which there are others.
      const Identifier low("low " + std::to_string(++lowKeys));
      model.tracks[low] = std::make_shared<Track>(low);
      Run("INSERT INTO Track(key, id) SELECT k + 1, '" + low.Value() +
          "' FROM (SELECT 0 AS k UNION ALL SELECT key FROM Track) WHERE k + 1 NOT IN (SELECT key FROM Track) ORDER BY "
          "k LIMIT 1");
    } else if (clip != model.clips.end() && !clip->second.tracks.empty() && model.tracks.count(to) > 0 &&
               clip->second.tracks.count(to) == 0) {
      auto& linked = clip->second.tracks;
      auto& tracks = desk->database.GetTrackTable();
      const std::string ofOne = " WHERE refTrack = " + key(tracks, *linked.begin()) +
                                " AND refMediaAsset = " + key(desk->table, id);
      linked.erase(linked.begin());
      linked.insert(to);
      Run(kind == 3
              ? "UPDATE RelationAssetTrack SET refTrack = " + key(tracks, to) + ofOne
              : "REPLACE INTO RelationAssetTrack(rowid, refMediaAsset, refTrack) SELECT rowid, refMediaAsset, " +
                    key(tracks, to) + " FROM RelationAssetTrack" + ofOne);
    }
  }
  void Run(const std::string& sql) {
    action = sql;
    EXPECT_TRUE(desk->database.ExecuteStatement(sql)) << log.Text();
  }

  // Through the tables, which look at all that is no longer linked.
  void Delete() {
    const Identifier id = AnyId(), second = AnyId();
    const auto key = desk->table.GetObjectIdFromIdentifier(id);
    const auto kind = random.Below(6);
    action = "deletion " + std::to_string(kind) + " of " + id.Value();
    std::set<Identifier> gone{id};
    bool isDone = false;
    if (kind == 0) {
      MediaAsset asset(id);
      asset.ObjectId(key);
      isDone = desk->table.Delete(asset) && asset.ObjectId() == -1;
    } else if (kind == 1) {
      gone.insert(second);
      QuerySqlite query;
      isDone = desk->table.Delete(query.In("id", std::vector<std::string>{id.Value(), second.Value()}));
    } else if (kind == 2 && key != -1 && model.clips.at(id).own.HasDapOperatorMetadata()) {
      const ZuServerId server = model.clips.at(id).own.DapOperatorMetadata().ServerId();
      for (const auto& [other, clip] : model.clips) {
        if (clip.own.HasDapOperatorMetadata() && clip.own.DapOperatorMetadata().ServerId() == server)
          gone.insert(other);
      }
      isDone = desk->table.DeleteByServerId(server);
    } else if (kind == 3) {
      gone.clear();
      isDone = desk->table.CleanUpDependentData();
    } else if (kind == 4 && random.Chance(8)) {
      for (const auto& clip : model.clips)
        gone.insert(clip.first);
      isDone = desk->table.DeleteAll();
    } else {
      isDone = desk->table.Delete(key);
    }
    EXPECT_TRUE(isDone) << action << log.Text();
    model.Erase(gone);
    model.CleanUp();
  }

  TemporaryDirectory folder;
  RandomAssets random;
  const Ways ways;
  CapturedLog log;
  std::deque<Desk> desks;
  Desk* desk = nullptr;
  ClipModel model;
  MediaAsset reused{MediaAssetId("first")};
  std::string action;
  int lowKeys = 0;
};

TEST(ClipModelTest, AnySequenceOfWritesLeavesWhatPlainMapsHold) {
  for (uint64_t seed = 1; seed <= 12; ++seed) {
    ClipWalk walk(seed, 1 + seed % 2, static_cast<ClipWalk::Ways>(seed % 3));
    for (int step = 0; step < 70; ++step) {
      walk.Step();
      walk.Check();
      if (testing::Test::HasFailure())
        FAIL() << "seed " << seed << ", step " << step << ", after: " << walk.Last();
    }
    walk.Finish();
  }
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets::Database
