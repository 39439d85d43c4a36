#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Query.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

/// A query that becomes SQL text with its values written out as literals.
///
/// Threads: a query belongs to one thread at a time; distinct queries are independent.
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

  /// Compares a column with a parameter, which whoever runs the statement binds by its place in the text,
  /// from 1.
  Query& EqualsParameter(const std::string& column);

  /// The whole condition without the word WHERE; empty for a query without conditions.
  const std::string& GetFilterSQL() const { return mFilter; }
  /// The ordering terms without the words ORDER BY; empty when none was given.
  const std::string& GetOrderBySQL() const { return mOrderBy; }
  /// The whole limit clause, keyword included; empty when none was given.
  const std::string& GetLimitSQL() const { return mLimit; }

 private:
  // The one way in for a condition: joins it to those before by AND.
  Query& Add(const std::string& condition);
  Query& Compare(const std::string& column, const char* comparison, const std::string& literal);
  Query& Like(const std::string& column, const char* before, const std::string& text, const char* after);
  // The bytes stand in the column from a place on that counts from 1, or from the end if it is negative.
  Query& BytesFrom(const std::string& column, int64_t start, const uint8_t* bytes, int32_t length);
  Query& OrderBy(const std::string& column, const char* direction);

  std::string mFilter;
  std::string mOrderBy;
  std::string mLimit;
};

}  // namespace Oru::Common::Databases::Sqlite
