#pragma once

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/RawCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/ViewStatementGenerator.h"
#include "Oru/Common/Databases/View.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// A view of SQLite. A derived class implements the names, the columns and `ReadFromCursor`. The body of its
/// constructor sets `selectStatement` from its generator.
///
/// The opening operations, `Create`, `GetObject` and `Exists` throw ArgumentException without a database.
///
/// Threads: a view may be read from several threads at once; each opening makes a cursor of its own.
template <class T>
class ORU_COMMON_DATABASE_EXPORT ViewSqlite : public virtual View<T> {
 public:
  ViewSqlite() = default;
  /// @param attachedDatabase  a `DatabaseSqlite` that must outlive the view
  explicit ViewSqlite(Database& attachedDatabase) { ViewSqlite::AttatchToDatabase(attachedDatabase); }

  Database& GetDatabase() const override { return AttachedDatabase(); }
  void AttatchToDatabase(Database& attachedDatabase) override {
    database = static_cast<DatabaseSqlite*>(&attachedDatabase);
  }

  /// @throws NotSupportedException, with SQLite's text, when SQLite refuses
  void Create() override {
    if (AttachedDatabase().ExecuteStatement(GetCreateStatement())) return;
    throw NotSupportedException(database->ErrorText().c_str(), __FILE__, __LINE__);
  }

  using View<T>::ReadFromCursor;
  using View<T>::OpenObjectCursor;
  using View<T>::GetObject;

  std::unique_ptr<ObjectCursor<T, T>> OpenObjectCursor(bool lazy) override {
    AttachedDatabase();
    return std::make_unique<ObjectCursorSqlite<T, T>>(*this, StatementGenerator().SelectToRun(),
                                                      StatementGenerator().CountToRun(), lazy);
  }
  std::unique_ptr<RawCursor> OpenRawCursor() override {
    return std::make_unique<RawCursorSqlite>(AttachedDatabase(), StatementGenerator().SelectToRun(),
                                             StatementGenerator().CountToRun());
  }
  std::unique_ptr<ObjectCursor<T, T>> OpenObjectCursor(Query& query, bool lazy) override {
    AttachedDatabase();
    return std::make_unique<ObjectCursorSqlite<T, T>>(*this, StatementGenerator().SelectToRun(query),
                                                      StatementGenerator().CountToRun(query), lazy);
  }
  std::unique_ptr<RawCursor> OpenRawCursor(Query& query) override {
    return std::make_unique<RawCursorSqlite>(AttachedDatabase(), StatementGenerator().SelectToRun(query),
                                             StatementGenerator().CountToRun(query));
  }
  void OpenObjectCursor(ObjectCursor<T, T>& cursor, bool lazy) override {
    Reattach(cursor, StatementGenerator().SelectToRun(), StatementGenerator().CountToRun(), lazy);
  }
  void OpenRawCursor(RawCursor& cursor) override {
    static_cast<RawCursorSqlite&>(cursor).Reset(AttachedDatabase(), StatementGenerator().SelectToRun(),
                                                StatementGenerator().CountToRun());
  }
  void OpenObjectCursor(ObjectCursor<T, T>& cursor, Query& query, bool lazy) override {
    AttachedDatabase();
    Reattach(cursor, StatementGenerator().SelectToRun(query), StatementGenerator().CountToRun(query), lazy);
  }
  void OpenRawCursor(RawCursor& cursor, Query& query) override {
    static_cast<RawCursorSqlite&>(cursor).Reset(AttachedDatabase(), StatementGenerator().SelectToRun(query),
                                                StatementGenerator().CountToRun(query));
  }

  bool GetObject(int64_t objectID, T& destObj, bool lazy) override {
    AttachedDatabase();
    std::string text(GetPlainSelectStatement());
    text.append(StatementGenerator().ConditionKeyword()).append(GetTableName()).append(".");
    AppendKeyCondition(text);
    ObjectCursorSqlite<T, T> cursor(*this, StatementText{std::move(text), {objectID}}, StatementText(), lazy);
    return cursor.Next(destObj);
  }
  bool Exists(int64_t objectID) override {
    AttachedDatabase();
    std::string text("SELECT ");
    text.append(this->GetObjectIdColumnName()).append(" FROM ").append(GetTableName()).append(" WHERE ");
    if (!GetWhereClause().empty()) text.append(GetWhereClause()).append(" AND ");
    AppendKeyCondition(text);
    ObjectCursorSqlite<T, T> cursor(*this, StatementText{std::move(text), {objectID}}, StatementText(), true);
    return cursor.Next();
  }

  /// Reads the first row that a select of this view finds, run with its values.
  /// @return false, with `object` as it was, if it found none
  template <class... Values>
  bool ReadFirst(PreparedStatement& select, T& object, const Values&... values) {
    PreparedStatement::Run run(select, AttachedDatabase(), values...);
    if (!run.Step()) return false;
    this->ReadFromCursor(run.Row(), object, true);
    return true;
  }
  /// Walks its rows, with a new object for each.
  /// @param make  gives an owning pointer to a new object
  /// @param use   is called with that pointer after each row
  template <class Make, class Use, class... Values>
  void ForEachNew(PreparedStatement& select, Make make, Use use, const Values&... values) {
    PreparedStatement::Run run(select, AttachedDatabase(), values...);
    while (run.Step()) {
      auto object = make();
      this->ReadFromCursor(run.Row(), *object, true);
      use(std::move(object));
    }
  }

  /// The name of the stored table.
  virtual const std::string& GetTableName() const = 0;
  /// The name of a stored column, by an index below `GetColumnsCount()`.
  virtual const std::string& GetColumnName(int32_t index) const = 0;
  /// The number of stored columns.
  virtual int32_t GetColumnsCount() const = 0;
  /// The parts of a select text; an empty text leaves a part out:
  virtual const std::string& GetJoinClause() const = 0;
  virtual const std::string& GetSelectColumnName(int32_t index) const { return GetColumnName(index); }
  virtual const std::string& GetWhereClause() const { return EmptyText(); }
  virtual const std::string& GetGroupByClause() const { return EmptyText(); }
  virtual const std::string& GetSelectColumnAlias(int32_t) const { return EmptyText(); }
  virtual int32_t GetSelectColumnsCount() const { return GetColumnsCount(); }
  virtual const std::string& GetFromClause() const { return GetTableName(); }
  /// The texts that were generated:
  virtual const std::string& GetSelectStatement() const { return selectStatement; }
  virtual const std::string& GetCreateStatement() const { return createStatement; }
  /// A text that runs in place of the select text where it finds the same at less cost, with the same columns:
  /// without a query, and for those that `IsPlain` is true for. The select text itself in most views.
  virtual const std::string& GetPlainSelectStatement() const { return GetSelectStatement(); }
  /// Whether the plain select finds the same for that query as the select text.
  virtual bool IsPlain(const QuerySqlite&) const { return true; }
  /// The generator of this view, made on demand.
  virtual ViewStatementGenerator<T>& StatementGenerator() {
    if (!statementGenerator) init();
    return *statementGenerator;
  }
  /// Makes the generator. A derived class with a generator of its own overrides it.
  virtual void init() { statementGenerator = std::make_unique<ViewStatementGenerator<T>>(*this); }

 protected:
  /// For parts of a text that a view leaves out.
  static const std::string& EmptyText() {
    static const std::string empty;
    return empty;
  }

  /// The database.
  /// @throws ArgumentException without one
  DatabaseSqlite& AttachedDatabase() const {
    if (!database) throw ArgumentException();
    return *database;
  }

  /// The state of a view, for derived classes:
  DatabaseSqlite* database = nullptr;
  std::string selectStatement;
  std::string createStatement;
  std::unique_ptr<ViewStatementGenerator<T>> statementGenerator;

 private:
  void AppendKeyCondition(std::string& text) const {
    text.append(this->GetObjectIdColumnName()).append(" = ?");
  }

  void Reattach(ObjectCursor<T, T>& cursor, StatementText select, StatementText count, bool lazy) {
    AttachedDatabase();
    cursor.AttachToTable(*this);
    static_cast<ObjectCursorSqlite<T, T>&>(cursor).Reset(*database, std::move(select), std::move(count),
                                                         lazy);
  }
};

}  // namespace Oru::Common::Databases::Sqlite
