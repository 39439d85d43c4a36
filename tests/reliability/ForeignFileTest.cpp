#include "reliability/Clips.h"

namespace Oru::Reliability {

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
  MediaAssetTable& assets = db.GetMediaAssetTable();
};

TEST_F(ForeignFileTest, AMissingColumnSpoilsItsOwnTableAlone) {
  Change("ALTER TABLE Annotation DROP COLUMN data");
  MediaAsset clip;
  ASSERT_TRUE(assets.GetObject(1, clip));
  EXPECT_THROW(assets.ReadAnnotations(clip), ObjectClosedException);
  EXPECT_TRUE(log.Contains("no such column: data")) << log.Text();
  assets.ReadTrack(clip);
  EXPECT_EQ(clip.Tracks().Size(), 2U);
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
  EXPECT_EQ(clip.Name() + log.Text(), "");
  EXPECT_EQ(clip.Annotations().size() + clip.Tracks().Size() + clip.DapOperatorMetadata().Keywords().size(),
            1U + 2U + 2U);
  MediaAsset whole = MakeClip("a", 3);
  EXPECT_TRUE(assets.Save(whole));
  EXPECT_EQ(StoredVersion(db, "a"), 3);
}

}  // namespace Oru::Reliability
