#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/Sqlite/StatementText.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

/// A query that becomes SQL text. It stores its values beside the text: a statement that runs takes them as
/// parameters, and a text that a caller asks for has them as literals.
class ORU_COMMON_DATABASE_EXPORT QuerySqlite : public Query {
 public:
  QuerySqlite() = default;
  QuerySqlite(const QuerySqlite&) = default;
  QuerySqlite& operator=(const QuerySqlite&) = default;
  ~QuerySqlite() override;

  using Query::And;
  using Query::Equals;
  using Query::GreaterThan;
  using Query::GreaterThanOrEquals;
  using Query::In;
  using Query::LessThan;
  using Query::LessThanOrEquals;
  using Query::Not;
  using Query::Or;

  Query& IsNULL(const std::string& column) override;
  Query& Equals(const std::string& column, int64_t value) override;
  Query& Equals(const std::string& column, uint64_t value) override;
  Query& Equals(const std::string& column, int32_t value) override;
  Query& Equals(const std::string& column, uint32_t value) override;
  Query& Equals(const std::string& column, double value) override;
  Query& Equals(const std::string& column, bool value) override;
  Query& Equals(const std::string& column, const std::string& value) override;
  Query& Equals(const std::string& column, const uint8_t* bytes, int32_t length) override;
  Query& LessThan(const std::string& column, int64_t value) override;
  Query& LessThan(const std::string& column, uint64_t value) override;
  Query& LessThan(const std::string& column, int32_t value) override;
  Query& LessThan(const std::string& column, uint32_t value) override;
  Query& LessThan(const std::string& column, double value) override;
  Query& LessThan(const std::string& column, bool value) override;
  Query& LessThan(const std::string& column, const std::string& value) override;
  Query& GreaterThan(const std::string& column, int64_t value) override;
  Query& GreaterThan(const std::string& column, uint64_t value) override;
  Query& GreaterThan(const std::string& column, int32_t value) override;
  Query& GreaterThan(const std::string& column, uint32_t value) override;
  Query& GreaterThan(const std::string& column, double value) override;
  Query& GreaterThan(const std::string& column, bool value) override;
  Query& GreaterThan(const std::string& column, const std::string& value) override;
  Query& LessThanOrEquals(const std::string& column, int64_t value) override;
  Query& LessThanOrEquals(const std::string& column, uint64_t value) override;
  Query& LessThanOrEquals(const std::string& column, int32_t value) override;
  Query& LessThanOrEquals(const std::string& column, uint32_t value) override;
  Query& LessThanOrEquals(const std::string& column, double value) override;
  Query& LessThanOrEquals(const std::string& column, bool value) override;
  Query& LessThanOrEquals(const std::string& column, const std::string& value) override;
  Query& GreaterThanOrEquals(const std::string& column, int64_t value) override;
  Query& GreaterThanOrEquals(const std::string& column, uint64_t value) override;
  Query& GreaterThanOrEquals(const std::string& column, int32_t value) override;
  Query& GreaterThanOrEquals(const std::string& column, uint32_t value) override;
  Query& GreaterThanOrEquals(const std::string& column, double value) override;
  Query& GreaterThanOrEquals(const std::string& column, bool value) override;
  Query& GreaterThanOrEquals(const std::string& column, const std::string& value) override;
  Query& Contains(const std::string& column, const std::string& value) override;
  Query& Contains(const std::string& column, const uint8_t* bytes, int32_t length) override;
  Query& BeginWith(const std::string& column, const std::string& value) override;
  Query& BeginWith(const std::string& column, const uint8_t* bytes, int32_t length) override;
  Query& EndWith(const std::string& column, const std::string& value) override;
  Query& EndWith(const std::string& column, const uint8_t* bytes, int32_t length) override;
  Query& In(const std::string& column, const std::string& table, const std::string& tableColumn,
            const Query& query) override;
  Query& In(const std::string& column, const std::string& table, const std::string& tableColumn,
            std::shared_ptr<Query> query) override;
  Query& In(const std::string& column, const std::string& table, const std::string& tableColumn) override;
  Query& In(const std::string& column, const std::vector<long long>& values) override;
  Query& In(const std::string& column, const std::vector<std::string>& values) override;
  Query& Not(const Query& query) override;
  Query& And(const Query& query) override;
  Query& Or(const Query& query) override;
  Query& OrderByAsc(const std::string& column) override;
  Query& OrderByDesc(const std::string& column) override;
  Query& Limit(int32_t count, int32_t offset) override;
  bool IsEmpty() const override { return mFilter.empty(); }
  Query& Match(const std::string& table, const std::string& expression) override;

  /// The whole condition without the word WHERE; empty for a query without conditions.
  std::string GetFilterSQL() const;
  /// The same with a mark in place of each value.
  const std::string& GetFilterText() const { return mFilter; }
  /// The ordering terms without the words ORDER BY; empty when none was given.
  const std::string& GetOrderBySQL() const { return mOrderBy; }
  /// The whole limit clause, keyword included; empty when none was given.
  std::string GetLimitSQL() const;

  bool HasLimit() const { return !mLimit.empty(); }

  /// How a text holds a value: as a literal, or as a parameter.
  enum class Values { Literal, Bound };

  /// A query with more values than this runs with literals: SQLite allows 32766 parameters in a statement,
  /// and a text with so many values is seldom run twice. https://sqlite.org/limits.html#max_variable_number
  static constexpr std::size_t MostBoundValues = 256;

  /// Append the condition or the limit clause to a statement, and its values where they are bound:
  void AppendFilter(StatementText& statement, Values form) const;
  void AppendLimit(StatementText& statement, Values form) const;

 private:
  // Adds a condition, with a question mark for each value, to those before by AND. All conditions go through
  // here.
  Query& Add(const std::string& condition, std::vector<StatementValue> values = {});
  // Prepare the filter for one more condition of its chain, which the caller appends.
  void BeginCondition();
  void BeginLink(const char* word);
  Query& Compare(const std::string& column, const char* comparison, StatementValue value);
  Query& Like(const std::string& column, const char* before, const std::string& text, const char* after);
  // The bytes are anywhere in an expression, or at an end of it:
  Query& Within(const std::string& all, std::vector<uint8_t> bytes);
  enum class Start { Begin, End };
  Query& From(const std::string& all, Start start, std::vector<uint8_t> bytes);
  template <class Value>
  Query& Among(const std::string& column, const std::vector<Value>& values);
  Query& OrderBy(const std::string& column, const char* direction);

  std::string mFilter;
  // Where the last group of the filter's chain begins, and how many conditions it has.
  std::size_t mGroupBegin = 0;
  std::size_t mGroupSize = 0;
  // Whether the filter is a chain of alternatives in parentheses, and not one of conditions.
  bool mIsAlternatives = false;
  std::vector<StatementValue> mValues;
  std::string mOrderBy;
  // Count and offset, if there is a limit.
  std::vector<StatementValue> mLimit;
};

}  // namespace Oru::Common::Databases::Sqlite
