#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/SqlText.h"

namespace Oru::Common::Databases::Sqlite {

using SqlText::CheckedName;
using SqlText::Literal;

namespace {

const std::string& FilterOf(const Query& query) {
  return static_cast<const QuerySqlite&>(query).GetFilterSQL();
}

std::string Parenthesised(const std::string& condition) {
  return "(" + condition + ")";
}

std::string Literals(const std::vector<long long>& values) {
  std::string list;
  for (const long long value : values)
    list.append(list.empty() ? "" : ", ").append(Literal(int64_t{value}));
  return list;
}

std::string Literals(const std::vector<std::string>& values) {
  std::string list;
  for (const std::string& value : values)
    list.append(list.empty() ? "" : ", ").append(Literal(value));
  return list;
}

// LIKE reads a pattern up to its first NUL byte only, and so does MATCH its expression.
bool HasNul(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

std::string AsBytes(const std::string& column) {
  return "CAST(" + CheckedName(column) + " AS BLOB)";
}

const uint8_t* Data(const std::string& text) {
  return reinterpret_cast<const uint8_t*>(text.data());
}

std::string BytesLiteral(const uint8_t* bytes, int32_t length) {
  if (length < 0) throw ArgumentException();
  return SqlText::BytesLiteral(bytes, static_cast<std::size_t>(length));
}

}  // namespace

QuerySqlite::~QuerySqlite() = default;

Query& QuerySqlite::Add(const std::string& condition) {
  if (!mFilter.empty()) mFilter += " AND ";
  mFilter += condition;
  return *this;
}

Query& QuerySqlite::Compare(const std::string& column, const char* comparison, const std::string& literal) {
  if (!mFilter.empty()) mFilter += " AND ";
  mFilter.append(CheckedName(column)).append(comparison).append(literal);
  return *this;
}

Query& QuerySqlite::Like(const std::string& column, const char* before, const std::string& text,
                         const char* after) {
  const std::string pattern = before + SqlText::EscapedForLike(text) + after;
  return Add(CheckedName(column) + " LIKE " + Literal(pattern) + " ESCAPE '\\'");
}

Query& QuerySqlite::IsNULL(const std::string& column) {
  return Add(CheckedName(column) + " IS NULL");
}

Query& QuerySqlite::Equals(const std::string& column, int64_t value) {
  return Compare(column, " = ", Literal(value));
}

Query& QuerySqlite::Equals(const std::string& column, uint64_t value) {
  return Compare(column, " = ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::Equals(const std::string& column, int32_t value) {
  return Compare(column, " = ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::Equals(const std::string& column, uint32_t value) {
  return Compare(column, " = ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::Equals(const std::string& column, double value) {
  return Compare(column, " = ", Literal(value));
}

Query& QuerySqlite::Equals(const std::string& column, bool value) {
  return Compare(column, " = ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::Equals(const std::string& column, const std::string& value) {
  return Compare(column, " = ", Literal(value));
}

Query& QuerySqlite::EqualsParameter(const std::string& column) {
  return Compare(column, " = ", "?");
}

Query& QuerySqlite::LessThan(const std::string& column, int64_t value) {
  return Compare(column, " < ", Literal(value));
}

Query& QuerySqlite::LessThan(const std::string& column, uint64_t value) {
  return Compare(column, " < ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::LessThan(const std::string& column, int32_t value) {
  return Compare(column, " < ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::LessThan(const std::string& column, uint32_t value) {
  return Compare(column, " < ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::LessThan(const std::string& column, double value) {
  return Compare(column, " < ", Literal(value));
}

Query& QuerySqlite::LessThan(const std::string& column, bool value) {
  return Compare(column, " < ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::LessThan(const std::string& column, const std::string& value) {
  return Compare(column, " < ", Literal(value));
}

Query& QuerySqlite::GreaterThan(const std::string& column, int64_t value) {
  return Compare(column, " > ", Literal(value));
}

Query& QuerySqlite::GreaterThan(const std::string& column, uint64_t value) {
  return Compare(column, " > ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::GreaterThan(const std::string& column, int32_t value) {
  return Compare(column, " > ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::GreaterThan(const std::string& column, uint32_t value) {
  return Compare(column, " > ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::GreaterThan(const std::string& column, double value) {
  return Compare(column, " > ", Literal(value));
}

Query& QuerySqlite::GreaterThan(const std::string& column, bool value) {
  return Compare(column, " > ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::GreaterThan(const std::string& column, const std::string& value) {
  return Compare(column, " > ", Literal(value));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, int64_t value) {
  return Compare(column, " <= ", Literal(value));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, uint64_t value) {
  return Compare(column, " <= ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, int32_t value) {
  return Compare(column, " <= ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, uint32_t value) {
  return Compare(column, " <= ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, double value) {
  return Compare(column, " <= ", Literal(value));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, bool value) {
  return Compare(column, " <= ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, const std::string& value) {
  return Compare(column, " <= ", Literal(value));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, int64_t value) {
  return Compare(column, " >= ", Literal(value));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, uint64_t value) {
  return Compare(column, " >= ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, int32_t value) {
  return Compare(column, " >= ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, uint32_t value) {
  return Compare(column, " >= ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, double value) {
  return Compare(column, " >= ", Literal(value));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, bool value) {
  return Compare(column, " >= ", Literal(static_cast<int64_t>(value)));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, const std::string& value) {
  return Compare(column, " >= ", Literal(value));
}

Query& QuerySqlite::Equals(const std::string& column, const uint8_t* bytes, int32_t length) {
  return Compare(column, " = ", BytesLiteral(bytes, length));
}

Query& QuerySqlite::Contains(const std::string& column, const std::string& value) {
  if (HasNul(value)) return Contains(column, Data(value), static_cast<int32_t>(value.size()));
  return Like(column, "%", value, "%");
}

Query& QuerySqlite::Contains(const std::string& column, const uint8_t* bytes, int32_t length) {
  return Add("instr(" + AsBytes(column) + ", " + BytesLiteral(bytes, length) + ") > 0");
}

Query& QuerySqlite::BeginWith(const std::string& column, const std::string& value) {
  if (HasNul(value)) return BeginWith(column, Data(value), static_cast<int32_t>(value.size()));
  return Like(column, "", value, "%");
}

Query& QuerySqlite::BeginWith(const std::string& column, const uint8_t* bytes, int32_t length) {
  return BytesFrom(column, 1, bytes, length);
}

Query& QuerySqlite::EndWith(const std::string& column, const std::string& value) {
  if (HasNul(value)) return EndWith(column, Data(value), static_cast<int32_t>(value.size()));
  return Like(column, "%", value, "");
}

Query& QuerySqlite::EndWith(const std::string& column, const uint8_t* bytes, int32_t length) {
  // A negative start counts from the end.
  return BytesFrom(column, -int64_t{length}, bytes, length);
}

Query& QuerySqlite::BytesFrom(const std::string& column, int64_t start, const uint8_t* bytes,
                              int32_t length) {
  if (length == 0) return Contains(column, bytes, length);
  const std::string all = AsBytes(column);
  const std::string count = Literal(int64_t{length});
  // Of no bytes at all substr() gives NULL, which is not "no".
  return Add("(length(" + all + ") >= " + count + " AND substr(" + all + ", " + Literal(start) + ", " +
             count + ") = " + BytesLiteral(bytes, length) + ")");
}

Query& QuerySqlite::In(const std::string& column, const std::string& table, const std::string& tableColumn,
                       const Query& query) {
  std::string condition =
      CheckedName(column) + " IN (SELECT " + CheckedName(tableColumn) + " FROM " + CheckedName(table);
  if (!query.IsEmpty()) condition.append(" WHERE ").append(FilterOf(query));
  return Add(condition.append(")"));
}

Query& QuerySqlite::In(const std::string& column, const std::string& table, const std::string& tableColumn,
                       std::shared_ptr<Query> query) {
  return In(column, table, tableColumn, *query);
}

Query& QuerySqlite::In(const std::string& column, const std::string& table, const std::string& tableColumn) {
  return In(column, table, tableColumn, QuerySqlite());
}

Query& QuerySqlite::In(const std::string& column, const std::vector<long long>& values) {
  return Add(CheckedName(column) + " IN (" + Literals(values) + ")");
}

Query& QuerySqlite::In(const std::string& column, const std::vector<std::string>& values) {
  return Add(CheckedName(column) + " IN (" + Literals(values) + ")");
}

Query& QuerySqlite::Not(const Query& query) {
  return query.IsEmpty() ? *this : Add("NOT " + Parenthesised(FilterOf(query)));
}

Query& QuerySqlite::And(const Query& query) {
  return query.IsEmpty() ? *this : Add(Parenthesised(FilterOf(query)));
}

Query& QuerySqlite::Or(const Query& query) {
  if (query.IsEmpty()) return *this;
  if (mFilter.empty()) return Add(Parenthesised(FilterOf(query)));
  // The outer parentheses keep the alternative whole, whatever is added behind it or stands ahead of it.
  mFilter = Parenthesised(Parenthesised(mFilter) + " OR " + Parenthesised(FilterOf(query)));
  return *this;
}

Query& QuerySqlite::OrderBy(const std::string& column, const char* direction) {
  if (!mOrderBy.empty()) mOrderBy += ", ";
  mOrderBy.append(CheckedName(column)).append(direction);
  return *this;
}

Query& QuerySqlite::OrderByAsc(const std::string& column) {
  return OrderBy(column, " ASC");
}

Query& QuerySqlite::OrderByDesc(const std::string& column) {
  return OrderBy(column, " DESC");
}

Query& QuerySqlite::Limit(int32_t count, int32_t offset) {
  mLimit = "LIMIT " + Literal(int64_t{count}) + " OFFSET " + Literal(int64_t{offset});
  return *this;
}

Query& QuerySqlite::Match(const std::string& table, const std::string& expression) {
  if (HasNul(expression)) throw ArgumentException();
  return Compare(table, " MATCH ", Literal(expression));
}

}  // namespace Oru::Common::Databases::Sqlite
