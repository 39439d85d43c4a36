#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/Common/Databases/ObjectCursor.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/RawReadSqlite.h"
#include "Oru/Common/Databases/View.h"

#include <cstdint>
#include <string>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// A cursor of SQLite that steps into model objects.
/// @tparam T  what is read
/// @tparam U  what is written
///
/// Threads: a cursor belongs to one thread at a time.
template <class T, class U>
class ORU_COMMON_DATABASE_EXPORT ObjectCursorSqlite : public ObjectCursor<T, U> {
 public:
  /// Without a statement, until `Reset` gives one.
  ObjectCursorSqlite() = default;
  explicit ObjectCursorSqlite(bool lazy) : ObjectCursor<T, U>(lazy) {}
  /// Without a view: to run statements, or to step without reading.
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& statement)
      : ObjectCursor<T, U>(db), cursorSqlite(db, statement) {}
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count)
      : ObjectCursor<T, U>(db), cursorSqlite(db, select, count) {}
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& select, const char* count)
      : ObjectCursorSqlite(db, select, std::string(count)) {}
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& statement, bool lazy)
      : ObjectCursor<T, U>(db, lazy), cursorSqlite(db, statement) {}
  ObjectCursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count, bool lazy)
      : ObjectCursor<T, U>(db, lazy), cursorSqlite(db, select, count) {}
  /// On the database of a view, which must outlive the cursor's use of it.
  ObjectCursorSqlite(View<T>& attachedView, const std::string& statement)
      : ObjectCursor<T, U>(attachedView), cursorSqlite(DatabaseOf(attachedView), statement) {}
  ObjectCursorSqlite(View<T>& attachedView, const std::string& select, const std::string& count)
      : ObjectCursor<T, U>(attachedView), cursorSqlite(DatabaseOf(attachedView), select, count) {}
  ObjectCursorSqlite(View<T>& attachedView, const std::string& select, const char* count)
      : ObjectCursorSqlite(attachedView, select, std::string(count)) {}
  ObjectCursorSqlite(View<T>& attachedView, const std::string& statement, bool lazy)
      : ObjectCursor<T, U>(attachedView, lazy), cursorSqlite(DatabaseOf(attachedView), statement) {}
  ObjectCursorSqlite(View<T>& attachedView, const std::string& select, const std::string& count, bool lazy)
      : ObjectCursor<T, U>(attachedView, lazy), cursorSqlite(DatabaseOf(attachedView), select, count) {}
  /// With values that stay bound.
  ObjectCursorSqlite(View<T>& attachedView, StatementText select, StatementText count, bool lazy)
      : ObjectCursor<T, U>(attachedView, lazy),
        cursorSqlite(DatabaseOf(attachedView), std::move(select), std::move(count)) {}

  using Cursor::GetBoolean;
  using Cursor::GetBytes;
  using Cursor::GetDouble;
  using Cursor::GetInt32;
  using Cursor::GetInt64;
  using Cursor::GetString;
  using Cursor::GetUInt32;
  using Cursor::GetUInt64;

  int32_t GetColumnsCount() override { return cursorSqlite.GetColumnsCount(); }
  std::string GetColumnName(int32_t index) const override { return cursorSqlite.GetColumnName(index); }
  int32_t GetColumnIndex(const std::string& name) const override { return cursorSqlite.GetColumnIndex(name); }
  bool IsOpened() const override { return cursorSqlite.IsOpened(); }
  /// Whether the cursor is open on that database.
  bool IsOpenedOn(const DatabaseSqlite& db) const { return cursorSqlite.IsOpenedOn(db); }
  bool IsNull(const std::string& name) const override { return cursorSqlite.IsNull(name); }
  bool Get(const std::string& name, int64_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, uint64_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, int32_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, uint32_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, double& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, bool& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, std::string& out) const override { return cursorSqlite.Get(name, out); }
  int32_t Get(const std::string& name, uint8_t** out) const override { return cursorSqlite.Get(name, out); }

  /// The same by position, from 0:
  bool IsNull(int32_t index) const { return cursorSqlite.IsNull(index); }
  bool Get(int32_t index, int64_t& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, uint64_t& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, int32_t& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, uint32_t& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, double& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, bool& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, std::string& out) const { return cursorSqlite.Get(index, out); }
  int32_t Get(int32_t index, uint8_t** out) const { return cursorSqlite.Get(index, out); }
  int64_t GetInt64(int32_t index) const { return cursorSqlite.GetInt64(index); }
  uint64_t GetUInt64(int32_t index) const { return cursorSqlite.GetUInt64(index); }
  int32_t GetInt32(int32_t index) const { return cursorSqlite.GetInt32(index); }
  uint32_t GetUInt32(int32_t index) const { return cursorSqlite.GetUInt32(index); }
  double GetDouble(int32_t index) const { return cursorSqlite.GetDouble(index); }
  bool GetBoolean(int32_t index) const { return cursorSqlite.GetBoolean(index); }
  std::string GetString(int32_t index) const { return cursorSqlite.GetString(index); }
  int32_t GetBytes(int32_t index, uint8_t** out) const { return cursorSqlite.GetBytes(index, out); }

  using Cursor::Bind;
  bool Bind(const std::string& name, int64_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, uint64_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, int32_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, uint32_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, double value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, bool value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, const std::string& value) override {
    return cursorSqlite.Bind(name, value);
  }
  bool Bind(const std::string& name, const uint8_t* bytes, int32_t length) override {
    return cursorSqlite.Bind(name, bytes, length);
  }
  bool Bind(const std::string& name) override { return cursorSqlite.Bind(name); }

  /// The same by the parameter's number, from 1.
  bool Bind(int32_t number, int64_t value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, uint64_t value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, int32_t value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, uint32_t value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, double value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, bool value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, const std::string& value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, const char* value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, const uint8_t* bytes, int32_t length) {
    return cursorSqlite.Bind(number, bytes, length);
  }
  bool Bind(int32_t number) { return cursorSqlite.Bind(number); }

  int32_t GetTotalItemsCount() const override { return cursorSqlite.GetTotalItemsCount(); }
  void Close() override { cursorSqlite.Close(); }
  void Reset() override { cursorSqlite.Reset(); }
  /// Gives the statement up for another one.
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
    const ConnectionLock connection(cursorSqlite.GetDatabase());
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

 protected:
  /// The statement that this cursor steps.
  CursorSqlite cursorSqlite;

 private:
  static DatabaseSqlite& DatabaseOf(View<T>& attachedView) {
    return static_cast<DatabaseSqlite&>(attachedView.GetDatabase());
  }

  void ThrowUnlessUsable() const {
    if (!cursorSqlite.IsOpened() || !this->view) throw ObjectClosedException();
  }
};

/// Rows of any statement as snapshots. There is no object to read, and so no need of a view.
template <>
ORU_COMMON_DATABASE_EXPORT bool ObjectCursorSqlite<RawReadSqlite, RawReadSqlite>::Next(RawReadSqlite& row);

extern template class ObjectCursorSqlite<RawReadSqlite, RawReadSqlite>;

}  // namespace Oru::Common::Databases::Sqlite
