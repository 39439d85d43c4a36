#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "support/AssetReading.h"
#include "support/CapturedLog.h"
#include "support/ClipBuilder.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using TestSupport::IsStored;
using TestSupport::MakeClip;

class DataModelDatabaseTest : public testing::Test {
 protected:
  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string path = directory.File("clips.db");
};

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
    EXPECT_TRUE(IsStored(reader, clip));
    log.Clear();
    MediaAsset changed = MakeClip("clip", "changed"), added = MakeClip("added");
    EXPECT_FALSE(reader.GetMediaAssetTable().Save(changed) || reader.GetMediaAssetTable().Save(added));
    EXPECT_EQ(added.ObjectId(), -1);
    EXPECT_TRUE(log.Contains("attempt to write a readonly database")) << log.Text();
    EXPECT_THROW(Sqlite::TransactionGuard{reader}, InvalidOperationException);
    EXPECT_TRUE(IsStored(reader, clip));
    reader.Close();
    EXPECT_EQ(TestSupport::FileContent(path), before);
  }
}

TEST_F(DataModelDatabaseTest, AnOpeningThatFailsLeavesTheFileAndTheObjectAlone) {
  std::ofstream(directory.File("empty"));
  std::ofstream(directory.File("text")) << "This is no database, though it is long enough to be looked at.";
  for (const std::string name : {"empty", "text"}) {
    const std::string content = TestSupport::FileContent(directory.File(name));
    DataModelDatabase database("file:" + directory.File(name) + "?mode=ro", log.Stream());
    EXPECT_THROW(database.Open(), NotSupportedException) << name;
    EXPECT_FALSE(database.IsOpen());
    EXPECT_THROW(database.Open(), NotSupportedException) << name;
    EXPECT_EQ(TestSupport::FileContent(directory.File(name)), content);
  }
  EXPECT_TRUE(log.Contains("attempt to write a readonly database")) << log.Text();
  EXPECT_THROW(DataModelDatabase(log.Stream()).Open(), ArgumentException);
}

TEST_F(DataModelDatabaseTest, TheFirstStatementMayBeADeletionWhoeverElseHasOpenedTheFile) {
  DataModelDatabase first(path, log.Stream()), second(path, log.Stream());
  first.Open();
  for (const char* ahead : {"SELECT 1", "SELECT key FROM Stream"}) {
    EXPECT_TRUE(first.ExecuteStatement(ahead));
    second.Open();
    EXPECT_TRUE(first.ExecuteStatement("DELETE FROM MediaAsset WHERE id = 'clip'")) << log.Text();
    second.Close();
  }
  EXPECT_EQ(log.Text(), "");
}

}  // namespace Oru::DataModel::MediaAssets::Database
