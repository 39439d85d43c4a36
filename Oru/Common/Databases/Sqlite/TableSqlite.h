#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/TableStatementGenerator.h"
#include "Oru/Common/Databases/Sqlite/ViewSqlite.h"
#include "Oru/Common/Databases/Table.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <string>

namespace Oru::Common::Databases::Sqlite {

/// A table of SQLite. A derived class implements `BindToCursor`, `SetObjectId` and `GetObjectId`, beside what
/// a view needs. The body of its constructor sets `mAutoIncrementedId` to false if the database doesn't
/// assign the key, and then calls `GenerateStatements`.
///
/// Write operations throw ArgumentException without a database.
template <class T, class U>
class ORU_COMMON_DATABASE_EXPORT TableSqlite : public ViewSqlite<T>, public Table<T, U> {
 public:
  TableSqlite() = default;
  /// @param attachedDatabase  must outlive the table
  explicit TableSqlite(DatabaseSqlite& attachedDatabase) : ViewSqlite<T>(attachedDatabase) {}

  /// The statements that were prepared for another database are released.
  void AttatchToDatabase(Database& attachedDatabase) override {
    updateCursor.reset();
    lastIdCursor.reset();
    insertCursor.reset();
    ViewSqlite<T>::AttatchToDatabase(attachedDatabase);
  }

  int64_t GetLastObjectId() override {
    DatabaseSqlite& db = this->AttachedDatabase();
    if (!lastIdCursor || !lastIdCursor->IsOpened()) {
      lastIdCursor = std::make_unique<RawCursorSqlite>(
          db, "SELECT MAX(" + this->GetObjectIdColumnName() + ") AS LastId FROM " + this->GetTableName());
    }
    RawReadSqlite row;
    const int64_t lastId = lastIdCursor->Next(row) ? row.GetInt64("LastId") : -1;
    lastIdCursor->Reset();
    return lastId;
  }

  bool Delete(U& obj) override {
    if (!this->Delete(this->GetObjectId(obj))) return false;
    this->SetObjectId(obj, -1);
    return true;
  }
  bool Delete(int64_t objectId) override {
    QuerySqlite query;
    query.Equals(this->GetObjectIdColumnName(), objectId);
    return this->Delete(query);
  }
  bool Delete(Query& query) override {
    DatabaseSqlite& db = this->AttachedDatabase();
    StatementText statement;
    statement.text.append("DELETE FROM ").append(this->GetTableName());
    if (!query.IsEmpty()) {
      statement.text += " WHERE ";
      static_cast<const QuerySqlite&>(query).AppendFilter(statement, QuerySqlite::Values::Bound);
    }
    return db.ExecuteStatement(statement);
  }
  /// Deletes all rows.
  /// @return false, with a log entry, when the database refuses
  virtual bool DeleteAll() {
    QuerySqlite query;
    return this->Delete(query);
  }

  bool Save(U& obj, bool lazy) override {
    return this->GetObjectId(obj) == -1 ? Insert(obj, lazy) : Update(obj, lazy);
  }
  bool Save(U& obj) override { return this->Save(obj, true); }

  /// The position of a column in the view's select text, by its alias or its expression; -1 for an unknown
  /// one.
  virtual int32_t GetSelectColumnIndex(const std::string& columnName) const {
    const int32_t count = this->GetSelectColumnsCount();
    for (int32_t i = 0; i < count; ++i) {
      if (this->GetSelectColumnAlias(i) == columnName || this->GetSelectColumnName(i) == columnName) return i;
    }
    return -1;
  }

  /// Inserts a row, whatever the object id is. A key that the database assigns becomes the object id.
  virtual bool Insert(U& obj, bool) {
    DatabaseSqlite& db = this->AttachedDatabase();
    if (!insertCursor || !insertCursor->IsOpened()) {
      insertCursor = std::make_unique<ObjectCursorSqlite<T, U>>(db, insertStatement);
      insertCursor->AttachToTable(*this);
      UseColumnNames(*insertCursor);
    }
    const ConnectionLock connection(db.Parts());
    const RewindAtEnd rewind(*insertCursor);
    if (!this->BindToCursor(*insertCursor, obj)) return false;
    const std::lock_guard<std::mutex> lock(db.mMutex);
    return Succeeds([&] {
      insertCursor->Save(obj, connection);
      if (mAutoIncrementedId) this->SetObjectId(obj, db.LastInsertRowId());
    });
  }

  /// Updates the row of the object id. A missing row is no failure.
  virtual bool Update(U& obj, bool) {
    const ConnectionLock connection(this->AttachedDatabase().Parts());
    if (!updateCursor || !updateCursor->IsOpened()) {
      updateCursor = std::make_unique<ObjectCursorSqlite<T, U>>(*this, UpdateToRun());
      UseColumnNames(*updateCursor);
    }
    const RewindAtEnd rewind(*updateCursor);
    return this->BindToCursor(*updateCursor, obj) &&
           updateCursor->Bind(this->GetObjectIdColumnName(), this->GetObjectId(obj)) &&
           Succeeds([&] { updateCursor->Save(obj, connection); });
  }

  /// Whether the database assigns the key.
  bool IsAutoIncrementedId() const { return mAutoIncrementedId; }
  /// The texts of the statements that write a row:
  const std::string& GetInsertStatement() const { return insertStatement; }
  const std::string& GetUpdateStatement() const { return updateStatement; }

  const std::string& GetJoinClause() const override { return this->EmptyText(); }
  TableStatementGenerator<T, U>& StatementGenerator() override {
    return static_cast<TableStatementGenerator<T, U>&>(ViewSqlite<T>::StatementGenerator());
  }
  void init() override { this->statementGenerator = std::make_unique<TableStatementGenerator<T, U>>(*this); }

 protected:
  /// Takes the select, insert and update texts from the generator. For the constructors of table classes.
  void GenerateStatements() {
    GenerateStatementsWithoutUpdate();
    updateStatement = StatementGenerator().GenerateUpdateStatement();
  }
  /// The same for tables whose rows are only ever inserted.
  void GenerateStatementsWithoutUpdate() {
    this->selectStatement = StatementGenerator().GenerateSelectStatement();
    insertStatement = StatementGenerator().GenerateInsertStatement();
  }

  /// The names of the columns, where they stay what and where they are for as long as the table lives; none
  /// otherwise.
  /// @param count  set to their number
  virtual const std::string* ConstantColumnNames(std::size_t& count) const {
    count = 0;
    return nullptr;
  }

  /// False for a key that is given and not assigned by the database.
  bool mAutoIncrementedId = true;
  /// Texts, and their prepared cursors:
  std::string insertStatement;
  std::string updateStatement;
  std::unique_ptr<ObjectCursorSqlite<T, U>> insertCursor;
  std::unique_ptr<RawCursorSqlite> lastIdCursor;
  std::unique_ptr<ObjectCursorSqlite<T, U>> updateCursor;

 private:
  // Leaves a cursor ready for the next row, however the run of this one ends.
  class RewindAtEnd {
   public:
    explicit RewindAtEnd(ObjectCursorSqlite<T, U>& cursor) : mCursor(cursor) {}
    RewindAtEnd(const RewindAtEnd&) = delete;
    RewindAtEnd& operator=(const RewindAtEnd&) = delete;
    ~RewindAtEnd() { mCursor.ResetForSameValues(); }

   private:
    ObjectCursorSqlite<T, U>& mCursor;
  };

  void UseColumnNames(ObjectCursorSqlite<T, U>& cursor) const {
    std::size_t count = 0;
    const std::string* names = ConstantColumnNames(count);
    cursor.UseConstantNames(names, count);
  }

  // The text that updates a row, without a key that is set to the value that it is found by: SQLite would write
  // the row's index entries and look for other rows of that key again.
  std::string UpdateToRun() const {
    const std::string& key = this->GetObjectIdColumnName();
    const std::string setsKey = " SET " + key + " = :" + key + ", ";
    const std::string findsKey = " WHERE " + key + " = :" + key;
    const std::size_t begin = updateStatement.find(setsKey);
    const std::size_t condition = updateStatement.rfind(findsKey);
    const bool isByKey = begin != std::string::npos && condition != std::string::npos &&
                         condition + findsKey.size() == updateStatement.size();
    if (!isByKey) return updateStatement;
    std::string text = updateStatement;
    return text.replace(begin, setsKey.size(), " SET ");
  }

  // A cursor that throws has logged why.
  template <class Run>
  static bool Succeeds(Run run) {
    try {
      run();
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }
};

}  // namespace Oru::Common::Databases::Sqlite
