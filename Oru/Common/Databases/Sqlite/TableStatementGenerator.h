#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/ViewStatementGenerator.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases::Sqlite {

template <class T, class U>
class TableSqlite;

/// Writes the SQL of a table from its names and columns. A parameter is named ":" and its column.
///
/// Threads: may be used from several threads at once.
template <class T, class U>
class ORU_COMMON_DATABASE_EXPORT TableStatementGenerator : public ViewStatementGenerator<T> {
 public:
  /// @param describedTable  must outlive the generator
  explicit TableStatementGenerator(TableSqlite<T, U>& describedTable)
      : ViewStatementGenerator<T>(describedTable) {}

  using ViewStatementGenerator<T>::GenerateSelectStatement;

  /// The select text: columns that have an alias are found by it.
  std::string GenerateSelectStatement() const override {
    std::string text("SELECT ");
    text.append(this->SelectColumnsWithAliases()).append(" FROM ").append(this->view.GetFromClause());
    text += this->WhereClause();
    if (!this->view.GetGroupByClause().empty())
      text.append(" GROUP BY ").append(this->view.GetGroupByClause());
    return text;
  }

  /// Empty: the schema comes from the database's scripts.
  std::string GenerateCreateStatement() const override { return {}; }

  /// The text that inserts a row; parameters have the names of their columns.
  std::string GenerateInsertStatement() const {
    std::string text("INSERT INTO ");
    text.append(this->view.GetTableName()).append(" (");
    text += WrittenColumns([](std::string& list, const std::string& column) { list.append(column); });
    text.append(") VALUES (");
    text +=
        WrittenColumns([](std::string& list, const std::string& column) { list.append(":").append(column); });
    return text.append(");");
  }

  /// The text that updates the row of a key.
  std::string GenerateUpdateStatement() const {
    std::string text("UPDATE ");
    text.append(this->view.GetTableName()).append(" SET ");
    text += WrittenColumns([](std::string& list, const std::string& column) {
      list.append(column).append(" = :").append(column);
    });
    const std::string& idColumn = this->view.GetObjectIdColumnName();
    return text.append(" WHERE ").append(idColumn).append(" = :").append(idColumn);
  }

 private:
  const TableSqlite<T, U>& Described() const { return static_cast<const TableSqlite<T, U>&>(this->view); }

  // A list of all columns but a key that the database assigns, written one by one. The separator depends on
  // the place of the column, so a key that is left out must not be the last.
  template <class WriteColumn>
  std::string WrittenColumns(WriteColumn write) const {
    std::string list;
    const int32_t count = this->view.GetColumnsCount();
    for (int32_t i = 0; i < count; ++i) {
      const std::string& column = this->view.GetColumnName(i);
      if (Described().IsAutoIncrementedId() && column == this->view.GetObjectIdColumnName()) continue;
      write(list, column);
      list += this->Separator(i, count);
    }
    return list;
  }
};

}  // namespace Oru::Common::Databases::Sqlite
