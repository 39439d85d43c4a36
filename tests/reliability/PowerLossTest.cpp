#include "reliability/ChildProcess.h"
#include "reliability/Clips.h"

namespace Oru::Reliability {

using Common::Databases::Sqlite::TransactionGuard;

namespace {

constexpr int ClipCount = 6;

std::string ClipId(int number) {
  return "clip " + std::to_string(number);
}

// Saves and deletes clips in transactions for ever, and reports each before the commit and after it: "+"
// or "-", the clip's number and the version that it has then.
bool WriteForEver(const std::string& connection, int pipe, unsigned seed) {
  DataModelDatabase db(connection, nullptr);
  db.Open();
  std::minstd_rand random(seed);
  for (int version = static_cast<int>(seed) * 1000;; ++version) {
    const int number = static_cast<int>(random() % ClipCount);
    const bool isDeletion = random() % 4 == 0;
    const auto report = [&](const char* what) {
      const std::string line =
          what + (" " + std::to_string(number)) + " " + std::to_string(isDeletion ? 0 : version) + "\n";
      return write(pipe, line.data(), line.size()) == static_cast<ssize_t>(line.size());
    };
    TransactionGuard transaction(db);
    MediaAsset clip = MakeClip(ClipId(number), version);
    auto& assets = db.GetMediaAssetTable();
    const int64_t key = assets.GetObjectIdFromIdentifier(clip.Id());
    if (!(isDeletion ? assets.Delete(key) : assets.Save(clip)) || !report("begun")) return false;
    transaction.Commit();
    if (!report("done")) return false;
  }
}

}  // namespace

class PowerLossTest : public testing::TestWithParam<const char*> {};

TEST_P(PowerLossTest, KeepsEveryReportedCommitAndNoHalfClip) {
  const TestSupport::TemporaryDirectory directory;
  const std::string path = directory.File("clips.db");
  const std::string connection = "file:" + path + "?_journal_mode=" + GetParam();
  std::mt19937 random(20240229);
  std::map<int, int> versions;
  int commits = 0;
  for (unsigned round = 1; round <= 100; ++round) {
    SCOPED_TRACE(round);
    ChildProcess child([&](int pipe) { return WriteForEver(connection, pipe, round); });
    // Some are killed while they open the file, the others after their first commit.
    std::string reports, some = "none yet";
    while (round % 5 != 0 && reports.find("done") == std::string::npos && !some.empty())
      reports += some = child.HearSome();
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 40000));
    child.Kill();
    EXPECT_FALSE(child.Succeeds());

    // The last transaction was begun and not reported: it is in the file or not, but not in part.
    std::istringstream heard(reports + child.Heard());
    std::string what;
    int number = 0, version = 0, begun = -1, begunVersion = 0;
    while (heard >> what >> number >> version) {
      begun = what == "begun" ? number : -1;
      begunVersion = version;
      if (what == "done") versions[number] = version;
      commits += what == "done";
    }
    TestSupport::CapturedLog log;
    DataModelDatabase db(connection, log.Stream());
    db.Open();
    for (int i = 0; i < ClipCount; ++i) {
      const int stored = StoredVersion(db, ClipId(i));
      EXPECT_TRUE(stored == versions[i] || (i == begun && stored == begunVersion)) << stored;
      versions[i] = stored;
    }
    // A journal that was made and not yet used stays until the next write.
    EXPECT_TRUE(db.ExecuteStatement("PRAGMA user_version = " + std::to_string(round)));
    EXPECT_EQ(log.Text(), "");
    db.Close();
    EXPECT_EQ(Faults(path), "");
    EXPECT_FALSE(HasSideFiles(path));
    if (HasFailure()) return;
  }
  EXPECT_GE(commits, 80);
}

INSTANTIATE_TEST_SUITE_P(Journal, PowerLossTest, testing::Values("delete", "wal"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace Oru::Reliability
