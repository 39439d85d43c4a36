// Usage: soak SECONDS [SEED]
// Works on one file with four processes of three threads each, half of the time with a rollback journal and half
// with a write-ahead log. The threads save, delete, read, search, copy, check and open at random. Processes are
// killed: in the first half of that time one or all of them every moment, and then all open the same file or a new one
// at once; later now and then one. What the file holds is compared all the time with what was acknowledged, and the
// processes must not grow. Ends with 0 when nothing was lost.

#include "reliability/ChildProcess.h"
#include "reliability/Clips.h"

#include <array>

// A long memory of what was freed would look like growth.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that AddressSanitizer looks for
extern "C" const char* __asan_default_options() {
  return "quarantine_size_mb=8";
}

namespace Oru::Reliability {

namespace {

constexpr int ProcessCount = 4, ThreadCount = 3, ClipCount = 8;

// A clip has one writer. Its version in the file is `acknowledged` while no write is under way, and that or
// `written` while one is; 0 means that there is none.
struct Clip {
  std::atomic<int> acknowledged{0};
  std::atomic<int> written{0};
};

// What the processes share.
struct Board {
  std::atomic<bool> isOver{false};
  std::atomic<int64_t> steps{0}, writes{0}, copies{0};
  Clip clips[ProcessCount * ThreadCount * ClipCount];
};

std::string ClipId(std::size_t index) {
  return "clip " + std::to_string(index);
}

void Require(bool holds, const std::string& fault) {
  if (!holds) throw std::runtime_error(fault);
}

// One thread of one process, and its clips.
struct Worker {
  Board& board;
  // Among those of all processes.
  const std::size_t number;
  const std::string copyPath;
  DataModelDatabase& database;
  // Whether no other thread uses the database.
  const bool isAlone;
  std::minstd_rand random;
  // By the clock, so that a process never repeats the versions of the one before it.
  int nextVersion =
      static_cast<int>(Clock::now().time_since_epoch() / std::chrono::milliseconds(10) % 1000000000);

  std::string Id(int clip) const { return ClipId(number * ClipCount + static_cast<std::size_t>(clip)); }
  Clip& ClipAt(int clip) { return board.clips[number * ClipCount + static_cast<std::size_t>(clip)]; }
  MediaAsset NewClip(int clip) { return MakeClip(Id(clip), ClipAt(clip).written); }
  int Any(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

  void Expect(DataModelDatabase& db, int clip, const std::string& when) {
    const int stored = StoredVersion(db, Id(clip)), expected = ClipAt(clip).acknowledged;
    Require(stored == expected, Id(clip) + " has version " + std::to_string(stored) + " and not " +
                                    std::to_string(expected) + " " + when);
  }
  void ExpectAll(DataModelDatabase& db, const std::string& when) {
    for (int clip = 0; clip < ClipCount; ++clip)
      Expect(db, clip, when);
  }

  // What a process that was killed has left under way is in the file or not, but not in part.
  void TakeOver() {
    Restore(copyPath, "");
    Restore(copyPath + ".part1", "");
    bool isKept = false, isLost = false;
    for (int i = 0; i < ClipCount; ++i) {
      Clip& clip = ClipAt(i);
      const bool isStored = StoredVersion(database, Id(i)) == clip.written;
      if (clip.written != clip.acknowledged) (isStored ? isKept : isLost) = true;
      if (isStored) clip.acknowledged = clip.written.load();
      clip.written = clip.acknowledged.load();
    }
    ExpectAll(database, "after the kill");
    Require(!isKept || !isLost, "half of a transaction is stored");
  }

  // Writes new versions of some clips, all or none of them. Version 0 is no clip.
  template <class Write>
  void WriteAll(const std::vector<int>& clips, bool isRemoval, Write write) {
    for (const int clip : clips)
      ClipAt(clip).written = isRemoval ? 0 : nextVersion++;
    write();
    for (const int clip : clips)
      ClipAt(clip).acknowledged = ClipAt(clip).written.load();
    ++board.writes;
  }

  void Step() {
    const int clip = Any(ClipCount), kind = Any(200);
    MediaAssetRepository repository(database);
    if (kind < 50) {
      WriteAll({clip}, false, [&] {
        MediaAsset asset = NewClip(clip);
        repository.Put(asset);
      });
    } else if (kind < 65) {
      const std::vector<int> some{clip, (clip + 1) % ClipCount, (clip + 3) % ClipCount};
      WriteAll(some, false, [&] {
        std::vector<MediaAsset> assets{NewClip(some[0]), NewClip(some[1]), NewClip(some[2])};
        Require(repository.PutAll(assets).empty(), "PutAll leaves a clip out");
      });
    } else if (kind < 90) {
      WriteAll({clip}, true, [&] { repository.Remove(Id(clip), Protection::Ignore); });
    } else if (kind < 110 && isAlone) {
      WriteAll({clip}, false, [&] {
        TransactionGuard transaction(database);
        MediaAsset asset = NewClip(clip);
        Require(database.GetMediaAssetTable().Save(asset), "a save is refused");
        transaction.Commit();
      });
    } else if (kind < 150) {
      Expect(database, clip, "at a read");
    } else if (kind < 170) {
      const std::string other = ClipId(random() % std::size(board.clips));
      Require(StoredVersion(database, other) != -1, other + " isn't whole");
    } else if (kind < 185) {
      const int version = ClipAt(clip).acknowledged;
      QuerySqlite own;
      own.Equals("MediaAsset.id", Id(clip));
      const auto search = MediaAssetSearch().Typed("v" + std::to_string(version)).Where(own);
      Require(repository.Count(search) == (version != 0), Id(clip) + " isn't found by its text");
    } else if (kind < 190 && isAlone) {
      const ReadGuard reading(database);
      ExpectAll(database, "in a reading");
    } else if (kind < 194 && isAlone) {
      database.Close();
      database.Open();
    } else if (kind < 197) {
      const std::vector<std::string> findings = database.CheckIntegrity();
      Require(findings.empty(), "CheckIntegrity finds something");
    } else {
      Copy();
    }
    ++board.steps;
  }

  void Copy() {
    Require(database.Backup(copyPath), "a backup stops by itself");
    Require(Faults(copyPath).empty(), "a copy is damaged");
    DataModelDatabase copy(copyPath, nullptr);
    copy.Open();
    ExpectAll(copy, "in a copy");
    copy.Close();
    Restore(copyPath, "");
    ++board.copies;
  }
};

auto DescriptorCount() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

// In kilobytes; 0 for a process that has ended.
long ResidentMemory(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/statm");
  long all = 0, resident = 0;
  file >> all >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// The first thread has a database of its own, the others share one.
bool RunProcess(Board& board, std::size_t process, const std::string& path, const std::string& connection,
                unsigned seed) {
  const auto descriptors = DescriptorCount();
  std::atomic<bool> isSound = true;
  const auto guarded = [&](const auto& run) {
    try {
      run();
    } catch (const std::exception& exception) {
      isSound = false;
      board.isOver = true;
      std::cerr << "process " + std::to_string(process) + ": " + exception.what() + "\n";
    }
  };
  guarded([&] {
    DataModelDatabase own(connection, nullptr), shared(connection, nullptr);
    std::vector<std::thread> threads;
    std::vector<std::unique_ptr<Worker>> workers;
    own.Open();
    shared.Open();
    Require(own.LastFailure().empty() && shared.LastFailure().empty(), "an opening fails in part");
    for (std::size_t thread = 0; thread < ThreadCount; ++thread) {
      const std::size_t number = process * ThreadCount + thread;
      workers.emplace_back(new Worker{board, number, path + "-copy-" + std::to_string(number),
                                      thread == 0 ? own : shared, thread == 0,
                                      std::minstd_rand(seed + static_cast<unsigned>(thread))});
      workers.back()->TakeOver();
    }
    threads.reserve(ThreadCount);
    for (const auto& worker : workers) {
      threads.emplace_back([&] {
        guarded([&] {
          while (!board.isOver)
            worker->Step();
        });
      });
    }
    for (std::thread& thread : threads)
      thread.join();
  });
  guarded([&] {
    Require(sqlite3_memory_used() == 0 || !isSound, "SQLite holds memory after the end");
    Require(DescriptorCount() <= descriptors || !isSound, "descriptors are left open");
  });
  return isSound;
}

// One of the places for a process, and the process that fills it now.
struct Place {
  std::unique_ptr<ChildProcess> child;
  Clock::time_point begin;
  long memoryAtFirst = 0;
};

class Soak {
 public:
  Soak(const std::string& journal, std::chrono::seconds time, unsigned seed)
      : mJournal(journal), mHalf(Clock::now() + time / 2), mEnd(mHalf + time / 2), mRandom(seed) {}

  bool Run() {
    for (std::size_t process = 0; process < ProcessCount; ++process)
      Start(process);
    while (!mBoard->isOver && Clock::now() < mEnd) {
      const bool isOften = Clock::now() < mHalf;
      std::this_thread::sleep_for(std::chrono::milliseconds(isOften ? mRandom() % 200 : 100));
      for (Place& place : mPlaces)
        ExpectNoGrowth(place);
      if (isOften && mRandom() % 2 == 0) {
        KillAll();
      } else if (isOften || mRandom() % 20 == 0) {
        const std::size_t process = mRandom() % ProcessCount;
        Kill(process);
        Start(process);
      }
    }
    if (mBoard->isOver) Complain("a process has failed");
    mBoard->isOver = true;
    for (const Place& place : mPlaces) {
      if (!place.child->Succeeds()) Complain("a process ends badly");
    }
    CompareTheFile();
    std::cout << mJournal << ": " << mBoard->steps << " steps, " << mBoard->writes << " writes acknowledged, "
              << mBoard->copies << " copies, " << mKills << " kills, " << mNewFiles << " new files; "
              << mClipsAtEnd << " clips at the end; at most " << mMemoryAtMost << " kB a process"
              << std::endl;
    if (mBoard->writes < 10 || mKills == 0 || mClipsAtEnd == 0) Complain("too little was done");
    return mIsSound;
  }

 private:
  void Complain(const std::string& fault) {
    std::cerr << mJournal << ": " << fault << '\n';
    mIsSound = false;
    mBoard->isOver = true;
  }

  void Start(std::size_t process) {
    const auto seed = static_cast<unsigned>(mRandom());
    mPlaces[process] = {nullptr, Clock::now()};
    mPlaces[process].child = std::make_unique<ChildProcess>([=] {
      // Should it hang at the end.
      alarm(static_cast<unsigned>((mEnd - Clock::now()) / std::chrono::seconds(1)) + 120);
      return RunProcess(*mBoard, process, mPath, mConnection, seed);
    });
  }

  void Kill(std::size_t process) {
    mPlaces[process].child->Kill();
    if (mPlaces[process].child->Succeeds()) Complain("a process ends by itself");
    ++mKills;
  }

  void KillAll() {
    for (std::size_t process = 0; process < ProcessCount; ++process)
      Kill(process);
    CompareTheFile();
    if (mRandom() % 2 == 0) {
      Restore(mPath, "");
      for (Clip& clip : mBoard->clips)
        clip.acknowledged = clip.written = 0;
      ++mNewFiles;
    }
    for (std::size_t process = 0; process < ProcessCount; ++process)
      Start(process);
  }

  void ExpectNoGrowth(Place& place) {
    const long memory = ResidentMemory(place.child->Id());
    mMemoryAtMost = std::max(mMemoryAtMost, memory);
    if (Clock::now() - place.begin < std::chrono::seconds(2)) return;
    if (place.memoryAtFirst == 0) place.memoryAtFirst = memory;
    if (memory > 2 * place.memoryAtFirst + 65536) {
      Complain("a process has grown from " + std::to_string(place.memoryAtFirst) + " to " +
               std::to_string(memory) + " kB");
    }
  }

  void CompareTheFile() {
    DataModelDatabase db(mConnection, nullptr);
    db.Open();
    mClipsAtEnd = 0;
    for (std::size_t i = 0; i < std::size(mBoard->clips); ++i) {
      const Clip& clip = mBoard->clips[i];
      const int stored = StoredVersion(db, ClipId(i));
      if (stored != clip.acknowledged && stored != clip.written)
        Complain(ClipId(i) + " has version " + std::to_string(stored) + " without a writer");
      mClipsAtEnd += stored > 0;
    }
    // A journal that a killed process has made and not used stays until the next write.
    db.ExecuteStatement("PRAGMA user_version = 1");
    db.Close();
    if (const std::string faults = Faults(mPath); !faults.empty()) Complain("the file is damaged: " + faults);
    if (HasSideFiles(mPath)) Complain("side files remain");
  }

  const TestSupport::TemporaryDirectory mDirectory;
  const std::string mJournal;
  const std::string mPath = mDirectory.File("clips.db");
  const std::string mConnection = "file:" + mPath + "?_busy_timeout=20000&_journal_mode=" + mJournal;
  const Clock::time_point mHalf, mEnd;
  std::minstd_rand mRandom;
  const std::shared_ptr<Board> mBoard = SharedWithChildren<Board>();
  std::array<Place, ProcessCount> mPlaces;
  bool mIsSound = true;
  int mKills = 0, mNewFiles = 0, mClipsAtEnd = 0;
  long mMemoryAtMost = 0;
};

}  // namespace

}  // namespace Oru::Reliability

int main(int count, char** arguments) {
  const int seconds = count > 1 ? std::atoi(arguments[1]) : 0;
  if (seconds < 2) {
    std::cerr << "Usage: soak SECONDS [SEED], with at least 2 seconds\n";
    return 2;
  }
  const unsigned seed = count > 2 ? static_cast<unsigned>(std::atoi(arguments[2])) : std::random_device()();
  std::cout << "seed " << seed << std::endl;
  bool isSound = true;
  for (const char* journal : {"delete", "wal"})
    isSound = Oru::Reliability::Soak(journal, std::chrono::seconds(seconds / 2), seed).Run() && isSound;
  return isSound ? 0 : 1;
}
