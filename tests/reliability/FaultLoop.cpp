#include "reliability/FaultLoop.h"

#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"
#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/Common/Databases/Sqlite/ChangeListener.h"
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>

namespace Oru::Reliability {

using namespace Common::Databases;
using Sqlite::TransactionGuard;

namespace {

using DataModel::MediaAssets::Database::MediaAssetGroupRepository;
using DataModel::MediaAssets::Database::MediaAssetRepository;
using DataModel::MediaAssets::Database::MediaAssetSearch;
using DataModel::MediaAssets::Database::Protection;
namespace Edits = BusinessEntityModel::Edits;

bool HoldsAll(DataModelDatabase& db) {
  DataModelDatabase whole(":memory:", nullptr);
  whole.Open();
  const std::string count = "SELECT count(*) FROM sqlite_schema";
  return TestSupport::Value(db, count) == TestSupport::Value(whole, count);
}

// An attempt without objects of its own.
template <class Work>
std::function<FaultJob::Attempt()> Each(Work work) {
  return [work] {
    return [work](DataModelDatabase& db) {
      work(db);
      return true;
    };
  };
}

// All or nothing. The keys that a rolled-back save has left in its objects are void, so each attempt saves a
// clone.
template <class Entity, class Save>
FaultJob::Attempt InTransaction(Entity entity, Save save) {
  const auto original = std::make_shared<Entity>(std::move(entity));
  return [original, save](DataModelDatabase& db) {
    TransactionGuard transaction(db);
    const auto clone = original->Clone();
    if (!save(db, static_cast<Entity&>(*clone))) return false;
    transaction.Commit();
    return true;
  };
}

template <class Entity, class Save>
FaultJob::Attempt Plain(Entity entity, Save save) {
  const auto original = std::make_shared<Entity>(std::move(entity));
  return [original, save](DataModelDatabase& db) { return save(db, *original); };
}

bool SaveClip(DataModelDatabase& db, MediaAsset& clip) {
  return db.GetMediaAssetTable().Save(clip);
}

bool SaveGroup(DataModelDatabase& db, AnglesMediaAssetGroup& group) {
  return db.GetAnglesMediaAssetGroupTable().Save(group);
}

bool DeleteClip(DataModelDatabase& db, MediaAsset& clip) {
  auto& assets = db.GetMediaAssetTable();
  const int64_t key = assets.GetObjectIdFromIdentifier(clip.Id());
  return key == -1 ? assets.CleanUpDependentData() : assets.Delete(key);
}

FaultJob::Attempt HasVersion(const char* id, int version) {
  return [id, version](DataModelDatabase& db) { return StoredVersion(db, id) == version; };
}

// A save without a transaction that failed after the asset's own row has given the asset its key; the next
// save is an update then, which writes no links. Deleting the clip and saving a clone makes it whole.
bool IsSavedOrMended(DataModelDatabase& db) {
  if (StoredVersion(db, "new") == 1) return true;
  const MediaAsset clip = MakeClip("new", 1);
  const auto key = std::to_string(db.GetMediaAssetTable().GetObjectIdFromIdentifier(clip.Id()));
  const auto links = [&](const std::string& table) {
    return std::stoi(
        TestSupport::Value(db, "SELECT count(*) FROM " + table + " WHERE refMediaAsset = " + key));
  };
  EXPECT_LT(links("RelationMediaAssetMediaResource") + links("RelationAssetTrack"), 4);
  MediaAsset half = MakeClip("new", 1);
  return DeleteClip(db, half) && SaveClip(db, *clip.Clone()) && StoredVersion(db, "new") == 1;
}

// The same objects in each attempt: they are as they were when one fails.
FaultJob::Attempt PuttingAll() {
  const auto objects =
      std::make_shared<std::vector<MediaAsset>>(std::vector{MakeClip("a", 2), MakeClip("new", 1)});
  return [objects](DataModelDatabase& db) { return MediaAssetRepository(db).PutAll(*objects).empty(); };
}

FaultJob::Attempt Putting(MediaAsset clip) {
  const auto object = std::make_shared<MediaAsset>(std::move(clip));
  return [object](DataModelDatabase& db) {
    const int64_t before = object->ObjectId();
    try {
      MediaAssetRepository(db).Put(*object);
      return true;
    } catch (...) {
      EXPECT_EQ(object->ObjectId(), before);
      throw;
    }
  };
}

// A commit is reported, and nothing else.
void PutsHeard(DataModelDatabase& db) {
  std::vector<Sqlite::ChangeNotice> heard;
  const Sqlite::ChangeListener listener(db, [&](const auto& notice) { heard.push_back(notice); });
  MediaAsset clip = MakeClip("new", 1);
  try {
    MediaAssetRepository(db).Put(clip);
  } catch (...) {
    EXPECT_TRUE(heard.empty());
    throw;
  }
  EXPECT_EQ(heard.size(), 1U);
  for (const Sqlite::ChangeNotice& notice : heard) {
    const auto isClip = [](const auto& table) { return table.name == "MediaAsset"; };
    EXPECT_TRUE(notice.areAllTables || std::any_of(notice.tables.begin(), notice.tables.end(), isClip));
  }
}

void PutsInSavepoints(DataModelDatabase& db) {
  TransactionGuard transaction(db);
  MediaAsset kept = MakeClip("new", 1), gone = MakeClip("gone", 1);
  Sqlite::SavepointGuard first(db);
  MediaAssetRepository(db).Put(kept);
  first.Commit();
  Sqlite::SavepointGuard second(db);
  MediaAssetRepository(db).Put(gone);
  MediaAssetRepository(db).Remove("a", Protection::Ignore);
  second.Rollback();
  transaction.Commit();
}

AnglesMediaAssetGroup NewGroup() {
  return MakeGroup("g", 2, {"b", "a"});
}

void PutsEdit(DataModelDatabase& db) {
  Edits::Edit edit{Edits::EditId("e")};
  for (const char* id : {"s", "t"}) {
    auto sequence = std::make_unique<Edits::Sequence>(Edits::SequenceId(id));
    const auto profile = std::make_shared<Edits::DapOperatorMetadataProfile>();
    profile->ServerId(DataModel::MediaAssets::ZuServerId(10));
    sequence->Metadata().Set(profile);
    edit.Sequences().Add(std::move(sequence));
  }
  Edits::Database::EditRepository(db).Put(edit);
}

bool HasEdit(DataModelDatabase& db) {
  return TestSupport::Value(db,
                            "SELECT count(*) FROM Edit e JOIN Sequence s ON s.editRef = e.key"
                            " JOIN DapOperatorMetadataSequence d ON d.refSequence = s.key") == "2";
}

bool HasNewGroup(DataModelDatabase& db) {
  return TestSupport::Value(
             db,
             "SELECT g.name || count(*) || min(i.name) || max(i.name) || d.zuServerId"
             " FROM MediaAssetGroup g JOIN MediaAssetGroupItem m ON m.refMediaAssetGroup = g.key"
             " JOIN AnglesMediaAssetGroupItem i ON i.refMediaAssetGroupItem = m.key"
             " JOIN DapOperatorMetadataAngles d ON d.refAngles = g.key WHERE g.id = 'g'") == "v22v2v220";
}

bool IsDeleted(DataModelDatabase& db) {
  return TestSupport::Value(
             db,
             "SELECT count(*) || (SELECT count(*) FROM Track) || (SELECT count(*) FROM Essence)"
             " || (SELECT count(*) FROM MediaAssetGroup) FROM MediaAsset") == "1361";
}

bool Reads(DataModelDatabase& db) {
  return StoredVersion(db, "a") == 1;
}

std::string CopyOf(DataModelDatabase& db) {
  return std::string(sqlite3_db_filename(db.Handle(), "main")) + "-copy";
}

// After a failure there is no copy, and nothing of one.
bool BacksUp(DataModelDatabase& db) {
  const std::string copy = CopyOf(db);
  std::filesystem::remove(copy);
  try {
    return db.Backup(copy);
  } catch (...) {
    EXPECT_FALSE(std::filesystem::exists(copy) || std::filesystem::exists(copy + ".part1"));
    throw;
  }
}

bool HasWholeCopy(DataModelDatabase& db) {
  const std::string copy = CopyOf(db);
  return Faults(copy).empty() && Dump(copy) == Dump(sqlite3_db_filename(db.Handle(), "main"));
}

// The old file: two clips, a group of both, and one of the first alone.
void MakeOldFile(const std::string& path) {
  DataModelDatabase db(path, nullptr);
  db.Open();
  for (const char* id : {"a", "b"}) {
    MediaAsset clip = MakeClip(id, 1);
    ASSERT_TRUE(SaveClip(db, clip));
  }
  AnglesMediaAssetGroup both = MakeGroup("g", 1, {"a", "b"}), one = MakeGroup("h", 1, {"a"});
  ASSERT_TRUE(SaveGroup(db, both) && SaveGroup(db, one));
}

// What an attempt came to: empty for success.
std::string Run(const FaultJob::Attempt& attempt, DataModelDatabase& db) {
  try {
    return attempt(db) ? "" : "false";
  } catch (const NotSupportedException& exception) {
    return exception.what();
  } catch (const InvalidOperationException& exception) {
    return exception.what();
  } catch (const ObjectClosedException& exception) {
    return exception.what();
  } catch (const ArgumentException& exception) {
    return exception.what();
  }
}

bool HasReason(const std::string& log) {
  for (const char* reason :
       {"disk I/O error", "database or disk is full", "unable to open database file",
        "unable to open a temporary database file", "out of memory", "vtable constructor failed"}) {
    if (log.find(reason) != std::string::npos) return true;
  }
  return false;
}

}  // namespace

const std::vector<FaultJob>& FaultJobs() {
  static const auto opening = Each([](DataModelDatabase& db) {
    db.Close();
    db.Open();
  });
  static const std::vector<FaultJob> jobs = {
      {"OpenNew", opening, HoldsAll, false, true, true},
      {"OpenOld", opening, HoldsAll, true, true},
      {"SaveNew", [] { return Plain(MakeClip("new", 1), SaveClip); }, IsSavedOrMended},
      {"SaveNewInTransaction", [] { return InTransaction(MakeClip("new", 1), SaveClip); },
       HasVersion("new", 1), true},
      {"SaveAgain", [] { return Plain(MakeClip("a", 2), SaveClip); }, HasVersion("a", 2)},
      {"SaveAgainInTransaction", [] { return InTransaction(MakeClip("a", 2), SaveClip); }, HasVersion("a", 2),
       true},
      {"PutNew", [] { return Putting(MakeClip("new", 1)); }, HasVersion("new", 1), true},
      {"PutAgain", [] { return Putting(MakeClip("a", 2)); }, HasVersion("a", 2), true},
      {"PutAll", PuttingAll, HasVersion("new", 1), true},
      {"PutHeard", Each(PutsHeard), HasVersion("new", 1), true},
      {"PutInSavepoints", Each(PutsInSavepoints), HasVersion("new", 1), true},
      {"Change", Each([](DataModelDatabase& db) {
         MediaAssetRepository(db).Change("a", [](MediaAsset& clip) { clip = MakeClip("a", 2); });
       }),
       HasVersion("a", 2), true},
      {"PutGroup", Each([](DataModelDatabase& db) {
         auto group = NewGroup();
         MediaAssetGroupRepository(db).Put(group);
       }),
       HasNewGroup, true},
      {"PutEdit", Each(PutsEdit), HasEdit, true},
      {"Remove",
       Each([](DataModelDatabase& db) { MediaAssetRepository(db).Remove("a", Protection::Ignore); }),
       IsDeleted, true},
      {"RemoveAll", Each([](DataModelDatabase& db) {
         Sqlite::QuerySqlite first;
         first.Equals("MediaAsset.id", "a");
         MediaAssetRepository(db).RemoveAll(MediaAssetSearch().Where(first), Protection::Ignore);
       }),
       IsDeleted, true},
      {"Delete", [] { return Plain(MakeClip("a", 1), DeleteClip); }, IsDeleted},
      {"DeleteInTransaction", [] { return InTransaction(MakeClip("a", 1), DeleteClip); }, IsDeleted, true},
      {"SaveGroup", [] { return Plain(NewGroup(), SaveGroup); }, HasNewGroup},
      {"SaveGroupInTransaction", [] { return InTransaction(NewGroup(), SaveGroup); }, HasNewGroup, true},
      {"Read", [] { return FaultJob::Attempt(Reads); }, Reads, true},
      {"Backup", [] { return FaultJob::Attempt(BacksUp); }, HasWholeCopy, true},
  };
  return jobs;
}

int RunFaultLoop(const FaultJob& job, const FaultSource& source) {
  const TestSupport::TemporaryDirectory directory;
  const std::string path = directory.File("clips.db"), old = directory.File("old.db");
  if (!job.isOfNewFile) MakeOldFile(old);
  const std::string from = job.isOfNewFile ? "" : old, oldDump = Dump(old);
  std::string newDump;
  int failures = 0;

  // The first round is the one without a fault.
  for (int n = 0;; n += n == 0 ? 1 : source.step) {
    Restore(path, from);
    SCOPED_TRACE(std::string(job.name) + source.options + ", failure " + std::to_string(n));
    TestSupport::CapturedLog log;
    DataModelDatabase db("file:" + path + "?" + source.options, log.Stream());
    if (!job.isOfNewFile) db.Open();
    const FaultJob::Attempt attempt = job.make();

    source.arm(n);
    const std::string outcome = Run(attempt, db);
    const int failed = source.failureCount();
    source.arm(0);

    // An opening whose later scripts fail reports it only in the log.
    const bool isRefused = !outcome.empty() || (job.isOpening && !log.Text().empty());
    failures += failed;
    if (failed == 0) {
      EXPECT_EQ(outcome + log.Text(), "");
    }
    if (isRefused) {
      EXPECT_TRUE(HasReason(log.Text())) << outcome << '\n' << log.Text();
    }
    // On the same connection, or on a new one after a look at the file as it was left.
    if (n % 2 == 1) {
      db.Close();
      if (!job.isOfNewFile) {
        EXPECT_EQ(Faults(path), "");
      }
      const std::string dump = job.isWhole && n > 0 ? Dump(path) : oldDump;
      EXPECT_TRUE(dump == oldDump || dump == newDump) << outcome;
      EXPECT_TRUE(isRefused || !job.isWhole || dump == newDump);
    }
    if (!db.IsOpen()) db.Open();
    // A rollback that failed as well leaves its transaction open, to be rolled back by hand.
    if (db.HasBegunTransaction()) {
      EXPECT_EQ(db.EndTransaction(false), 0);
    }
    // A fault that lasted through SQLite's own rollback may cost the connection one more refusal.
    if (isRefused && (failed == 1 || !Run(attempt, db).empty())) {
      EXPECT_EQ(Run(attempt, db), "") << log.Text();
    }
    EXPECT_TRUE(Run(job.isDone, db).empty()) << outcome << '\n' << log.Text();
    db.Close();
    EXPECT_EQ(Faults(path), "");
    EXPECT_FALSE(HasSideFiles(path)) << outcome << log.Text();
    if (n == 0) newDump = Dump(path);
    if (job.isWhole) {
      EXPECT_EQ(Dump(path), newDump);
    }
    const bool isPastTheLast = n > 0 && failed == 0;
    if (isPastTheLast && IsLong())
      std::cout << job.name << '?' << source.options << ": " << n - 1 << " steps\n";
    if (testing::Test::HasFailure() || isPastTheLast) return failures;
  }
}

}  // namespace Oru::Reliability
