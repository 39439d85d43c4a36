#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/Common/Databases/ObjectCursor.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/ForwardingCursor.h"
#include "Oru/Common/Databases/Sqlite/RawReadSqlite.h"
#include "Oru/Common/Databases/View.h"

#include <cstdint>
#include <string>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// A cursor of SQLite that steps into model objects.
/// @tparam T  what is read
/// @tparam U  what is written
template <class T, class U>
class ORU_COMMON_DATABASE_EXPORT ObjectCursorSqlite : public ForwardingCursor<ObjectCursor<T, U>> {
  using Forwarding = ForwardingCursor<ObjectCursor<T, U>>;

 public:
  /// Without a statement, until `Reset` gives one.
  ObjectCursorSqlite() = default;
  explicit ObjectCursorSqlite(bool lazy) : Forwarding(lazy) {}
  /// Without a view: to run statements, or to step without reading.
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& statement)
      : ObjectCursorSqlite(db, statement, std::string()) {}
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count)
      : Forwarding(db) {
    cursorSqlite.Reset(db, select, count);
  }
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& select, const char* count)
      : ObjectCursorSqlite(db, select, std::string(count)) {}
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& statement, bool lazy)
      : ObjectCursorSqlite(db, statement, std::string(), lazy) {}
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count, bool lazy)
      : Forwarding(db, lazy) {
    cursorSqlite.Reset(db, select, count);
  }
  /// On the database of a view, which must outlive the cursor's use of it.
  ObjectCursorSqlite(View<T>& attachedView, const std::string& statement)
      : ObjectCursorSqlite(attachedView, statement, std::string()) {}
  ObjectCursorSqlite(View<T>& attachedView, const std::string& select, const std::string& count)
      : Forwarding(attachedView) {
    cursorSqlite.Reset(DatabaseOf(attachedView), select, count);
  }
  ObjectCursorSqlite(View<T>& attachedView, const std::string& select, const char* count)
      : ObjectCursorSqlite(attachedView, select, std::string(count)) {}
  ObjectCursorSqlite(View<T>& attachedView, const std::string& statement, bool lazy)
      : ObjectCursorSqlite(attachedView, statement, std::string(), lazy) {}
  ObjectCursorSqlite(View<T>& attachedView, const std::string& select, const std::string& count, bool lazy)
      : Forwarding(attachedView, lazy) {
    cursorSqlite.Reset(DatabaseOf(attachedView), select, count);
  }
  /// With values that stay bound.
  ObjectCursorSqlite(View<T>& attachedView, StatementText select, StatementText count, bool lazy)
      : Forwarding(attachedView, lazy) {
    cursorSqlite.Reset(DatabaseOf(attachedView), std::move(select), std::move(count));
  }

  using Forwarding::Reset;
  /// Replaces the statement.
  virtual void Reset(DatabaseSqlite& db, const std::string& select, const std::string& count, bool lazy) {
    this->AttachToDatabase(db);
    cursorSqlite.Reset(db, select, count);
    this->mLazy = lazy;
  }
  void Reset(DatabaseSqlite& db, StatementText select, StatementText count, bool lazy) {
    this->AttachToDatabase(db);
    cursorSqlite.Reset(db, std::move(select), std::move(count));
    this->mLazy = lazy;
  }

  /// The view reads the row with the connection locked.
  bool Next(T& obj) override {
    ThrowUnlessUsable();
    const ConnectionLock connection(cursorSqlite.GetDatabase().Parts());
    if (!cursorSqlite.Step(connection)) return false;
    this->view->ReadFromCursor(*this, obj, this->mLazy);
    return true;
  }
  bool Next() override {
    ThrowUnlessUsable();
    return cursorSqlite.Step();
  }
  void Save(U&) override {
    ThrowUnlessUsable();
    cursorSqlite.Run();
  }
  /// The same for a caller that has the connection locked.
  void Save(U&, const ConnectionLock& held) {
    ThrowUnlessUsable();
    cursorSqlite.Run(held);
  }

 protected:
  using Forwarding::cursorSqlite;

 private:
  static DatabaseSqlite& DatabaseOf(View<T>& attachedView) {
    return static_cast<DatabaseSqlite&>(attachedView.GetDatabase());
  }

  void ThrowUnlessUsable() const {
    if (!cursorSqlite.IsOpened() || !this->view) throw ObjectClosedException();
  }
};

/// Reads rows of any statement as snapshots; it needs no view.
template <>
ORU_COMMON_DATABASE_EXPORT bool ObjectCursorSqlite<RawReadSqlite, RawReadSqlite>::Next(RawReadSqlite& row);

extern template class ObjectCursorSqlite<RawReadSqlite, RawReadSqlite>;

}  // namespace Oru::Common::Databases::Sqlite
