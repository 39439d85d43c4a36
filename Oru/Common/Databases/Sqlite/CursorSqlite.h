#pragma once

#include "Oru/Common/Databases/Cursor.h"
#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/StatementText.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sqlite3_stmt;

namespace Oru::Common::Databases::Sqlite {

class ConnectionLock;
class DatabaseSqlite;
class StatementHandle;

/// One prepared statement with its parameters and result columns.
///
/// If SQLite refuses a statement, its text is logged and the cursor stays closed. When the database is
/// closed, its cursors are closed; a cursor may outlive the database.
class ORU_COMMON_DATABASE_EXPORT CursorSqlite : public Cursor {
 public:
  /// A cursor without a statement.
  CursorSqlite();
  CursorSqlite(DatabaseSqlite& db, const std::string& select);
  /// @param count  the statement that `GetTotalItemsCount` runs
  CursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count);
  /// The same with values for the parameters of the statements. They stay bound when the cursor is rewound,
  /// and `Bind` refuses to change them.
  explicit CursorSqlite(DatabaseSqlite& db, StatementText select, StatementText count = {});
  ~CursorSqlite() override;

  using Cursor::GetBytes;
  using Cursor::GetDouble;
  using Cursor::GetUInt32;
  using Cursor::GetUInt64;

  int32_t GetColumnsCount() override;
  std::string GetColumnName(int32_t index) const override;
  int32_t GetColumnIndex(const std::string& name) const override;
  bool IsOpened() const override { return mStatement != nullptr; }
  /// Whether the cursor is open on that database.
  bool IsOpenedOn(const DatabaseSqlite& db) const { return IsOpened() && &GetDatabase() == &db; }

  bool IsNull(const std::string& name) const override;
  bool Get(const std::string& name, int64_t& out) const override;
  bool Get(const std::string& name, uint64_t& out) const override;
  bool Get(const std::string& name, int32_t& out) const override;
  bool Get(const std::string& name, uint32_t& out) const override;
  bool Get(const std::string& name, double& out) const override;
  bool Get(const std::string& name, bool& out) const override;
  bool Get(const std::string& name, std::string& out) const override;
  int32_t Get(const std::string& name, uint8_t** out) const override;
  int64_t GetInt64(const std::string& name) const override;
  int32_t GetInt32(const std::string& name) const override;
  bool GetBoolean(const std::string& name) const override;
  std::string GetString(const std::string& name) const override;

  /// The same by position, from 0. An index outside the columns is like an unknown name:
  bool IsNull(int32_t index) const;
  bool Get(int32_t index, int64_t& out) const;
  bool Get(int32_t index, uint64_t& out) const;
  bool Get(int32_t index, int32_t& out) const;
  bool Get(int32_t index, uint32_t& out) const;
  bool Get(int32_t index, double& out) const;
  bool Get(int32_t index, bool& out) const;
  bool Get(int32_t index, std::string& out) const;
  int32_t Get(int32_t index, uint8_t** out) const;
  int64_t GetInt64(int32_t index) const;
  uint64_t GetUInt64(int32_t index) const;
  int32_t GetInt32(int32_t index) const;
  uint32_t GetUInt32(int32_t index) const;
  double GetDouble(int32_t index) const;
  bool GetBoolean(int32_t index) const;
  std::string GetString(int32_t index) const;
  int32_t GetBytes(int32_t index, uint8_t** out) const;

  using Cursor::Bind;
  bool Bind(const std::string& name, int64_t value) override;
  bool Bind(const std::string& name, uint64_t value) override;
  bool Bind(const std::string& name, int32_t value) override;
  bool Bind(const std::string& name, uint32_t value) override;
  bool Bind(const std::string& name, double value) override;
  bool Bind(const std::string& name, bool value) override;
  bool Bind(const std::string& name, const std::string& value) override;
  bool Bind(const std::string& name, const uint8_t* bytes, int32_t length) override;
  bool Bind(const std::string& name) override;

  /// The same by the parameter's number, from 1 as SQLite counts.
  bool Bind(int32_t number, int64_t value);
  bool Bind(int32_t number, uint64_t value);
  bool Bind(int32_t number, int32_t value);
  bool Bind(int32_t number, uint32_t value);
  bool Bind(int32_t number, double value);
  bool Bind(int32_t number, bool value);
  bool Bind(int32_t number, const std::string& value);
  bool Bind(int32_t number, const char* value) {
    return value ? Bind(number, std::string(value)) : Bind(number, nullptr, -1);
  }
  bool Bind(int32_t number, const uint8_t* bytes, int32_t length);
  bool Bind(int32_t number);

  /// Gives the cursor names that its parameters are bound by, and that stay what and where they are for as long as
  /// the cursor is used, as the columns of a table do. A binding by one of them is found by its place among them,
  /// with no text compared.
  /// @param names  the first of `count` names
  void UseConstantNames(const std::string* names, std::size_t count);

  int32_t GetTotalItemsCount() const override;
  void Close() override;
  void Reset() override;
  /// The same for a statement whose next run binds the same parameters. Those that it doesn't bind are NULL again at
  /// its first `Step` or `Run`, and not before.
  void ResetForSameValues();
  /// Replaces the statement.
  virtual void Reset(DatabaseSqlite& db, const std::string& select, const std::string& count);
  void Reset(DatabaseSqlite& db, StatementText select, StatementText count);

  /// Steps to the next row.
  /// @return false after the last row, and at every further call
  /// @throws ObjectClosedException on a closed cursor; InvalidOperationException, with a log entry of
  ///         SQLite's text, when the step fails
  bool Step();
  /// The same for a caller that has the connection locked.
  bool Step(const ConnectionLock& held);
  /// Runs a statement that gives no rows.
  /// @throws as `Step`; InvalidOperationException also when a row comes
  void Run();
  void Run(const ConnectionLock& held);

  /// The database of the cursor.
  /// @throws ArgumentException without one
  DatabaseSqlite& GetDatabase() const;
  /// The prepared statement, null while closed; it stays owned by the cursor. A row that `sqlite3_step` on it
  /// comes to is read as one of `Step`; the two must not be mixed in one run.
  sqlite3_stmt* Statement() const { return mStatement; }

 protected:
  /// The prepared statement, null while closed.
  sqlite3_stmt* mStatement = nullptr;

 private:
  // After a failure the next step starts over.
  enum class Position : uint8_t { BeforeRows, OnRow, AfterRows, Failed };

  void Prepare(const std::string& select);
  void Rewind(bool isForSameParameters);
  int StepOnce();
  bool CanRepeat() const;
  void LeaveRow();
  [[noreturn]] void ThrowStepFailure(const std::string& message);
  bool IsOnRow() const;
  int ColumnOnRow(const std::string& name) const;
  bool IsColumnOnRow(int32_t index) const;
  template <class T>
  bool Read(int32_t column, T& out) const;
  template <class T>
  T ReadOrThrow(int32_t column) const;
  bool ReadText(int32_t index, std::string& out) const;
  std::string TextOrThrow(int32_t column) const;
  bool IsTextNull() const;
  int ParameterNumber(const std::string& name);
  int FindParameter(const std::string& name);
  bool MayBind(int32_t number);
  bool IsBound(int code, int32_t number, std::size_t length = 0);
  bool IsRefused(int code);

  std::string mCountStatement;
  // What the parameters are bound to for as long as the statement is open, if it came with values.
  std::vector<StatementValue> mValues;
  std::vector<StatementValue> mCountValues;
  std::unique_ptr<StatementHandle> mPrepared;
  Position mPosition = Position::BeforeRows;
  bool mHasFailed = false;
  // After which column and parameter the next one is looked up: see NameIndex.
  mutable std::size_t mLastColumn = 0;
  std::size_t mLastParameter = 0;
  // The constant names, and the parameters of those that have been bound: 0 for one that hasn't.
  const std::string* mNames = nullptr;
  std::vector<int> mNumbers;
};

}  // namespace Oru::Common::Databases::Sqlite
