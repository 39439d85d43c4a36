#include "reliability/FaultLoop.h"

namespace Oru::Reliability {

namespace {

using Clips = std::vector<MediaAsset>;

std::string PathOf(DataModelDatabase& db) {
  return sqlite3_db_filename(db.Handle(), "main");
}

bool Opens(DataModelDatabase& db, Clips&) {
  db.Close();
  db.Open();
  return true;
}

// The next attempt completes the new file.
bool OpensNew(DataModelDatabase& db, Clips& clips) {
  const std::string path = PathOf(db);
  db.Close();
  if (!clips.empty()) Restore(path, "");
  clips.clear();
  db.Open();
  return true;
}

// The keys that a rolled-back save has left in its objects are void, so each attempt through the tables saves objects
// of its own.
template <class Save>
auto InTransaction(Save save) {
  return [save](DataModelDatabase& db, Clips& clips) {
    TransactionGuard transaction(db);
    if (!save(db, clips)) return false;
    transaction.Commit();
    return true;
  };
}

// A save that failed after the asset's own row was written has left a clip that a second one wouldn't make whole.
bool SavesNew(DataModelDatabase& db, Clips&) {
  MediaAsset clip = MakeClip("new", 1);
  auto& assets = db.GetMediaAssetTable();
  const int64_t key = assets.GetObjectIdFromIdentifier(clip.Id());
  return (key == -1 || assets.Delete(key)) && assets.Save(clip);
}

bool SavesAgain(DataModelDatabase& db, Clips&) {
  MediaAsset clip = MakeClip("a", 2);
  return db.GetMediaAssetTable().Save(clip);
}

bool Deletes(DataModelDatabase& db, Clips&) {
  auto& assets = db.GetMediaAssetTable();
  const int64_t key = assets.GetObjectIdFromIdentifier(MediaAssetId("a"));
  return key == -1 ? assets.CleanUpDependentData() : assets.Delete(key);
}

bool SavesGroup(DataModelDatabase& db, Clips&) {
  AnglesMediaAssetGroup group = MakeGroup("g", 2, {"b", "a"});
  return db.GetAnglesMediaAssetGroupTable().Save(group);
}

auto HasVersion(const char* id, int version) {
  return [id, version](DataModelDatabase& db) { return StoredVersion(db, id) == version; };
}

bool HasNewGroup(DataModelDatabase& db) {
  return MediaAssetGroupRepository(db).FindAngles("g") == MakeGroup("g", 2, {"b", "a"});
}

// A commit is reported, and nothing else. The clip is as it was when it fails.
template <std::size_t Which>
bool Puts(DataModelDatabase& db, Clips& clips) {
  int heard = 0;
  const ChangeListener listener(db, [&heard](const auto&) { ++heard; });
  try {
    MediaAssetRepository(db).Put(clips[Which]);
  } catch (...) {
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(clips[Which].ObjectId(), -1);
    throw;
  }
  return heard == 1;
}

bool PutsAll(DataModelDatabase& db, Clips& clips) {
  return MediaAssetRepository(db).PutAll(clips).empty();
}

bool PutsInSavepoints(DataModelDatabase& db, Clips& clips) {
  TransactionGuard transaction(db);
  MediaAsset kept = *clips[1].Clone();
  SavepointGuard first(db);
  MediaAssetRepository(db).Put(kept);
  first.Commit();
  SavepointGuard second(db);
  MediaAssetRepository(db).Remove("a", Protection::Ignore);
  second.Rollback();
  transaction.Commit();
  return true;
}

bool Changes(DataModelDatabase& db, Clips& clips) {
  MediaAssetRepository(db).Change("a", [&](MediaAsset& clip) { clip = *clips[0].Clone(); });
  return true;
}

bool PutsGroup(DataModelDatabase& db, Clips&) {
  AnglesMediaAssetGroup group = MakeGroup("g", 2, {"b", "a"});
  MediaAssetGroupRepository(db).Put(group);
  return true;
}

bool PutsEdit(DataModelDatabase& db, Clips&) {
  Edits::Edit edit{Edits::EditId("e")};
  for (const char* id : {"s", "t"}) {
    auto sequence = std::make_unique<Edits::Sequence>(Edits::SequenceId(id));
    const auto profile = std::make_shared<Edits::DapOperatorMetadataProfile>();
    profile->ServerId(ZuServerId(10));
    sequence->Metadata().Set(profile);
    edit.Sequences().Add(std::move(sequence));
  }
  Edits::Database::EditRepository(db).Put(edit);
  return true;
}

bool Removes(DataModelDatabase& db, Clips&) {
  MediaAssetRepository(db).Remove("a", Protection::Ignore);
  return true;
}

bool RemovesAll(DataModelDatabase& db, Clips&) {
  MediaAssetRepository(db).RemoveAll(MediaAssetSearch().InGroup("h"), Protection::Ignore);
  return true;
}

bool Reads(DataModelDatabase& db, Clips&) {
  return StoredVersion(db, "a") == 1 && TestSupport::ReadDeep(db, 1) == MakeClip("a", 1);
}

// After a failure there is no copy, and nothing of one.
bool BacksUp(DataModelDatabase& db, Clips&) {
  const std::string copy = PathOf(db) + "-copy";
  std::filesystem::remove(copy);
  try {
    return db.Backup(copy);
  } catch (...) {
    EXPECT_FALSE(std::filesystem::exists(copy) || std::filesystem::exists(copy + ".part1"));
    throw;
  }
}

bool HasWholeCopy(DataModelDatabase& db) {
  return Faults(PathOf(db) + "-copy").empty() && Dump(PathOf(db) + "-copy") == Dump(PathOf(db));
}

// The old file: two clips, a group of both, and one of the first alone.
void MakeOldFile(const std::string& path) {
  DataModelDatabase db(path, nullptr);
  db.Open();
  Clips clips{MakeClip("a", 1), MakeClip("b", 1)};
  AnglesMediaAssetGroup both = MakeGroup("g", 1, {"a", "b"}), one = MakeGroup("h", 1, {"a"});
  auto& groups = db.GetAnglesMediaAssetGroupTable();
  ASSERT_TRUE(PutsAll(db, clips) && groups.Save(both) && groups.Save(one));
}

}  // namespace

const std::vector<FaultJob>& FaultJobs() {
  static const std::vector<FaultJob> jobs = {
      {"OpenNew", OpensNew},
      {"OpenOld", Opens, true},
      {"SaveNew", SavesNew, false, HasVersion("new", 1)},
      {"SaveNewInTransaction", InTransaction(SavesNew), true},
      {"SaveAgain", SavesAgain, false, HasVersion("a", 2)},
      {"SaveAgainInTransaction", InTransaction(SavesAgain), true},
      {"PutNew", Puts<1>, true},
      {"PutAgain", Puts<0>, true},
      {"PutAll", PutsAll, true},
      {"PutInSavepoints", PutsInSavepoints, true},
      {"Change", Changes, true},
      {"PutGroup", PutsGroup, true},
      {"PutEdit", PutsEdit, true},
      {"Remove", Removes, true},
      {"RemoveAll", RemovesAll, true},
      {"Delete", Deletes},
      {"DeleteInTransaction", InTransaction(Deletes), true},
      {"SaveGroup", SavesGroup, false, HasNewGroup},
      {"SaveGroupInTransaction", InTransaction(SavesGroup), true},
      {"Read", Reads, true},
      {"Backup", BacksUp, true, HasWholeCopy},
  };
  return jobs;
}

int RunFaultLoop(const FaultJob& job, FaultCounter& faults, const std::string& options, int step) {
  const TestSupport::TemporaryDirectory directory;
  const std::string path = directory.File("clips.db"), old = directory.File("old.db");
  MakeOldFile(old);
  const std::string oldDump = Dump(old);
  std::string newDump;
  int failures = 0;

  // The first round is the one without a fault.
  for (int n = 0;; n += n == 0 ? 1 : step) {
    Restore(path, old);
    SCOPED_TRACE(std::string(job.name) + options + ", failure " + std::to_string(n));
    TestSupport::CapturedLog log;
    DataModelDatabase db("file:" + path + "?" + options, log.Stream());
    db.Open();
    Clips clips{MakeClip("a", 2), MakeClip("new", 1)};
    // What an attempt came to: empty for success.
    const auto attempt = [&]() -> std::string {
      try {
        return job.attempt(db, clips) ? "" : "false";
      } catch (const std::exception& exception) {
        EXPECT_THAT(typeid(exception).name(), testing::HasSubstr("Common9Databases")) << exception.what();
        return exception.what();
      }
    };

    faults.Arm(n);
    const std::string outcome = attempt();
    const int failed = faults.failures;
    faults.Arm(0);

    // An opening whose later scripts fail reports it only in the log.
    const bool isRefused = !(outcome + log.Text()).empty();
    failures += failed;
    EXPECT_TRUE(failed > 0 || !isRefused) << outcome << log.Text();
    if (isRefused) {
      EXPECT_THAT(log.Text(), testing::ContainsRegex(
                                  "disk I/O error|database or disk is full|unable to open (a temporary )?"
                                  "database file|out of memory|vtable constructor failed"))
          << outcome;
    }
    // On the same connection, or on a new one after a look at the file as it was left.
    if (n % 2 == 1) {
      db.Close();
      EXPECT_TRUE(clips.empty() || Faults(path).empty());
      const std::string dump = job.isWhole ? Dump(path) : oldDump;
      EXPECT_TRUE((isRefused && dump == oldDump) || dump == newDump || !job.isWhole) << outcome;
    }
    if (!db.IsOpen()) db.Open();
    // No transaction that the caller doesn't know of outlasts the next statement.
    EXPECT_TRUE(db.ExecuteStatement("SELECT 1") && db.IsInTransaction() == db.HasBegunTransaction());
    // A rollback that failed as well leaves its transaction open, to be rolled back by hand.
    if (db.HasBegunTransaction()) {
      EXPECT_EQ(db.EndTransaction(false), 0);
    }
    // A fault that lasted through SQLite's own rollback may cost the connection one more refusal.
    if (isRefused && (failed == 1 || !attempt().empty())) {
      EXPECT_EQ(attempt(), "") << log.Text();
    }
    EXPECT_TRUE(!job.isDone || job.isDone(db)) << outcome << log.Text();
    db.Close();
    EXPECT_EQ(Faults(path), "");
    EXPECT_FALSE(HasSideFiles(path)) << outcome << log.Text();
    if (n == 0) newDump = Dump(path);
    EXPECT_TRUE((job.isDone && !job.isWhole) || Dump(path) == newDump) << outcome << log.Text();
    const bool isPastTheLast = n > 0 && failed == 0;
    if (isPastTheLast && IsLong()) std::cout << job.name << '?' << options << ": " << n - 1 << " steps\n";
    if (testing::Test::HasFailure() || isPastTheLast) return failures;
  }
}

}  // namespace Oru::Reliability
