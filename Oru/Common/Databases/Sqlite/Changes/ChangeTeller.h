#pragma once

#include "Oru/Common/Databases/Sqlite/ChangeListener.h"
#include "Oru/Common/Databases/Sqlite/Changes/ChangedRows.h"
#include "Oru/Common/Databases/Sqlite/KeptStatement.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace Oru::Common::Databases::Sqlite {

/// A function that listens, until it is no longer active.
struct ChangeListener::Entry {
  explicit Entry(Function toCall) : function(std::move(toCall)) {}

  const Function function;
  // Held over a call; recursive, as a listener may go within its own function.
  std::recursive_mutex mutex;
  std::atomic<bool> isActive{true};
};

/// Collects what statements change on a connection, and tells the listeners what was committed. Internal to
/// the access layer.
///
/// Threads: to be used with the connection locked, except where it says otherwise.
class ChangeTeller {
 public:
  /// @param database  must be alive whenever the connection is attached
  explicit ChangeTeller(DatabaseSqlite& database);
  ChangeTeller(const ChangeTeller&) = delete;
  ChangeTeller& operator=(const ChangeTeller&) = delete;

  /// Puts its hooks on an open connection.
  void Attach(sqlite3* handle);
  /// Takes them away.
  void Detach();
  /// Forgets a connection that is being closed, and what was not committed.
  void Forget();
  /// Without a listener: forgets what has changed, and takes the hooks away.
  /// @return whether the teller is done with; not while a call of `Tell` is under way, which needs it whole
  bool Retire();

  /// To be told of a step that failed: what it has changed is undone.
  void NoteFailedStatement();
  /// To be called before a savepoint begins.
  /// @param depth  how many savepoints are open around it; so for the three below
  void BeginSavepoint(std::size_t depth);
  /// To be called after a savepoint was committed, with those within it.
  void ReleaseSavepoint(std::size_t depth) noexcept;
  /// To be called after a rollback to a savepoint: what changed since its begin is forgotten.
  void RollBackSavepoint(std::size_t depth) noexcept;
  /// To be called after such a rollback failed: what changed may have been undone.
  void DoubtSavepoint(std::size_t depth) noexcept;
  /// To be called behind each statement: takes up what is committed by now.
  void Settle();
  /// Whether there is something to tell and nobody tells already. The caller then must call `Tell`.
  bool BeginTelling();
  /// Tells the listeners what was committed, and what is committed meanwhile, until there is no more. With
  /// the connection not locked.
  void Tell() noexcept;

  /// May be called with the connection locked or not.
  void Add(std::shared_ptr<ChangeListener::Entry> entry);
  /// Behind it the function isn't called any more. With the connection not locked.
  void Remove(ChangeListener::Entry& entry);
  /// May be called with the connection locked or not.
  bool HasListeners() const;

 private:
  static void OnUpdate(void* self, int operation, const char* schema, const char* table, long long key);
  static void OnRollback(void* self);
  static int OnStatement(unsigned int event, void* self, void* statement, void* text);

  void ForgetOpen();
  void DoubtAll();
  ChangedRows TakeCommitted();
  bool EndTelling();
  ChangeNotice NoticeOf(const ChangedRows& rows) noexcept;
  bool IsShadow(const std::string& table);
  void Call(const ChangeNotice& notice) noexcept;
  void CallOne(ChangeListener::Entry& entry, const ChangeNotice& notice) noexcept;
  void LogThrow(const char* what) noexcept;
  std::shared_ptr<ChangeListener::Entry> EntryAt(std::size_t index) const;
  void DropInactive();

  DatabaseSqlite& mDatabase;
  sqlite3* mHandle = nullptr;
  // What changed around each open savepoint, from the begin of the one around it on. Without a level where
  // nobody listened yet when the savepoint began.
  std::vector<ChangedRows> mAround;
  // What changed since the begin of the innermost one, or of the transaction.
  ChangedRows mOpen;
  ChangedRows mCommitted;
  uint64_t mAddsAtStatement = 0;
  bool mIsTelling = false;

  // For whoever tells alone.
  KeptStatement mShadowCount;
  std::unordered_map<std::string, bool> mShadows;

  mutable std::mutex mMutex;
  // Entries stay in their places while they are called.
  std::vector<std::shared_ptr<ChangeListener::Entry>> mEntries;
  bool mIsCalling = false;
};

}  // namespace Oru::Common::Databases::Sqlite
