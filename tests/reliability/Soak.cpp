// Usage: soak SECONDS [SEED]
// Works on one file with four processes of three threads each, half of the time with a rollback journal and half
// with a write-ahead log. The threads save, delete, read, search, copy, check and open at random; now and then a
// process is killed and another takes its place. What the file holds is compared all the time with what was
// acknowledged, and the processes must not grow. Ends with 0 when nothing was lost.

#include "reliability/ChildProcess.h"
#include "reliability/Clips.h"

#include <array>
#include <exception>
#include <mutex>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

// A long memory of what was freed would look like growth.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
  return "quarantine_size_mb=8";
}

namespace Oru::Reliability {

using Common::Databases::InvalidOperationException;
using Common::Databases::NotSupportedException;
using Common::Databases::Sqlite::QuerySqlite;
using Common::Databases::Sqlite::ReadGuard;
using Common::Databases::Sqlite::TransactionGuard;
using DataModel::MediaAssets::MediaAssetId;
using DataModel::MediaAssets::Database::MediaAssetRepository;
using DataModel::MediaAssets::Database::MediaAssetSearch;
using DataModel::MediaAssets::Database::Protection;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int ProcessCount = 4, ThreadCount = 3, ClipCount = 8;
// Far beyond the busy timeout: who makes no step for so long hangs.
constexpr auto LongestStep = std::chrono::seconds(120);

// A clip has one writer. Its version in the file is `acknowledged` while no write is under way, and that or
// `written` while one is; 0 means that there is none.
struct Clip {
  std::atomic<int> acknowledged{0};
  std::atomic<int> written{0};
};

// What the processes share.
struct Board {
  std::atomic<bool> isOver{false}, hasFailed{false};
  std::atomic<int64_t> steps[ProcessCount]{};
  std::atomic<int64_t> writes{0}, refusals{0}, copies{0};
  Clip clips[ProcessCount * ThreadCount * ClipCount];
};

std::string ClipId(std::size_t index) {
  return "clip " + std::to_string(index);
}

class Fault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One thread of one process, and its clips.
class Worker {
 public:
  Worker(Board& board, int process, int thread, const std::string& path, DataModelDatabase& database,
         bool isAlone, unsigned seed)
      : mBoard(board),
        mProcess(process),
        mThread(thread),
        mCopy(path + "-copy-" + std::to_string(process) + "-" + std::to_string(thread)),
        mDatabase(database),
        mIsAlone(isAlone),
        mRandom(seed) {}

  // What a process that was killed has left under way is in the file or not, but not in part.
  void TakeOver() {
    Restore(mCopy, "");
    Restore(mCopy + ".part1", "");
    int kept = 0, lost = 0;
    for (int i = 0; i < ClipCount; ++i) {
      Clip& clip = ClipAt(i);
      const int stored = StoredVersion(mDatabase, Id(i));
      if (clip.written != clip.acknowledged) ++(stored == clip.written ? kept : lost);
      if (stored != clip.written) Expect(i, stored, clip.acknowledged, "after the kill");
      clip.acknowledged = clip.written = stored;
    }
    if (kept > 0 && lost > 0) throw Fault("half of a transaction is stored");
  }

  void Run() {
    while (!mBoard.isOver) {
      try {
        Step();
      } catch (const InvalidOperationException&) {
        ++mBoard.refusals;
      } catch (const NotSupportedException&) {
        ++mBoard.refusals;
      }
      ++mBoard.steps[mProcess];
    }
  }

 private:
  std::size_t Index(int number) const {
    return static_cast<std::size_t>((mProcess * ThreadCount + mThread) * ClipCount + number);
  }
  std::string Id(int number) const { return ClipId(Index(number)); }
  Clip& ClipAt(int number) { return mBoard.clips[Index(number)]; }
  int Any(int count) { return static_cast<int>(mRandom() % static_cast<unsigned>(count)); }

  void Expect(int number, int stored, int expected, const std::string& when) const {
    if (stored == expected) return;
    throw Fault(Id(number) + " has version " + std::to_string(stored) + " and not " +
                std::to_string(expected) + " " + when);
  }

  // Writes new versions of some clips, all or none of them. Version 0 is no clip.
  template <class Write>
  void WriteAll(const std::vector<int>& numbers, bool isRemoval, Write write) {
    for (const int number : numbers)
      ClipAt(number).written = isRemoval ? 0 : mNextVersion++;
    try {
      write();
    } catch (...) {
      for (const int number : numbers)
        ClipAt(number).written = ClipAt(number).acknowledged.load();
      throw;
    }
    for (const int number : numbers)
      ClipAt(number).acknowledged = ClipAt(number).written.load();
    ++mBoard.writes;
  }

  MediaAsset NewClip(int number) { return MakeClip(Id(number), ClipAt(number).written); }

  void Step() {
    const int number = Any(ClipCount), kind = Any(200);
    MediaAssetRepository repository(mDatabase);
    if (kind < 50) {
      WriteAll({number}, false, [&] {
        MediaAsset clip = NewClip(number);
        repository.Put(clip);
      });
    } else if (kind < 65) {
      WriteAll({number, (number + 1) % ClipCount, (number + 3) % ClipCount}, false, [&] {
        std::vector<MediaAsset> clips{NewClip(number), NewClip((number + 1) % ClipCount),
                                      NewClip((number + 3) % ClipCount)};
        if (!repository.PutAll(clips).empty()) throw Fault("PutAll leaves a clip out");
      });
    } else if (kind < 90) {
      WriteAll({number}, true, [&] { repository.Remove(MediaAssetId(Id(number)), Protection::Ignore); });
    } else if (kind < 110 && mIsAlone) {
      SaveByTheTable(number);
    } else if (kind < 150) {
      Expect(number, StoredVersion(mDatabase, Id(number)), ClipAt(number).acknowledged, "at a read");
    } else if (kind < 170) {
      const std::string other = ClipId(mRandom() % std::size(mBoard.clips));
      if (StoredVersion(mDatabase, other) == -1) throw Fault(other + " isn't whole");
    } else if (kind < 185) {
      Search(repository, number);
    } else if (kind < 190 && mIsAlone) {
      const ReadGuard reading(mDatabase);
      for (int i = 0; i < ClipCount; ++i)
        Expect(i, StoredVersion(mDatabase, Id(i)), ClipAt(i).acknowledged, "in a reading");
    } else if (kind < 194 && mIsAlone) {
      mDatabase.Close();
      mDatabase.Open();
    } else if (kind < 197) {
      const std::vector<std::string> findings = mDatabase.CheckIntegrity();
      if (!findings.empty()) throw Fault("CheckIntegrity finds: " + findings.front());
    } else {
      Copy();
    }
  }

  void SaveByTheTable(int number) {
    WriteAll({number}, false, [&] {
      TransactionGuard transaction(mDatabase);
      MediaAsset clip = NewClip(number);
      if (!mDatabase.GetMediaAssetTable().Save(clip)) throw InvalidOperationException();
      transaction.Commit();
    });
  }

  void Search(MediaAssetRepository& repository, int number) {
    const int version = ClipAt(number).acknowledged;
    QuerySqlite own;
    own.Equals("MediaAsset.id", Id(number));
    MediaAssetSearch search;
    search.Typed("v" + std::to_string(version)).Where(own);
    if (repository.Count(search) != (version == 0 ? 0 : 1))
      throw Fault(Id(number) + " isn't found by its text");
  }

  void Copy() {
    if (!mDatabase.Backup(mCopy)) throw Fault("a backup stops by itself");
    ++mBoard.copies;
    const std::string faults = Faults(mCopy);
    if (!faults.empty()) throw Fault("a copy is damaged: " + faults);
    {
      DataModelDatabase copy(mCopy, nullptr);
      copy.Open();
      for (int i = 0; i < ClipCount; ++i)
        Expect(i, StoredVersion(copy, Id(i)), ClipAt(i).acknowledged, "in a copy");
    }
    Restore(mCopy, "");
  }

  Board& mBoard;
  const int mProcess, mThread;
  const std::string mCopy;
  DataModelDatabase& mDatabase;
  // Whether no other thread uses the database.
  const bool mIsAlone;
  std::minstd_rand mRandom;
  // By the clock, so that a process never repeats the versions of the one before it.
  int mNextVersion =
      static_cast<int>(Clock::now().time_since_epoch() / std::chrono::milliseconds(10) % 1000000000);
};

std::size_t DescriptorCount(const std::string& process) {
  std::error_code error;
  std::size_t count = 0;
  for (std::filesystem::directory_iterator entry("/proc/" + process + "/fd", error), end; entry != end;
       entry.increment(error))
    ++count;
  return count;
}

// In kilobytes; 0 for a process that has ended.
long ResidentMemory(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/statm");
  long all = 0, resident = 0;
  file >> all >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// The first thread has a database of its own, the others share one.
bool RunProcess(Board& board, int process, const std::string& path, const std::string& connection,
                unsigned seed) {
  const std::size_t descriptors = DescriptorCount("self");
  std::mutex mutex;
  std::string faults;
  const auto guarded = [&](const auto& run) {
    try {
      run();
    } catch (const std::exception& exception) {
      const std::lock_guard<std::mutex> lock(mutex);
      faults += "process " + std::to_string(process) + ": " + exception.what() + "\n";
      board.hasFailed = board.isOver = true;
    }
  };
  guarded([&] {
    DataModelDatabase own(connection, nullptr), shared(connection, nullptr);
    own.Open();
    shared.Open();
    std::vector<std::unique_ptr<Worker>> workers;
    for (int thread = 0; thread < ThreadCount; ++thread) {
      workers.push_back(std::make_unique<Worker>(board, process, thread, path, thread == 0 ? own : shared,
                                                 thread == 0,
                                                 seed * ThreadCount + static_cast<unsigned>(thread)));
      workers.back()->TakeOver();
    }
    std::vector<std::thread> threads;
    for (const auto& worker : workers)
      threads.emplace_back([&] { guarded([&] { worker->Run(); }); });
    for (std::thread& thread : threads)
      thread.join();
  });
  if (const sqlite3_int64 left = sqlite3_memory_used(); left > 0 && faults.empty())
    faults += "SQLite holds " + std::to_string(left) + " bytes after the end\n";
  if (const std::size_t now = DescriptorCount("self"); now > descriptors && faults.empty())
    faults += std::to_string(now - descriptors) + " descriptors are left open\n";
  std::cerr << faults;
  return faults.empty();
}

// One of the places for a process, and the process that fills it now.
struct Place {
  std::unique_ptr<ChildProcess> child;
  Clock::time_point begin, lastStep;
  int64_t steps = 0;
  long memoryAtFirst = 0, memoryAtMost = 0;
  std::size_t descriptors = 0;
};

class Soak {
 public:
  Soak(const std::string& journal, std::chrono::seconds time, unsigned seed)
      : mJournal(journal), mEnd(Clock::now() + time), mRandom(seed) {
    void* memory = mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    mBoard = new (memory) Board;
  }
  Soak(const Soak&) = delete;
  Soak& operator=(const Soak&) = delete;
  ~Soak() { munmap(mBoard, sizeof(Board)); }

  bool Run() {
    for (int process = 0; process < ProcessCount; ++process)
      Start(process);
    auto nextKill = Clock::now() + std::chrono::seconds(1);
    while (mIsSound && !mBoard->isOver && Clock::now() < mEnd) {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      for (int process = 0; process < ProcessCount; ++process)
        Watch(process);
      if (Clock::now() < nextKill) continue;
      nextKill = Clock::now() + std::chrono::milliseconds(500 + mRandom() % 3000);
      KillOne();
    }
    mBoard->isOver = true;
    for (const Place& place : mPlaces)
      mBoard->hasFailed = !place.child->Succeeds() || mBoard->hasFailed;
    if (mBoard->hasFailed) Complain("a process has failed");
    CompareTheFile();
    Report();
    return mIsSound;
  }

 private:
  void Complain(const std::string& fault) {
    std::cerr << mJournal << ": " << fault << '\n';
    mIsSound = false;
  }

  void Start(int process) {
    Place& place = mPlaces[static_cast<std::size_t>(process)];
    const auto seed = static_cast<unsigned>(mRandom());
    place = Place();
    place.begin = place.lastStep = Clock::now();
    place.steps = mBoard->steps[process];
    place.child = std::make_unique<ChildProcess>([=](int) {
      // Should it hang at the end.
      alarm(static_cast<unsigned>((mEnd - Clock::now() + LongestStep) / std::chrono::seconds(1)));
      return RunProcess(*mBoard, process, mPath, mConnection, seed);
    });
  }

  void KillOne() {
    const int process = static_cast<int>(mRandom() % ProcessCount);
    ChildProcess& child = *mPlaces[static_cast<std::size_t>(process)].child;
    child.Kill();
    if (child.Succeeds()) return Complain("a process ends by itself");
    ++mKills;
    Start(process);
  }

  void Watch(int process) {
    Place& place = mPlaces[static_cast<std::size_t>(process)];
    const auto now = Clock::now();
    if (mBoard->steps[process] != place.steps) place.lastStep = now;
    place.steps = mBoard->steps[process];
    if (now - place.lastStep > LongestStep) Complain("process " + std::to_string(process) + " hangs");
    const long memory = ResidentMemory(place.child->Id());
    if (now - place.begin > std::chrono::seconds(3) && place.memoryAtFirst == 0) place.memoryAtFirst = memory;
    place.memoryAtMost = std::max(place.memoryAtMost, memory);
    place.descriptors = std::max(place.descriptors, DescriptorCount(std::to_string(place.child->Id())));
    mMemoryAtMost = std::max(mMemoryAtMost, memory);
    mDescriptorsAtMost = std::max(mDescriptorsAtMost, place.descriptors);
    if (place.memoryAtFirst > 0 && memory > 2 * place.memoryAtFirst + 65536) {
      Complain("a process has grown from " + std::to_string(place.memoryAtFirst) + " to " +
               std::to_string(memory) + " kB");
    }
    if (place.descriptors > 64)
      Complain("a process has " + std::to_string(place.descriptors) + " descriptors open");
  }

  void CompareTheFile() {
    DataModelDatabase db(mConnection, nullptr);
    db.Open();
    for (std::size_t i = 0; i < std::size(mBoard->clips); ++i) {
      const Clip& clip = mBoard->clips[i];
      const int stored = StoredVersion(db, ClipId(i));
      if (stored != clip.acknowledged && stored != clip.written)
        Complain(ClipId(i) + " has version " + std::to_string(stored) + " at the end");
      mClipsAtEnd += stored > 0;
    }
    // A journal that a killed process has made and not used stays until the next write.
    db.ExecuteStatement("PRAGMA user_version = 1");
    db.Close();
    if (const std::string faults = Faults(mPath); !faults.empty()) Complain("the file is damaged: " + faults);
    if (HasSideFiles(mPath)) Complain("side files remain");
  }

  void Report() {
    int64_t steps = 0;
    for (const auto& count : mBoard->steps)
      steps += count;
    std::cout << mJournal << ": " << steps << " steps, " << mBoard->writes << " writes acknowledged, "
              << mBoard->copies << " copies, " << mBoard->refusals << " refusals, " << mKills << " kills; "
              << mClipsAtEnd << " clips at the end; at most " << mMemoryAtMost << " kB and "
              << mDescriptorsAtMost << " descriptors a process" << std::endl;
    if (mBoard->writes < 10 || mKills == 0 || mClipsAtEnd == 0) Complain("too little was done");
    // The busy timeout is longer than all others may take.
    if (mBoard->refusals > 0) Complain("steps were refused");
  }

  const TestSupport::TemporaryDirectory mDirectory;
  const std::string mJournal;
  const std::string mPath = mDirectory.File("clips.db");
  const std::string mConnection = "file:" + mPath + "?_busy_timeout=20000&_journal_mode=" + mJournal;
  const Clock::time_point mEnd;
  std::minstd_rand mRandom;
  Board* mBoard = nullptr;
  std::array<Place, ProcessCount> mPlaces;
  bool mIsSound = true;
  int mKills = 0, mClipsAtEnd = 0;
  long mMemoryAtMost = 0;
  std::size_t mDescriptorsAtMost = 0;
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
