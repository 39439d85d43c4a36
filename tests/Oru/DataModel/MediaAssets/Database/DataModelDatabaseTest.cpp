#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/AudioEssenceTable.h"

#include "support/AssetReading.h"
#include "support/CapturedLog.h"
#include "support/ClipBuilder.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using testing::HasSubstr;
using testing::ThrowsMessage;
using TestSupport::DeepDifference;
using TestSupport::MakeClip;

class DataModelDatabaseTest : public testing::Test {
 protected:
  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string path = directory.File("clips.db");
};

TEST_F(DataModelDatabaseTest, TablesWorkAcrossClosingAndOpeningOfOneObject) {
  DataModelDatabase database(path, log.Stream());
  MediaAssetTable& assets = database.GetMediaAssetTable();
  database.Open();
  MediaAsset early = MakeClip("early");
  ASSERT_TRUE(assets.Save(early));
  const auto walk = assets.OpenObjectCursor();
  MediaAsset asset;
  ASSERT_TRUE(walk->Next(asset));

  database.Close();
  EXPECT_FALSE(walk->IsOpened());
  EXPECT_THROW(walk->Next(asset), ObjectClosedException);
  EXPECT_FALSE(database.IsOpen());
  EXPECT_FALSE(assets.Save(early));
  MediaAsset late = MakeClip("late");
  EXPECT_THROW(assets.Save(late), ObjectClosedException);
  EXPECT_EQ(late.ObjectId(), -1);

  for (int i = 0; i < 3; ++i) {
    database.Open();
    EXPECT_EQ(DeepDifference(database, early), "");
    early = MakeClip("early", "version " + std::to_string(i));
    ASSERT_TRUE(assets.Save(early)) << log.Text();
    EXPECT_EQ(DeepDifference(database, early), "");
    MediaAsset next = MakeClip("opening " + std::to_string(i));
    ASSERT_TRUE(assets.Save(next));
    EXPECT_EQ(DeepDifference(database, next), "");
    database.Close();
  }
  database.Open();
  EXPECT_EQ(TestSupport::Value(database, "SELECT group_concat(id) FROM MediaAsset"),
            "early,opening 0,opening 1,opening 2");
  EXPECT_EQ(TestSupport::Value(database, "PRAGMA foreign_keys"), "1");
}

TEST_F(DataModelDatabaseTest, ATransactionThatIsOpenAtTheCloseIsLost) {
  DataModelDatabase database(path, log.Stream());
  database.Open();
  database.BeginTransaction();
  MediaAsset clip = MakeClip("clip");
  ASSERT_TRUE(database.GetMediaAssetTable().Save(clip));
  database.Close();
  database.Open();
  EXPECT_EQ(TestSupport::Value(database, "SELECT count(*) FROM MediaAsset"), "0");
  EXPECT_NO_THROW(Sqlite::TransactionGuard(database).Rollback());
}

TEST_F(DataModelDatabaseTest, AFileThatCanOnlyBeReadIsReadAndNotWritten) {
  MediaAsset clip = MakeClip("clip");
  {
    DataModelDatabase writer(path, log.Stream());
    writer.Open();
    ASSERT_TRUE(writer.GetMediaAssetTable().Save(clip));
  }
  const std::string before = TestSupport::FileContent(path);
  for (const char* option : {"?mode=ro", "?immutable=1"}) {
    SCOPED_TRACE(option);
    DataModelDatabase reader("file:" + path + option, log.Stream());
    reader.Open();
    EXPECT_EQ(DeepDifference(reader, clip), "");
    log.Clear();
    MediaAsset changed = MakeClip("clip", "changed"), added = MakeClip("added");
    EXPECT_FALSE(reader.GetMediaAssetTable().Save(changed));
    EXPECT_FALSE(reader.GetMediaAssetTable().Save(added));
    EXPECT_EQ(added.ObjectId(), -1);
    EXPECT_TRUE(log.Contains("attempt to write a readonly database")) << log.Text();
    EXPECT_THROW(Sqlite::TransactionGuard{reader}, InvalidOperationException);
    EXPECT_EQ(DeepDifference(reader, clip), "");
    reader.Close();
    EXPECT_EQ(TestSupport::FileContent(path), before);
  }
}

TEST_F(DataModelDatabaseTest, AFailedOpeningSaysWhyAndLeavesTheFileAndTheObjectAlone) {
  std::ofstream(directory.File("text.txt"))
      << "This is no database, though it is long enough to be looked at.";
  std::ofstream(directory.File("empty"));
  struct {
    std::string connection;
    const char* message;
  } const cases[] = {
      {directory.File("text.txt"), "file is not a database"},
      {directory.Path().string(), "unable to open database file"},
      {directory.File("absent/clips.db"), "unable to open database file"},
      {"file:" + directory.File("absent.db") + "?mode=rw", "unable to open database file"},
      {"file:" + directory.File("empty") + "?mode=ro", "attempt to write a readonly database"}};
  for (const auto& [connection, message] : cases) {
    SCOPED_TRACE(connection);
    log.Clear();
    DataModelDatabase database(connection, log.Stream());
    EXPECT_THAT([&] { database.Open(); }, ThrowsMessage<NotSupportedException>(HasSubstr(message)));
    EXPECT_FALSE(database.IsOpen());
    EXPECT_TRUE(log.Contains(message)) << log.Text();
    EXPECT_THROW(database.Open(), NotSupportedException);
  }
  EXPECT_EQ(TestSupport::FileContent(directory.File("text.txt")).substr(0, 4), "This");
  EXPECT_EQ(TestSupport::FileContent(directory.File("empty")), "");
  EXPECT_THROW(DataModelDatabase(log.Stream()).Open(), ArgumentException);
}

TEST_F(DataModelDatabaseTest, PropertiesAreKeptByName) {
  DataModelDatabase database(path, nullptr);
  auto& properties = database.GetProperties();
  database.Open();
  Property property;
  property.SetName("operator's version");
  property.SetStringValue("3.1");
  property.SetIntValue(-31);
  ASSERT_TRUE(properties.Save(property));
  database.Close();
  database.Open();
  Property reading;
  ASSERT_TRUE(properties.GetObject("operator's version", reading));
  EXPECT_EQ(reading.GetStringValue(), "3.1");
  EXPECT_EQ(reading.GetIntValue(), -31);
  EXPECT_FALSE(properties.GetObject("other", reading));
}

TEST_F(DataModelDatabaseTest, AccessorsReachTheTablesOfTheAssetTable) {
  DataModelDatabase database(path, nullptr);
  MediaAssetTable& assets = database.GetMediaAssetTable();
  EXPECT_EQ(&database.GetStreamTable(), &assets.GetMediaResourceTable().GetStreamTable());
  EXPECT_EQ(&database.GetEssenceTable(), &assets.GetStreamTable().GetEssenceTable());
  EXPECT_EQ(&database.GetVideoEssenceTable(), &assets.GetEssenceTable().GetVideoEssenceTable());
  EXPECT_EQ(&database.GetAudioEssenceTable(), &assets.GetAudioEssenceTable());
  EXPECT_EQ(&database.GetDataEssenceTable(), &assets.GetDataEssenceTable());
  EXPECT_EQ(&database.GetRelationMediaAssetMediaResource(), &assets.GetRelationMediasTable());
  EXPECT_EQ(&database.GetTrackTable(), &assets.GetTrackTable());
  EXPECT_EQ(&assets.GetDapOperatorKeywordsTable(),
            &assets.GetDapOperatorMetadataTable().GetDapOperatorKeywordsTable());
  EXPECT_EQ(database.GetAudioEssenceTable().GetTableName(), "AudioEssence");
}

TEST_F(DataModelDatabaseTest, TheFirstStatementMayBeADeletionWhoeverElseHasOpenedTheFile) {
  DataModelDatabase first(path, log.Stream()), second(path, log.Stream());
  first.Open();
  second.Open();
  EXPECT_TRUE(first.ExecuteStatement("DELETE FROM MediaAsset WHERE id = 'clip'")) << log.Text();
}

}  // namespace Oru::DataModel::MediaAssets::Database
