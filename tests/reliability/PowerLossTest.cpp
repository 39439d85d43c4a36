#include "reliability/ChildProcess.h"
#include "reliability/Clips.h"

namespace Oru::Reliability {
namespace {

constexpr int ClipCount = 6;

// What the writer reports, in memory that outlives it: the version of each clip that is committed, 0 for none, and
// the one that is under way.
struct Reports {
  std::atomic<int> versions[ClipCount], commits, number, underWay;
};

// Saves and deletes clips in transactions for ever.
bool WriteForEver(const std::string& connection, Reports& reports, unsigned seed) {
  DataModelDatabase db(connection, nullptr);
  db.Open();
  std::minstd_rand random(seed);
  for (int version = static_cast<int>(seed) * 1000;; ++version) {
    const int number = static_cast<int>(random() % ClipCount);
    const bool isDeletion = random() % 4 == 0;
    TransactionGuard transaction(db);
    MediaAsset clip = MakeClip(std::to_string(number), version);
    auto& assets = db.GetMediaAssetTable();
    const int64_t key = assets.GetObjectIdFromIdentifier(clip.Id());
    if (!(isDeletion ? assets.Delete(key) : assets.Save(clip))) return false;
    reports.number = number;
    reports.underWay = isDeletion ? 0 : version;
    transaction.Commit();
    reports.versions[number] = reports.underWay.load();
    ++reports.commits;
  }
}

}  // namespace

class PowerLossTest : public testing::TestWithParam<const char*> {};

TEST_P(PowerLossTest, KeepsEveryReportedCommitAndNoHalfClip) {
  const TestSupport::TemporaryDirectory directory;
  const std::string path = directory.File("clips.db");
  const std::string connection = "file:" + path + "?_journal_mode=" + GetParam();
  const auto shared = SharedWithChildren<Reports>();
  Reports& reports = *shared;
  std::mt19937 random(20240229);
  for (unsigned round = 1; round <= 100 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    const int before = reports.commits;
    ChildProcess child([&] { return WriteForEver(connection, reports, round); });
    // Some are killed while they open the file, the others after their first commit.
    for (int i = 0; round % 5 != 0 && reports.commits == before && i < 10000; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 40000));
    child.Kill();
    EXPECT_FALSE(child.Succeeds());

    // What was under way is in the file or not, but not in part.
    TestSupport::CapturedLog log;
    DataModelDatabase db(connection, log.Stream());
    db.Open();
    for (int i = 0; i < ClipCount; ++i) {
      const int stored = StoredVersion(db, std::to_string(i));
      EXPECT_TRUE(stored == reports.versions[i] || (i == reports.number && stored == reports.underWay))
          << stored;
      reports.versions[i] = stored;
    }
    // A journal that was made and not yet used stays until the next write.
    EXPECT_TRUE(db.ExecuteStatement("PRAGMA user_version = " + std::to_string(round)));
    EXPECT_EQ(log.Text(), "");
    db.Close();
    EXPECT_EQ(Faults(path), "");
    EXPECT_FALSE(HasSideFiles(path));
  }
  EXPECT_GE(reports.commits, 80);
}

INSTANTIATE_TEST_SUITE_P(Journal, PowerLossTest, testing::Values("delete", "wal"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace Oru::Reliability
