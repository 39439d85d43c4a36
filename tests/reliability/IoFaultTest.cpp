#include "reliability/FaultLoop.h"

namespace Oru::Reliability {

namespace {

FaultCounter faults;
// SQLITE_FULL, which only writes report, instead of the I/O error of each operation.
bool isFull = false;
sqlite3_vfs* below = nullptr;

// SQLITE_OK, or the code when a fault is due now.
int Fault(int code) {
  if (isFull && code != SQLITE_IOERR_WRITE) return SQLITE_OK;
  return !faults.IsDue() ? SQLITE_OK : isFull ? SQLITE_FULL : code;
}

// The methods of a kind of file, and those that they took the place of.
struct Methods : sqlite3_io_methods {
  const sqlite3_io_methods* original;
};

const sqlite3_io_methods& Original(sqlite3_file* file) {
  return *static_cast<const Methods*>(file->pMethods)->original;
}

int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 place) {
  const int fault = Fault(SQLITE_IOERR_READ);
  return fault ? fault : Original(file).xRead(file, data, size, place);
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 place) {
  const int fault = Fault(SQLITE_IOERR_WRITE);
  return fault ? fault : Original(file).xWrite(file, data, size, place);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  const int fault = Fault(SQLITE_IOERR_TRUNCATE);
  return fault ? fault : Original(file).xTruncate(file, size);
}

// Files are written for real, but never waited for.
int Sync(sqlite3_file*, int) {
  return Fault(SQLITE_IOERR_FSYNC);
}

int Open(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* flagsOut) {
  static std::map<const sqlite3_io_methods*, Methods> kinds;
  file->pMethods = nullptr;
  if (const int fault = Fault(SQLITE_CANTOPEN)) return fault;
  const int code = below->xOpen(below, name, file, flags, flagsOut);
  if (!file->pMethods) return code;
  Methods methods{*file->pMethods, file->pMethods};
  methods.xRead = Read;
  methods.xWrite = Write;
  methods.xTruncate = Truncate;
  methods.xSync = Sync;
  file->pMethods = &kinds.insert({methods.original, methods}).first->second;
  return code;
}

int Delete(sqlite3_vfs*, const char* name, int syncDirectory) {
  const int fault = Fault(SQLITE_IOERR_DELETE);
  return fault ? fault : below->xDelete(below, name, syncDirectory);
}

// SQLite's own file access with faults in place of the default one.
void RegisterFaultyVfs() {
  static sqlite3_vfs vfs = {};
  if (vfs.zName) return;
  below = sqlite3_vfs_find(nullptr);
  vfs = *below;
  vfs.pNext = nullptr;
  vfs.zName = "oru-faulty";
  vfs.xOpen = Open;
  vfs.xDelete = Delete;
  sqlite3_vfs_register(&vfs, 1);
}

}  // namespace

class IoFaultTest : public testing::TestWithParam<FaultJob> {};

TEST_P(IoFaultTest, LosesNothingWhateverFails) {
  RegisterFaultyVfs();
  // A job without a transaction commits many times over, and each time alike.
  const int step = IsLong() ? 1 : GetParam().isWhole ? 13 : 149;
  int failures = 0;
  for (int kind = 0; kind < 8 && !HasFailure(); ++kind) {
    isFull = kind & 1;
    faults.isLasting = kind & 2;
    failures += RunFaultLoop(GetParam(), faults,
                             kind & 4 ? "_busy_timeout=0&_journal_mode=wal" : "_busy_timeout=0", step);
  }
  EXPECT_GT(failures, 9);
}

INSTANTIATE_TEST_SUITE_P(Each, IoFaultTest, testing::ValuesIn(FaultJobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace Oru::Reliability
