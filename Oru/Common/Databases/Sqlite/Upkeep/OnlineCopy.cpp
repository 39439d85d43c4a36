#include "Oru/Common/Databases/Sqlite/Upkeep/OnlineCopy.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

namespace {

using Clock = std::chrono::steady_clock;

// Others wait for this many: 1 MiB at 4096 bytes a page.
constexpr int FirstStep = 256;
constexpr int LargestStep = 1 << 24;
constexpr std::chrono::microseconds Pause(100);
constexpr std::chrono::milliseconds BusyPause(1);

std::string SystemText(const std::string& file) {
  return file + ": " + std::generic_category().message(errno);
}

// The copy gets the permissions of the source, if the source is a file.
mode_t PermissionsLike(sqlite3* source) {
  struct stat status = {};
  const char* file = sqlite3_db_filename(source, "main");
  const bool isFile = file && *file != '\0' && stat(file, &status) == 0;
  return isFile ? status.st_mode & 0666U : 0644U;
}

// A new name survives a crash of the machine only if the folder is written too.
void SyncFolderOf(const std::string& file) {
  const std::string folder = std::filesystem::path(file).parent_path().string();
  const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

// Never replaces a file that was made meanwhile, except on file systems that can't prevent it.
bool RenameToNewName(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  return (errno == EINVAL || errno == ENOSYS) && std::rename(from.c_str(), to.c_str()) == 0;
}

}  // namespace

OnlineCopy::Failure::Failure(int sqliteCode)
    : std::runtime_error(sqlite3_errstr(sqliteCode)), mCode(sqliteCode) {}

std::string OnlineCopy::WhyNoTarget(const std::string& target) {
  // SQLite takes these for something else than a path.
  const bool hasNul = target.find('\0') != std::string::npos;
  if (target.empty() || hasNul || target[0] == ':' || target.compare(0, 5, "file:") == 0)
    return "\"" + target + "\" is no path";
  // SQLite would roll a left-over journal back into the copy at its first opening.
  for (const char* suffix : {"", "-journal", "-wal"}) {
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(target + suffix, error)))
      return target + suffix + " exists already";
  }
  return {};
}

OnlineCopy::OnlineCopy(sqlite3* source, std::string target)
    : mSource(source), mTarget(std::move(target)), mCopy(nullptr, sqlite3_close) {
  MakeFile();
  try {
    OpenFile();
  } catch (...) {
    mCopy.reset();
    unlink(mPart.c_str());
    throw;
  }
}

OnlineCopy::~OnlineCopy() {
  mCopy.reset();
  if (!mPart.empty()) unlink(mPart.c_str());
}

void OnlineCopy::MakeFile() {
  // A crash may have left parts with lower numbers.
  for (int number = 1;; ++number) {
    mPart = mTarget + ".part" + std::to_string(number);
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    const int descriptor = open(mPart.c_str(), flags, PermissionsLike(mSource));
    if (descriptor >= 0) {
      close(descriptor);
      return;
    }
    if (errno != EEXIST) throw Failure(SystemText(mPart));
  }
}

void OnlineCopy::OpenFile() {
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(mPart.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  mCopy.reset(handle);
  if (code != SQLITE_OK) throw Failure(code);
  sqlite3_extended_result_codes(handle, 1);
  // A copy that fails is deleted, so it needs no journal.
  const int journal = sqlite3_exec(handle, "PRAGMA journal_mode = off", nullptr, nullptr, nullptr);
  if (journal != SQLITE_OK) throw Failure(journal);
}

// https://sqlite.org/backup.html
bool OnlineCopy::CopyPages(int busyTimeout, const Progress& progress) {
  const std::unique_ptr<sqlite3_backup, int (*)(sqlite3_backup*)> backup(
      sqlite3_backup_init(mCopy.get(), "main", mSource, "main"), sqlite3_backup_finish);
  if (!backup) throw Failure(sqlite3_extended_errcode(mCopy.get()));

  int step = FirstStep;
  int32_t remaining = INT32_MAX;
  Clock::time_point lastStep = Clock::now();
  for (;;) {
    const int code = sqlite3_backup_step(backup.get(), step);
    const int plainCode = code & 0xFF;
    if (plainCode == SQLITE_BUSY || plainCode == SQLITE_LOCKED) {
      if (Clock::now() - lastStep >= std::chrono::milliseconds(busyTimeout)) throw Failure(code);
      std::this_thread::sleep_for(BusyPause);
      continue;
    }
    if (code != SQLITE_OK && code != SQLITE_DONE) throw Failure(code);

    // Another connection that writes makes SQLite begin again. Growing steps let the copy end.
    const int32_t left = sqlite3_backup_remaining(backup.get());
    if (left >= remaining) step = std::min(step * 2, LargestStep);
    remaining = left;
    if (progress && !progress(remaining, sqlite3_backup_pagecount(backup.get()))) return false;
    if (code == SQLITE_DONE) return true;
    std::this_thread::sleep_for(Pause);
    lastStep = Clock::now();
  }
}

void OnlineCopy::TakeName() {
  mCopy.reset();
  if (!RenameToNewName(mPart, mTarget)) throw Failure(SystemText(mTarget));
  mPart.clear();
  SyncFolderOf(mTarget);
}

}  // namespace Oru::Common::Databases::Sqlite
