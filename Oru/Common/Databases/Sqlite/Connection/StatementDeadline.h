#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

/// Ends statements of a connection that take too long: by a limit of their time, or when another thread asks for it.
/// Internal to the access layer.
///
/// SQLite asks between the instructions of a statement, so a call of the file's VFS that hangs is not ended.
///
/// Threads: `Interrupt` may be called at any time from any thread, everything else with the connection locked or while
/// no other thread uses it.
class StatementDeadline {
 public:
  StatementDeadline() = default;
  StatementDeadline(const StatementDeadline&) = delete;
  StatementDeadline& operator=(const StatementDeadline&) = delete;

  /// Begins with an opened connection.
  /// @param statementTimeout  the limit in milliseconds; none for no limit
  /// @param busyTimeout       how many milliseconds a statement waits for a lock within that limit
  void Attach(sqlite3* handle, std::optional<int> statementTimeout, int busyTimeout);
  /// Ends with a connection that is about to be closed.
  void Detach();

  /// Ends the statements that run now on the attached connection.
  void Interrupt();

  /// A statement has the time of the limit from the begin of the scope; outside of scopes there is no limit.
  class Scope {
   public:
    explicit Scope(StatementDeadline& limited) : deadline(limited) {
      if (deadline.mStatementTimeout) deadline.BeginStatement();
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() {
      if (deadline.mStatementTimeout) deadline.mEnd.reset();
    }

   private:
    StatementDeadline& deadline;
  };

 private:
  using Clock = std::chrono::steady_clock;

  void BeginStatement();
  static int IsOver(void* self);
  static int WaitForLock(void* self, int attempt);

  std::mutex mHandleMutex;
  sqlite3* mHandle = nullptr;
  std::optional<std::chrono::milliseconds> mStatementTimeout;
  std::chrono::milliseconds mBusyTimeout{};
  std::optional<Clock::time_point> mEnd;
  Clock::time_point mWaitBegin;
  // How often Interrupt was called, now and at the begin of the scope.
  std::atomic<uint64_t> mInterrupts{0};
  uint64_t mInterruptsAtBegin = 0;
};

}  // namespace Oru::Common::Databases::Sqlite
