#pragma once

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

/// Repairs what SQLite keeps of the full-text index in memory, after it has lacked memory. SQLite 3.40 leaves the
/// sums of the texts wrong if it lacks memory while it reads them, and stores them wrong with the next text.
///
/// Threads: to be used with the connection locked.
class MemoryRecovery {
 public:
  /// To be called with SQLite's code of each step that failed.
  void NoteFailure(int code);
  /// To be called when a transaction that no caller knows of is still open, since its rollback failed.
  void NoteLeftTransaction() { mHasLeftTransaction = true; }
  /// Rolls back a transaction that was left. Then, outside a transaction, makes SQLite drop the sums if it has lacked
  /// memory since the last call.
  void Recover(sqlite3* handle) {
    if (mHasLeftTransaction) RollBack(handle);
    if (mHasLackedMemory) DropSums(handle);
  }
  /// Forgets a connection that is about to close.
  void Forget() { mHasLackedMemory = mHasLeftTransaction = false; }

 private:
  void RollBack(sqlite3* handle);
  void DropSums(sqlite3* handle);

  bool mHasLackedMemory = false, mHasLeftTransaction = false;
};

}  // namespace Oru::Common::Databases::Sqlite
