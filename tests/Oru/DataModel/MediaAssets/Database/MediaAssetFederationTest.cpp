#include "Oru/DataModel/MediaAssets/Database/MediaAssetFederation.h"

#include "support/DatabasePrelude.h"
#include "support/RandomAsset.h"
#include "support/SearchPages.h"

namespace Oru::DataModel::MediaAssets::Database {

using std::chrono::milliseconds;
using testing::HasSubstr;

class MediaAssetFederationTest : public testing::Test {
 protected:
  static constexpr std::size_t fileCount = 3;
  static constexpr milliseconds patient{60000};

  MediaAssetFederationTest() {
    merged.Open();
    for (std::size_t file = 0; file < fileCount; ++file) {
      connections.push_back(directory.File("server#" + std::to_string(file) + ".db"));
      DataModelDatabase database(connections.back(), nullptr);
      database.Open();
      MediaAssetRepository repository(database);
      std::vector<MediaAsset> assets(40);
      for (MediaAsset& asset : assets) {
        asset = random.Similar();
        // With its file at the end of its identifier.
        asset.Id(MediaAssetId(asset.Id().Value() + "@" + std::to_string(file)));
        asset.MediaResources().Clear();
        if (random.Chance(3)) asset.InBoundary(TimePoints::TimePoint::FromNanoseconds(random.Int64()));
        if (random.Chance(3)) asset.OutBoundary(TimePoints::TimePoint::FromNanoseconds(random.Int64()));
      }
      EXPECT_TRUE(repository.PutAll(assets).empty() && all.PutAll(assets).empty());
    }
  }

  TestSupport::RandomAssets random{7};
  TestSupport::TemporaryDirectory directory;
  std::vector<std::string> connections;
  // All assets in one file, in the order of the files and of the keys in each.
  DataModelDatabase merged{":memory:", nullptr};
  MediaAssetRepository all{merged};
};

TEST_F(MediaAssetFederationTest, GivesThePagesOfOneFileWithEverything) {
  MediaAssetFederation federation(connections, patient);
  for (int round = 0; round < 64; ++round) {
    const auto order = static_cast<MediaAssetOrder>(round % 8);
    MediaAssetSearch search;
    search.OrderBy(order, random.Chance(2) ? Direction::Ascending : Direction::Descending);
    if (random.Chance(2)) search.CreatedFrom(static_cast<int>(random.Below(5)));
    if (random.Chance(4) || order == MediaAssetOrder::Relevance) search.Typed("goal");
    SCOPED_TRACE(testing::Message() << "round " << round);

    const FederatedPage whole = federation.Find(search, MediaAssetParts::All);
    EXPECT_TRUE(whole.silent.empty());
    for (const FederatedAsset& each : whole.assets) {
      ASSERT_TRUE(each.asset == *all.Find(each.asset.Id()));
      ASSERT_EQ(each.asset.Id().Value().back(), static_cast<char>('0' + each.file));
    }
    // How relevant an asset is depends on the others of its file.
    if (order == MediaAssetOrder::Relevance) {
      ASSERT_EQ(static_cast<int64_t>(whole.assets.size()), all.Count(search));
    } else {
      ASSERT_EQ(Ids(whole.assets), Ids(all.Find(search).assets));
    }
    const auto limited = [&](auto length, auto offset) {
      return MediaAssetSearch(search).Limit(length, offset);
    };
    ExpectPages(
        Ids(whole.assets), static_cast<int64_t>(5 + random.Below(40)), static_cast<int64_t>(random.Below(3)),
        [&](auto... limit) { return federation.Find(limited(limit...)); },
        [&](auto& last, auto... limit) { return federation.FindAfter(last, limited(limit...)); });
  }
}

TEST_F(MediaAssetFederationTest, RefusesWhatItCantFollow) {
  EXPECT_THROW(MediaAssetFederation(connections, milliseconds(0)), ArgumentException);
  MediaAssetFederation federation(connections, patient);
  FederatedPage page = federation.Find(MediaAssetSearch().Limit(1));
  EXPECT_THROW(federation.Find(MediaAssetSearch().After(page.assets[0].asset)), ArgumentException);
  EXPECT_THROW(federation.FindAfter(FederatedAsset(), MediaAssetSearch()), ArgumentException);
  EXPECT_THROW(federation.FindAfter(page.assets[0], MediaAssetSearch().OrderBy(MediaAssetOrder::Name)),
               ArgumentException);
  page.assets[0].file = fileCount;
  EXPECT_THROW(federation.FindAfter(page.assets[0], MediaAssetSearch()), ArgumentException);
  EXPECT_TRUE(federation.Find(MediaAssetSearch().Limit(0)).assets.empty());
  EXPECT_TRUE(MediaAssetFederation({}).Find(MediaAssetSearch()).assets.empty());
}

TEST_F(MediaAssetFederationTest, NamesTheFilesThatDontAnswerAndAsksThemAgain) {
  const std::string missing = directory.File("missing.db");
  connections.insert(connections.begin() + 1, {missing, "file:" + missing + "?_busy_timeout=x"});
  connections.back() = "file:" + directory.File("server%232.db") + "?mode=ro#part";
  MediaAssetFederation federation(connections, milliseconds(1000));
  const auto silent = [&] {
    std::string places;
    const FederatedPage page = federation.Find(MediaAssetSearch());
    EXPECT_EQ(page.total, static_cast<int64_t>(page.assets.size()));
    for (const auto& [file, reason] : page.silent)
      places += std::to_string(file) + ": " + reason + "; ";
    EXPECT_EQ(page.total, static_cast<int64_t>(40 * (connections.size() - page.silent.size())));
    return places;
  };
  const std::string others =
      "1: unable to open database file; 2: connection option \"_busy_timeout\" is unknown or its value \"x\" is not "
      "one of its own; ";
  EXPECT_EQ(silent(), others);
  EXPECT_FALSE(std::filesystem::exists(missing));

  DataModelDatabase writer(connections[3], nullptr);
  writer.Open();
  ASSERT_TRUE(writer.ExecuteStatement("BEGIN EXCLUSIVE"));
  EXPECT_THAT(silent(), HasSubstr(others + "3: "));
  ASSERT_TRUE(writer.ExecuteStatement("COMMIT"));
  EXPECT_EQ(silent(), others);
  ASSERT_TRUE(writer.ExecuteStatement("UPDATE MediaAsset SET modificationDate = -1 WHERE key = 40"));
  EXPECT_THAT(silent(), testing::MatchesRegex(".*; 3: .+; ")) << "no asset changes before it was made";
}

TEST_F(MediaAssetFederationTest, AFileThatHangsHoldsUpNeitherPagesNorTheEnd) {
  // Opens files only while it isn't closed; until then each call waits.
  static std::atomic<bool> isClosed;
  static sqlite3_vfs gate = *sqlite3_vfs_find(nullptr);
  gate.zName = "gate";
  gate.xOpen = [](sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    while (isClosed)
      std::this_thread::sleep_for(milliseconds(1));
    sqlite3_vfs* const other = sqlite3_vfs_find(nullptr);
    return other->xOpen(other, name, file, flags, outFlags);
  };
  sqlite3_vfs_register(&gate, 0);
  connections[1] = "file:" + directory.File("server%231.db") + "?vfs=gate";
  const auto threads = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
  };
  // With the first thread of a process, ThreadSanitizer starts one of its own, which stays.
  std::thread([] {}).join();
  const auto before = threads();
  for (const bool opensInTheEnd : {true, false}) {
    isClosed = true;
    MediaAssetFederation federation(connections, milliseconds(700));
    for (int i = 0; i < 2; ++i) {
      const FederatedPage page = federation.Find(MediaAssetSearch());
      EXPECT_EQ(page.assets.size(), 80U);
      ASSERT_EQ(page.silent.size(), 1U);
      EXPECT_EQ(page.silent[0].reason, "no answer within 700 ms");
    }
    if (!opensInTheEnd) continue;
    isClosed = false;
    while (!federation.Find(MediaAssetSearch()).silent.empty())
      std::this_thread::sleep_for(milliseconds(1));
  }
  EXPECT_EQ(threads(), before + 1) << "the thread was left to itself";
  isClosed = false;
  while (threads() > before)
    std::this_thread::sleep_for(milliseconds(1));
}

}  // namespace Oru::DataModel::MediaAssets::Database
