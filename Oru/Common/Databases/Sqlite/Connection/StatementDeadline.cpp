#include "Oru/Common/Databases/Sqlite/Connection/StatementDeadline.h"

#include <sqlite3.h>

#include <algorithm>
#include <thread>

namespace Oru::Common::Databases::Sqlite {

namespace {

// How many instructions SQLite runs between two looks at the clock, some tens of microseconds.
constexpr int InstructionsBetweenLooks = 1000;
constexpr std::chrono::milliseconds LongestSleep(50);

}  // namespace

void StatementDeadline::Attach(sqlite3* handle, std::optional<int> statementTimeout, int busyTimeout) {
  {
    const std::lock_guard<std::mutex> lock(mHandleMutex);
    mHandle = handle;
  }
  mStatementTimeout.reset();
  mBusyTimeout = std::chrono::milliseconds(busyTimeout);
  if (!statementTimeout) {
    sqlite3_busy_timeout(handle, busyTimeout);
    return;
  }
  mStatementTimeout = std::chrono::milliseconds(*statementTimeout);
  sqlite3_progress_handler(handle, InstructionsBetweenLooks, IsOver, this);
  // SQLite's own wait for a lock calls no handler of ours.
  sqlite3_busy_handler(handle, WaitForLock, this);
}

void StatementDeadline::Detach() {
  const std::lock_guard<std::mutex> lock(mHandleMutex);
  mHandle = nullptr;
}

// The handle must not be closed meanwhile: https://sqlite.org/c3ref/interrupt.html
void StatementDeadline::Interrupt() {
  const std::lock_guard<std::mutex> lock(mHandleMutex);
  if (!mHandle) return;
  ++mInterrupts;
  sqlite3_interrupt(mHandle);
}

void StatementDeadline::BeginStatement() {
  mEnd = Clock::now() + *mStatementTimeout;
  mInterruptsAtBegin = mInterrupts;
}

int StatementDeadline::IsOver(void* self) {
  const auto& deadline = *static_cast<StatementDeadline*>(self);
  return deadline.mEnd && Clock::now() >= *deadline.mEnd ? 1 : 0;
}

int StatementDeadline::WaitForLock(void* self, int attempt) {
  auto& deadline = *static_cast<StatementDeadline*>(self);
  const Clock::time_point now = Clock::now();
  if (attempt == 0) deadline.mWaitBegin = now;
  Clock::time_point end = deadline.mWaitBegin + deadline.mBusyTimeout;
  if (deadline.mEnd) end = std::min(end, *deadline.mEnd);
  const bool isInterrupted = deadline.mEnd && deadline.mInterrupts != deadline.mInterruptsAtBegin;
  if (isInterrupted || now >= end) return 0;
  const Clock::duration sleep = std::min(std::chrono::milliseconds(attempt + 1), LongestSleep);
  std::this_thread::sleep_for(std::min(sleep, end - now));
  return 1;
}

}  // namespace Oru::Common::Databases::Sqlite
