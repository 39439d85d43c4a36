#include "reliability/FaultyVfs.h"

#include <sqlite3.h>

#include <new>

namespace Oru::Reliability {

namespace {

FaultyVfs::Plan plan;
int count = 0;
int failureCount = 0;

// SQLITE_OK, or the code of the fault that is due now.
int InjectedFault(FaultyVfs::Operation operation) {
  constexpr int codes[] = {SQLITE_IOERR_READ,     SQLITE_IOERR_WRITE, SQLITE_IOERR_FSYNC,
                           SQLITE_IOERR_TRUNCATE, SQLITE_CANTOPEN,    SQLITE_IOERR_DELETE};
  if (plan.number == 0 || (plan.isFull && operation != FaultyVfs::Write)) return SQLITE_OK;
  ++count;
  if (plan.isLasting ? count < plan.number : count != plan.number) return SQLITE_OK;
  ++failureCount;
  return plan.isFull ? SQLITE_FULL : codes[operation];
}

// A file of ours is followed in memory by the file of the layer below.
struct File {
  sqlite3_file base;
  sqlite3_file* Below() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_vfs* BelowOf(sqlite3_vfs* vfs) {
  return static_cast<sqlite3_vfs*>(vfs->pAppData);
}

// A method that only passes the call on to the same method below.
template <class Signature, Signature* sqlite3_io_methods::*Method>
struct PassOn;
template <class Result, class... Arguments,
          Result (*sqlite3_io_methods::*Method)(sqlite3_file*, Arguments...)>
struct PassOn<Result(sqlite3_file*, Arguments...), Method> {
  static Result Call(sqlite3_file* file, Arguments... arguments) {
    sqlite3_file* below = reinterpret_cast<File*>(file)->Below();
    return (below->pMethods->*Method)(below, arguments...);
  }
};

template <class>
struct MethodTraits;
template <class Function>
struct MethodTraits<Function * sqlite3_io_methods::*> {
  using Signature = Function;
};

template <auto Method>
constexpr auto Passing = &PassOn<typename MethodTraits<decltype(Method)>::Signature, Method>::Call;

// The same, unless the operation is one to fail.
template <FaultyVfs::Operation Kind, auto Method, class... Arguments>
int Try(sqlite3_file* file, Arguments... arguments) {
  const int fault = InjectedFault(Kind);
  return fault != SQLITE_OK ? fault : Passing<Method>(file, arguments...);
}

int SyncFile(sqlite3_file*, int) {
  return InjectedFault(FaultyVfs::Sync);
}

constexpr sqlite3_io_methods Methods = {
    3,
    Passing<&sqlite3_io_methods::xClose>,
    Try<FaultyVfs::Read, &sqlite3_io_methods::xRead, void*, int, sqlite3_int64>,
    Try<FaultyVfs::Write, &sqlite3_io_methods::xWrite, const void*, int, sqlite3_int64>,
    Try<FaultyVfs::Truncate, &sqlite3_io_methods::xTruncate, sqlite3_int64>,
    SyncFile,
    Passing<&sqlite3_io_methods::xFileSize>,
    Passing<&sqlite3_io_methods::xLock>,
    Passing<&sqlite3_io_methods::xUnlock>,
    Passing<&sqlite3_io_methods::xCheckReservedLock>,
    Passing<&sqlite3_io_methods::xFileControl>,
    Passing<&sqlite3_io_methods::xSectorSize>,
    Passing<&sqlite3_io_methods::xDeviceCharacteristics>,
    Passing<&sqlite3_io_methods::xShmMap>,
    Passing<&sqlite3_io_methods::xShmLock>,
    Passing<&sqlite3_io_methods::xShmBarrier>,
    Passing<&sqlite3_io_methods::xShmUnmap>,
    Passing<&sqlite3_io_methods::xFetch>,
    Passing<&sqlite3_io_methods::xUnfetch>,
};

int OpenFile(sqlite3_vfs* vfs, sqlite3_filename name, sqlite3_file* memory, int flags, int* flagsOut) {
  auto* file = new (memory) File();
  const int fault = InjectedFault(FaultyVfs::Open);
  if (fault != SQLITE_OK) return fault;
  const int code = BelowOf(vfs)->xOpen(BelowOf(vfs), name, file->Below(), flags, flagsOut);
  if (file->Below()->pMethods) file->base.pMethods = &Methods;
  return code;
}

int DeleteFile(sqlite3_vfs* vfs, const char* name, int syncDirectory) {
  const int fault = InjectedFault(FaultyVfs::Delete);
  return fault != SQLITE_OK ? fault : BelowOf(vfs)->xDelete(BelowOf(vfs), name, syncDirectory);
}

}  // namespace

void FaultyVfs::Register() {
  static sqlite3_vfs vfs = {};
  if (vfs.zName) return;
  sqlite3_vfs* below = sqlite3_vfs_find(nullptr);
  vfs = *below;
  vfs.pNext = nullptr;
  vfs.zName = "oru-faulty";
  vfs.szOsFile = static_cast<int>(sizeof(File)) + below->szOsFile;
  vfs.pAppData = below;
  vfs.xOpen = OpenFile;
  vfs.xDelete = DeleteFile;
  sqlite3_vfs_register(&vfs, 1);
}

void FaultyVfs::Arm(const Plan& newPlan) {
  plan = newPlan;
  count = failureCount = 0;
}

int FaultyVfs::FailureCount() {
  return failureCount;
}

}  // namespace Oru::Reliability
