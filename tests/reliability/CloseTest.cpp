#include "reliability/Clips.h"

namespace Oru::Reliability {

using AssetCursor = Sqlite::ObjectCursorSqlite<MediaAsset, MediaAsset>;

class CloseTest : public testing::TestWithParam<const char*> {
 protected:
  CloseTest() {
    MediaAsset first = MakeClip("a", 1), second = MakeClip("b", 1);
    Open();
    EXPECT_TRUE(db->GetMediaAssetTable().Save(first) && db->GetMediaAssetTable().Save(second));
  }

  void Open() {
    if (!db) db = std::make_unique<DataModelDatabase>(connection, log.Stream());
    if (!db->IsOpen()) db->Open();
  }
  void ExpectWellClosed() {
    EXPECT_FALSE(HasSideFiles(path));
    EXPECT_EQ(Faults(path), "");
    EXPECT_FALSE(log.Contains("left over")) << log.Text();
  }

  void ExpectRefused(const std::vector<std::function<bool()>>& writes, const std::string& reason) {
    for (std::size_t i = 0; i < writes.size(); ++i) {
      log.Clear();
      EXPECT_FALSE(writes[i]()) << i;
      EXPECT_TRUE(log.Contains(reason)) << i;
    }
  }

  const TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string path = directory.File("clips.db");
  const std::string connection = "file:" + path + "?_synchronous=off&_journal_mode=" + GetParam();
  std::unique_ptr<DataModelDatabase> db;
};

// What is alive when the database goes, in every combination, and the two ways for it to go.
TEST_P(CloseTest, InEveryOrder) {
  for (unsigned living = 0; living < 32; ++living) {
    SCOPED_TRACE(living);
    Open();
    auto& assets = db->GetMediaAssetTable();
    std::unique_ptr<AssetCursor> cursor;
    MediaAsset read;
    if (living & 1) {
      cursor = std::make_unique<AssetCursor>();
      QuerySqlite all;
      assets.OpenObjectCursor(*cursor, all);
      EXPECT_TRUE(cursor->Next(read));
    }
    if (living & 2) db->BeginTransaction();
    if (living & 4) {
      MediaAsset clip = MakeClip("a", 2);
      EXPECT_TRUE(assets.Save(clip));
    }
    std::optional<TransactionGuard> guard;
    if ((living & 8) && !(living & 2)) guard.emplace(*db);
    if (living & 16) {
      guard.reset();
      db.reset();
    } else {
      db->Close();
      EXPECT_FALSE(db->GetProperties().DeleteAll());
    }
    ExpectWellClosed();
    if (cursor) {
      EXPECT_FALSE(cursor->IsOpened());
      EXPECT_THROW(cursor->Next(read), ObjectClosedException);
    }
    cursor.reset();
    guard.reset();
    Open();
    // What was in a transaction that was open is gone.
    MediaAsset clip = MakeClip("a", 1);
    EXPECT_EQ(StoredVersion(*db, "a"), (living & 6) == 4 ? 2 : 1);
    EXPECT_TRUE(db->GetMediaAssetTable().Save(clip));
  }
}

TEST_P(CloseTest, ATableOfAClosedDatabaseRefusesAndWorksAgain) {
  MediaAsset clip = MakeClip("c", 1), read;
  db->Close();
  auto& assets = db->GetMediaAssetTable();
  EXPECT_THROW(assets.Save(clip), ObjectClosedException);
  clip.ObjectId(1);
  ExpectRefused({[&] { return assets.Save(clip); }, [&] { return assets.Delete(clip); },
                 [&] { return assets.DeleteAll(); }, [&] { return assets.CleanUpDependentData(); },
                 [&] { return db->ExecuteStatement("SELECT 1"); }},
                "closed database");
  EXPECT_THROW(assets.GetObject(1, read), ObjectClosedException);
  EXPECT_THROW(assets.ReadMediaResources(clip), ObjectClosedException);
  EXPECT_THROW(TransactionGuard{*db}, InvalidOperationException);
  ExpectWellClosed();
  db->Open();
  MediaAsset again = MakeClip("c", 1);
  EXPECT_TRUE(assets.Save(again));
  EXPECT_EQ(StoredVersion(*db, "c"), 1);
}

// Every table, since each looks up or writes something of its own first.
TEST_P(CloseTest, UnderAnotherConnectionsLockEachWriteGivesFalseAndSaysWhy) {
  db = std::make_unique<DataModelDatabase>(connection + "&_busy_timeout=0", log.Stream());
  db->Open();
  MediaAsset clip = MakeClip("a", 2), known = MakeClip("a", 1);
  ASSERT_TRUE(db->GetMediaAssetTable().Save(known));
  MediaResource& resource = *clip.MediaResources().Front();
  Track& track = *clip.Tracks().Front();
  MediaAssetGroup plain{MediaAssetGroupId("p"), Utf8String("p")};
  AnglesMediaAssetGroup angles = MakeGroup("g", 1, {"a"});
  Edits::Edit edit{Edits::EditId("e")};
  Edits::Sequence sequence{Edits::SequenceId("s")};
  Edits::DapOperatorMetadataProfile profile;
  QuerySqlite all;
  const std::vector<std::function<bool()>> writes = {
      [&] { return db->GetMediaAssetTable().Save(clip); },
      [&] { return db->GetMediaAssetTable().Save(known); },
      [&] { return db->GetMediaAssetTable().Delete(known); },
      [&] { return db->GetMediaAssetTable().Delete(all); },
      [&] { return db->GetMediaAssetTable().GetMediaResourceTable().Save(resource); },
      [&] { return db->GetMediaAssetTable().GetTrackTable().Save(track); },
      [&] { return db->GetMediaAssetGroupTable().Save(plain); },
      [&] { return db->GetMediaAssetGroupTable().Delete(all); },
      [&] { return db->GetAnglesMediaAssetGroupTable().Save(angles); },
      [&] { return db->GetEditTable().Save(edit); },
      [&] { return db->GetSequenceTable().Save(sequence); },
      [&] { return db->GetSequenceTable().GetDapOperatorProfileTable().Save(profile); },
  };
  DataModelDatabase other(path, nullptr);
  other.Open();
  ASSERT_TRUE(other.ExecuteStatement("BEGIN EXCLUSIVE"));
  ExpectRefused(writes, "database is locked");
  if (GetParam() == std::string("delete")) {
    EXPECT_THROW(DataModelDatabase(connection + "&_busy_timeout=0", nullptr).Open(), NotSupportedException);
  }
  ASSERT_TRUE(other.ExecuteStatement("ROLLBACK"));
  EXPECT_EQ(StoredVersion(*db, "a"), 1);
  EXPECT_TRUE(writes[0]() && writes[6]() && writes[8]() && writes[9]() && writes[10]()) << log.Text();
}

TEST_P(CloseTest, NullPointersAreRefusedWithALogEntry) {
  auto& assets = db->GetMediaAssetTable();
  MediaAsset annotated = MakeClip("a", 2), tracked = MakeClip("a", 2), channelled = MakeClip("a", 2),
             bare = MakeClip("c", 1);
  annotated.Annotations().push_back(nullptr);
  *tracked.Tracks().begin() = nullptr;
  channelled.Tracks().Front()->Channels().push_back(nullptr);
  AnglesMediaAssetGroup group = MakeGroup("g", 1, {"a"});
  group.Items().push_back(nullptr);
  ExpectRefused({[&] { return assets.Save(annotated); }, [&] { return assets.Save(tracked); },
                 [&] { return assets.Save(channelled); },
                 [&] { return db->GetAnglesMediaAssetGroupTable().Save(group); }},
                "null pointer");
  EXPECT_EQ(group.Find(MediaAssetId("z")), nullptr);
  // A reference without an object is one that wasn't loaded.
  bare.MediaResources().Insert(SharedReference<MediaResource>(std::shared_ptr<MediaResource>()));
  EXPECT_TRUE(assets.Save(bare));
}

INSTANTIATE_TEST_SUITE_P(Journal, CloseTest, testing::Values("delete", "wal"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace Oru::Reliability
