#pragma once

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases::Sqlite {

template <class T>
class ViewSqlite;

/// Writes the SQL of a view from its name, columns and clauses.
///
/// Threads: may be used from several threads at once.
template <class T>
class ORU_COMMON_DATABASE_EXPORT ViewStatementGenerator {
 public:
  /// @param describedView  must outlive the generator
  explicit ViewStatementGenerator(ViewSqlite<T>& describedView) : view(describedView) {}
  ViewStatementGenerator(const ViewStatementGenerator&) = delete;
  ViewStatementGenerator& operator=(const ViewStatementGenerator&) = delete;
  virtual ~ViewStatementGenerator() = default;

  /// The select text: a view selects its columns by their alias where they have one.
  virtual std::string GenerateSelectStatement() const {
    std::string text("SELECT ");
    const int32_t count = view.GetSelectColumnsCount();
    for (int32_t i = 0; i < count; ++i) {
      const std::string& alias = view.GetSelectColumnAlias(i);
      text.append(alias.empty() ? view.GetSelectColumnName(i) : alias).append(Separator(i, count));
    }
    return text.append(" FROM ").append(view.GetFromClause()).append(WhereClause());
  }

  /// The text that makes what the view needs in the file.
  virtual std::string GenerateCreateStatement() const {
    std::string text("CREATE VIEW IF NOT EXISTS ");
    text.append(view.GetTableName()).append(" AS SELECT ").append(SelectColumnsWithAliases());
    return text.append(" ").append(view.GetJoinClause());
  }

  /// The view's select text with the clauses of a query.
  /// @throws ArgumentException when the view has no select text
  std::string GenerateSelectStatement(Query& query) const {
    if (view.GetSelectStatement().empty()) throw ArgumentException();
    return GenerateSelectStatement(view.GetSelectStatement(), query);
  }

  /// A select text of this view with the clauses of a query.
  std::string GenerateSelectStatement(const std::string& selectStatement, Query& query) const {
    return Select(selectStatement, query, QuerySqlite::Values::Literal).text;
  }

  /// The text that counts what the view's select finds.
  std::string GenerateSelectCountStatement() const { return Count({view.GetSelectStatement(), {}}).text; }

  /// The same with the filter of a query; its order and limit don't enter.
  std::string GenerateSelectCountStatement(Query& query) const {
    return Count(Filtered(view.GetSelectStatement(), query, QuerySqlite::Values::Literal)).text;
  }

  /// What runs in place of these texts: a select that finds the same, with parameters, and the query's values
  /// beside it.
  /// @throws ArgumentException when the view has no select text
  StatementText SelectToRun(Query& query) const {
    if (view.GetSelectStatement().empty()) throw ArgumentException();
    return Select(SelectFor(query), query, QuerySqlite::Values::Bound);
  }
  StatementText SelectToRun() const { return {view.GetPlainSelectStatement(), {}}; }
  /// The statement that runs in place of a count, with its values:
  StatementText CountToRun(Query& query) const {
    return Count(Filtered(SelectFor(query), query, QuerySqlite::Values::Bound));
  }
  StatementText CountToRun() const { return Count(SelectToRun()); }

  /// The word that joins a further condition to the view's select text, with a blank on either side.
  const char* ConditionKeyword() const {
    if (!view.GetGroupByClause().empty()) return " HAVING ";
    return view.GetWhereClause().empty() ? " WHERE " : " AND ";
  }

 protected:
  /// The separator after the item at an index of a list.
  static const char* Separator(int32_t index, int32_t count) { return index < count - 1 ? ", " : ""; }

  /// The selected columns, with their aliases where they have one.
  std::string SelectColumnsWithAliases() const {
    std::string text;
    const int32_t count = view.GetSelectColumnsCount();
    for (int32_t i = 0; i < count; ++i) {
      text += view.GetSelectColumnName(i);
      const std::string& alias = view.GetSelectColumnAlias(i);
      if (!alias.empty()) text.append(" AS ").append(alias);
      text += Separator(i, count);
    }
    return text;
  }

  /// The condition of the view with its keyword; empty without one.
  std::string WhereClause() const {
    return view.GetWhereClause().empty() ? std::string() : " WHERE " + view.GetWhereClause();
  }

  /// The view that texts are generated for.
  const ViewSqlite<T>& view;

 private:
  const std::string& SelectFor(Query& query) const {
    const bool isPlain = view.IsPlain(static_cast<const QuerySqlite&>(query));
    return isPlain ? view.GetPlainSelectStatement() : view.GetSelectStatement();
  }

  StatementText Filtered(const std::string& selectStatement, Query& query, QuerySqlite::Values form) const {
    StatementText statement;
    statement.text = selectStatement;
    if (!query.IsEmpty()) {
      statement.text.append(ConditionKeyword()).append(" ");
      static_cast<const QuerySqlite&>(query).AppendFilter(statement, form);
    }
    return statement;
  }

  StatementText Select(const std::string& selectStatement, Query& query, QuerySqlite::Values form) const {
    const auto& querySqlite = static_cast<const QuerySqlite&>(query);
    StatementText statement = Filtered(selectStatement, query, form);
    const std::string& order = querySqlite.GetOrderBySQL();
    if (!order.empty()) statement.text.append(" ORDER BY ").append(order);
    if (querySqlite.HasLimit()) {
      statement.text += " ";
      querySqlite.AppendLimit(statement, form);
    }
    return statement;
  }

  static StatementText Count(StatementText select) {
    select.text = "SELECT COUNT(*) FROM (" + select.text + ")";
    return select;
  }
};

}  // namespace Oru::Common::Databases::Sqlite
