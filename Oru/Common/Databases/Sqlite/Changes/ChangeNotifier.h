#pragma once

#include "Oru/Common/Databases/Sqlite/ChangeNotice.h"
#include "Oru/Common/Databases/Sqlite/Changes/ChangedRows.h"
#include "Oru/Common/Databases/Sqlite/Changes/ListenerEntry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace Oru::Common::Databases::Sqlite {

class StatementHandle;

/// Collects what statements change on a connection, and notifies the listeners of what was committed.
///
/// Threads: to be used with the connection locked, except where it says otherwise.
class ChangeNotifier {
 public:
  using LogFailure = std::function<void(const std::string&)>;

  /// @param logFailure  logs what a listener throws
  explicit ChangeNotifier(LogFailure logFailure);
  ChangeNotifier(const ChangeNotifier&) = delete;
  ChangeNotifier& operator=(const ChangeNotifier&) = delete;
  ~ChangeNotifier();

  /// Sets the hooks of an open connection.
  void Attach(sqlite3* handle);
  /// Forgets a connection that is about to close, and what was not committed.
  void Forget();
  /// To be called when there is no listener left: forgets what has changed, and removes the hooks.
  /// @return whether the notifier may be destroyed; false during a call of `Notify`
  bool Retire();

  /// To be called before the first step of a statement.
  void NoteStatement() { mAddsAtStatement = mOpen.AddCount(); }
  /// To be called after a step that failed: SQLite has undone what the statement changed.
  void NoteFailedStatement();
  /// To be called before a savepoint begins.
  /// @param depth  how many savepoints are open around it; so for the three below
  void BeginSavepoint(std::size_t depth);
  /// To be called after a savepoint was committed, with those within it.
  void ReleaseSavepoint(std::size_t depth) noexcept;
  /// To be called after a rollback to a savepoint: forgets what changed since it began.
  void RollBackSavepoint(std::size_t depth) noexcept;
  /// To be called after such a rollback failed: what changed may have been undone.
  void MarkSavepointUncertain(std::size_t depth) noexcept;
  /// To be called after each statement: collects what is committed by now.
  void CollectCommitted();
  /// Whether there is something to report and no thread is reporting already. If so, the caller must call
  /// `Notify`.
  bool BeginNotifying();
  /// Calls the listeners with what was committed, and with what is committed meanwhile, until there is no
  /// more. With the connection not locked.
  void Notify() noexcept;

  /// May be called with the connection locked or not.
  void Add(std::shared_ptr<ListenerEntry> entry);
  /// Afterwards the function isn't called any more. With the connection not locked.
  void Remove(ListenerEntry& entry);
  /// May be called with the connection locked or not.
  bool HasListeners() const;

 private:
  static void OnUpdate(void* self, int operation, const char* schema, const char* table, long long key);
  static void OnRollback(void* self);
  static int OnStatementEnd(unsigned int event, void* self, void* statement, void* nanoseconds);

  void Detach();
  void ForgetOpen();
  void MarkAllUncertain();
  ChangedRows TakeCommitted();
  bool EndNotifying();
  ChangeNotice NoticeOf(const ChangedRows& rows) noexcept;
  bool IsShadow(const std::string& table);
  void Call(const ChangeNotice& notice) noexcept;
  void CallOne(ListenerEntry& entry, const ChangeNotice& notice) noexcept;
  void LogThrow(const char* what) noexcept;
  std::shared_ptr<ListenerEntry> EntryAt(std::size_t index) const;
  void DropInactive();

  const LogFailure mLogFailure;
  sqlite3* mHandle = nullptr;
  // What changed around each open savepoint, since the beginning of the one around it. There is no level for
  // a savepoint that began before the first listener came.
  std::vector<ChangedRows> mAround;
  // What changed since the beginning of the innermost savepoint, or of the transaction.
  ChangedRows mOpen;
  ChangedRows mCommitted;
  uint64_t mAddsAtStatement = 0;
  bool mIsNotifying = false;

  // Used only by the thread that notifies.
  std::unique_ptr<StatementHandle> mShadowSelect;
  std::unordered_map<std::string, bool> mShadows;

  mutable std::mutex mMutex;
  // Entries stay in their places while they are called.
  std::vector<std::shared_ptr<ListenerEntry>> mEntries;
  bool mIsCalling = false;
};

}  // namespace Oru::Common::Databases::Sqlite
