#include "reliability/Clips.h"

namespace Oru::Reliability {

using namespace Common::Databases;
using namespace DataModel::MediaAssets;

// A file of two whole clips that another program has changed.
class ForeignFileTest : public testing::Test {
 protected:
  ForeignFileTest() {
    db.Open();
    MediaAsset first = MakeClip("a", 1), second = MakeClip("b", 1);
    EXPECT_TRUE(assets.Save(first) && assets.Save(second));
  }

  // Changes the file and opens it again.
  void Change(const std::string& sql) {
    ASSERT_TRUE(db.ExecuteStatement("PRAGMA foreign_keys = OFF; PRAGMA ignore_check_constraints = ON;" + sql))
        << log.Text();
    db.Close();
    db.Open();
  }

  const TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  DataModelDatabase db{"file:" + directory.File("clips.db") + "?_synchronous=off", log.Stream()};
  DataModel::MediaAssets::Database::MediaAssetTable& assets = db.GetMediaAssetTable();
};

TEST_F(ForeignFileTest, AMissingColumnSpoilsItsOwnTableAlone) {
  Change("ALTER TABLE Annotation DROP COLUMN data");
  MediaAsset clip = MakeClip("a", 1);
  ASSERT_TRUE(assets.GetObject(1, clip));
  EXPECT_THROW(assets.ReadAnnotations(clip), ObjectClosedException);
  EXPECT_TRUE(log.Contains("no such column: data")) << log.Text();
  MediaAsset bare;
  ASSERT_TRUE(assets.GetObject(1, bare));
  assets.ReadMediaResources(bare);
  assets.ReadTrack(bare);
  EXPECT_EQ(bare.Tracks().Size(), 2U);
  MediaAsset own{MediaAssetId("c")};
  EXPECT_TRUE(assets.Save(own));
  own.Annotations().push_back(std::make_shared<Annotation>());
  EXPECT_FALSE(assets.Save(own));
}

TEST_F(ForeignFileTest, ATableMayBeAViewForReading) {
  Change("ALTER TABLE Track RENAME TO Tracks; CREATE VIEW Track AS SELECT * FROM Tracks;");
  EXPECT_EQ(StoredVersion(db, "a"), 1);
  MediaAsset clip = MakeClip("a", 2);
  EXPECT_FALSE(assets.Save(clip));
  EXPECT_TRUE(log.Contains("cannot modify Track because it is a view")) << log.Text();
  EXPECT_EQ(StoredVersion(db, "b"), 1);
}

TEST_F(ForeignFileTest, ReversedDatesEndTheWalkAndNothingElse) {
  Change("UPDATE MediaAsset SET modificationDate = creationDate - 1 WHERE id = 'a'");
  MediaAsset clip;
  EXPECT_THROW(assets.GetObject(1, clip), std::runtime_error);
  EXPECT_EQ(StoredVersion(db, "b"), 1);
  Change("UPDATE MediaAsset SET modificationDate = creationDate");
  EXPECT_EQ(StoredVersion(db, "a"), 1);
}

TEST_F(ForeignFileTest, UnknownNumbersAreCarried) {
  Change(
      "UPDATE MediaAsset SET assetType = 77; UPDATE VideoEssence SET videoCodec = 54, boxing = -1;"
      "UPDATE DapOperatorMetadata SET dapIdPage = 200, dapIdBank = -7, archiveStatus = 99, dapIdCamera = 200;"
      "UPDATE Stream SET wrapperFormat = 1000");
  const MediaAsset clip = TestSupport::ReadDeep(db, 1);
  EXPECT_EQ(static_cast<int>(clip.AssetType()), 77);
  const auto& stream = *clip.MediaResources()[0]->Streams()[0];
  EXPECT_EQ(static_cast<int>(stream.Format()), 1000);
  EXPECT_EQ(static_cast<int>(dynamic_cast<const VideoEssence&>(stream.Essences()[0]).VideoCodec()), 54);
  EXPECT_EQ(static_cast<int>(clip.DapOperatorMetadata().ArchiveStatus()), 99);
  EXPECT_EQ(clip.DapOperatorMetadata().Icon(), "v1");
}

TEST_F(ForeignFileTest, NullReadsAsNothingWhereverItMayStand) {
  const auto columns = TestSupport::Column(
      db,
      "SELECT 'UPDATE \"' || m.name || '\" SET \"' || c.name || '\" = NULL;' FROM sqlite_schema m,"
      " pragma_table_info(m.name) c WHERE m.type = 'table' AND m.name NOT LIKE '%Fts%' AND m.name <> 'Props'"
      " AND m.name NOT LIKE 'sqlite%' AND NOT c.\"notnull\" AND c.pk = 0 AND c.name <> 'id'"
      " AND c.name NOT LIKE 'ref%' AND c.name NOT LIKE 'foreignKey' AND NOT (m.name LIKE 'TimeBounds%' AND"
      " c.name LIKE '%Boundary')");
  ASSERT_GT(columns.size(), 60U);
  std::string script;
  for (const std::string& column : columns)
    script += column;
  Change(script);
  log.Clear();
  const MediaAsset clip = TestSupport::ReadDeep(db, 1);
  EXPECT_EQ(clip.Name(), "");
  EXPECT_EQ(clip.CreationDate(), 0);
  EXPECT_EQ(clip.Annotations().size(), 1U);
  EXPECT_EQ(clip.Tracks().Size(), 2U);
  EXPECT_EQ(clip.DapOperatorMetadata().Keywords().size(), 2U);
  EXPECT_EQ(log.Text(), "");
  MediaAsset whole = MakeClip("a", 3);
  EXPECT_TRUE(assets.Save(whole));
  EXPECT_EQ(StoredVersion(db, "a"), 3);
}

}  // namespace Oru::Reliability
