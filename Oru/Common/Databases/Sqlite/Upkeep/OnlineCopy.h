#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

/// Copies a database that is in use into a new file. The pages go into a file of another name in the same
/// folder, which gets its name when it is complete and on the disk.
///
/// Threads: a copy belongs to one thread; others may use the source meanwhile.
class OnlineCopy {
 public:
  using Progress = std::function<bool(int32_t remaining, int32_t total)>;

  /// A failure of SQLite or of the file system, with its text.
  class Failure : public std::runtime_error {
   public:
    explicit Failure(int sqliteCode);
    explicit Failure(const std::string& text) : std::runtime_error(text) {}
    /// SQLite's result code, 0 when it wasn't SQLite.
    int Code() const { return mCode; }

   private:
    int mCode = 0;
  };

  /// Why a file can't be the target of a copy, empty if it can: it already exists, or the text is no path.
  static std::string WhyNoTarget(const std::string& target);

  /// Makes the file beside the target.
  /// @param source  an open connection, which must outlive the copy
  /// @throws Failure
  OnlineCopy(sqlite3* source, std::string target);
  OnlineCopy(const OnlineCopy&) = delete;
  OnlineCopy& operator=(const OnlineCopy&) = delete;
  /// Removes the file, unless it has taken the name of the target.
  ~OnlineCopy();

  /// Copies all pages, some at a time, with the source free in between.
  /// @param busyTimeout  milliseconds to wait for a lock of the source
  /// @return false when `progress` has given false
  /// @throws Failure, and whatever `progress` throws
  bool CopyPages(int busyTimeout, const Progress& progress);
  /// Gives the file its name.
  /// @throws Failure, also when a file of that name exists by now
  void TakeName();

 private:
  using Connection = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

  void MakeFile();
  void OpenFile();

  sqlite3* mSource;
  std::string mTarget;
  std::string mPart;
  Connection mCopy;
};

}  // namespace Oru::Common::Databases::Sqlite
