#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "support/AssetReading.h"
#include "support/CapturedLog.h"
#include "support/RandomAsset.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Sqlite::TransactionGuard;

// Each seed makes a file of its own.
class MediaAssetRoundTripTest : public testing::TestWithParam<uint64_t> {
 protected:
  void SetUp() override { Reopen(); }

  void Reopen() {
    database.emplace(directory.File("clips.db"), log.Stream());
    database->Open();
    // Most of the time would go into journals and waiting for the disk.
    ASSERT_TRUE(database->ExecuteStatement("PRAGMA synchronous = off; PRAGMA journal_mode = memory"));
  }

  // One by one, or several in a transaction.
  void SaveAll(std::vector<MediaAsset>& saved) {
    std::optional<TransactionGuard> transaction;
    for (MediaAsset& asset : saved) {
      if (!transaction && random.Chance(3)) transaction.emplace(*database);
      ASSERT_TRUE(database->GetMediaAssetTable().Save(asset)) << log.Text();
      if (!transaction || !random.Chance(5)) continue;
      EXPECT_GT(transaction->Commit(), 0);
      transaction.reset();
    }
    if (transaction) transaction->Commit();
  }

  void ExpectStored(const std::vector<MediaAsset>& saved) {
    const Common::Databases::Sqlite::ReadGuard guard(*database);
    for (const MediaAsset& asset : saved) {
      ASSERT_TRUE(TestSupport::IsStored(*database, asset));
      const MediaAsset lazy = TestSupport::ReadLazy(*database, asset.ObjectId());
      ASSERT_TRUE(TestSupport::IsReadingOf(asset, lazy, false));
      for (const auto& resource : lazy.MediaResources())
        ASSERT_FALSE(resource);
    }
  }

  TestSupport::RandomAssets random{GetParam()};
  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  std::optional<DataModelDatabase> database;
};

TEST_P(MediaAssetRoundTripTest, WhatIsSavedIsReadAndSavedAgainAndReadAgain) {
  std::vector<MediaAsset> assets;
  for (int i = 0; i < 50; ++i)
    assets.push_back(random.Next());
  SaveAll(assets);
  ExpectStored(assets);
  Reopen();
  ExpectStored(assets);

  // What was read is saved again as well as what was made, changed in all that a save can change.
  for (MediaAsset& asset : assets) {
    if (random.Chance(2)) asset = TestSupport::ReadDeep(*database, asset.ObjectId());
    random.Change(asset);
    if (random.Chance(4)) asset.ObjectId(-1);
  }
  SaveAll(assets);
  Reopen();
  ExpectStored(assets);
  EXPECT_EQ(TestSupport::Value(*database, "SELECT count(*) FROM MediaAsset"), "50");
  EXPECT_EQ(TestSupport::Value(*database, "PRAGMA integrity_check"), "ok");
  EXPECT_TRUE(TestSupport::Column(*database, "PRAGMA foreign_key_check").empty());
  EXPECT_TRUE(database->ExecuteStatement(
      "INSERT INTO MediaAssetFts(MediaAssetFts, rank) VALUES('integrity-check', 1)"));
  EXPECT_EQ(log.Text(), "");
}

INSTANTIATE_TEST_SUITE_P(Seeds, MediaAssetRoundTripTest, testing::Range(uint64_t{1}, uint64_t{7}));

}  // namespace Oru::DataModel::MediaAssets::Database
