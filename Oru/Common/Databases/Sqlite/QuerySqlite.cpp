#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/Statements/SqlText.h"

#include <iterator>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

using SqlText::CheckedName;

namespace {

const QuerySqlite& OfSqlite(const Query& query) {
  return static_cast<const QuerySqlite&>(query);
}

std::string Parenthesised(const std::string& condition) {
  return "(" + condition + ")";
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

std::vector<uint8_t> Bytes(const uint8_t* bytes, int32_t length) {
  if (length < 0) throw ArgumentException();
  return std::vector<uint8_t>(bytes, bytes + length);
}

// Gives a text with each question mark replaced by the literal of its value. No other stands in the text of
// a query: names are plain identifiers.
void AppendWithLiterals(std::string& out, const std::string& text,
                        const std::vector<StatementValue>& values) {
  std::size_t begin = 0;
  for (const StatementValue& value : values) {
    const std::size_t mark = text.find('?', begin);
    out.append(text, begin, mark - begin)
        .append(std::visit([](const auto& held) { return SqlText::Literal(held); }, value));
    begin = mark + 1;
  }
  out.append(text, begin, std::string::npos);
}

void AppendBound(StatementText& statement, const std::string& text,
                 const std::vector<StatementValue>& values) {
  statement.text += text;
  statement.values.insert(statement.values.end(), values.begin(), values.end());
}

constexpr const char* LimitText = "LIMIT ? OFFSET ?";

}  // namespace

QuerySqlite::~QuerySqlite() = default;

std::string QuerySqlite::GetFilterSQL() const {
  StatementText statement;
  AppendFilter(statement, Values::Literal);
  return statement.text;
}

std::string QuerySqlite::GetLimitSQL() const {
  StatementText statement;
  AppendLimit(statement, Values::Literal);
  return statement.text;
}

void QuerySqlite::AppendFilter(StatementText& statement, Values form) const {
  if (form == Values::Bound && mValues.size() <= MostBoundValues) {
    AppendBound(statement, mFilter, mValues);
  } else {
    AppendWithLiterals(statement.text, mFilter, mValues);
  }
}

void QuerySqlite::AppendLimit(StatementText& statement, Values form) const {
  if (mLimit.empty()) return;
  if (form == Values::Bound) {
    AppendBound(statement, LimitText, mLimit);
  } else {
    AppendWithLiterals(statement.text, LimitText, mLimit);
  }
}

Query& QuerySqlite::Add(const std::string& condition, std::vector<StatementValue> values) {
  if (!mFilter.empty()) mFilter += " AND ";
  mFilter += condition;
  mValues.insert(mValues.end(), std::make_move_iterator(values.begin()),
                 std::make_move_iterator(values.end()));
  return *this;
}

Query& QuerySqlite::Compare(const std::string& column, const char* comparison, StatementValue value) {
  CheckedName(column);
  if (!mFilter.empty()) mFilter += " AND ";
  mFilter.append(column).append(comparison).append("?");
  mValues.push_back(std::move(value));
  return *this;
}

Query& QuerySqlite::Like(const std::string& column, const char* before, const std::string& text,
                         const char* after) {
  return Add(CheckedName(column) + " LIKE ? ESCAPE '\\'", {before + SqlText::EscapedForLike(text) + after});
}

Query& QuerySqlite::IsNULL(const std::string& column) {
  return Add(CheckedName(column) + " IS NULL");
}

Query& QuerySqlite::Equals(const std::string& column, int64_t value) {
  return Compare(column, " = ", value);
}

Query& QuerySqlite::Equals(const std::string& column, uint64_t value) {
  return Compare(column, " = ", static_cast<int64_t>(value));
}

Query& QuerySqlite::Equals(const std::string& column, int32_t value) {
  return Compare(column, " = ", static_cast<int64_t>(value));
}

Query& QuerySqlite::Equals(const std::string& column, uint32_t value) {
  return Compare(column, " = ", static_cast<int64_t>(value));
}

Query& QuerySqlite::Equals(const std::string& column, double value) {
  return Compare(column, " = ", value);
}

Query& QuerySqlite::Equals(const std::string& column, bool value) {
  return Compare(column, " = ", static_cast<int64_t>(value));
}

Query& QuerySqlite::Equals(const std::string& column, const std::string& value) {
  return Compare(column, " = ", value);
}

Query& QuerySqlite::LessThan(const std::string& column, int64_t value) {
  return Compare(column, " < ", value);
}

Query& QuerySqlite::LessThan(const std::string& column, uint64_t value) {
  return Compare(column, " < ", static_cast<int64_t>(value));
}

Query& QuerySqlite::LessThan(const std::string& column, int32_t value) {
  return Compare(column, " < ", static_cast<int64_t>(value));
}

Query& QuerySqlite::LessThan(const std::string& column, uint32_t value) {
  return Compare(column, " < ", static_cast<int64_t>(value));
}

Query& QuerySqlite::LessThan(const std::string& column, double value) {
  return Compare(column, " < ", value);
}

Query& QuerySqlite::LessThan(const std::string& column, bool value) {
  return Compare(column, " < ", static_cast<int64_t>(value));
}

Query& QuerySqlite::LessThan(const std::string& column, const std::string& value) {
  return Compare(column, " < ", value);
}

Query& QuerySqlite::GreaterThan(const std::string& column, int64_t value) {
  return Compare(column, " > ", value);
}

Query& QuerySqlite::GreaterThan(const std::string& column, uint64_t value) {
  return Compare(column, " > ", static_cast<int64_t>(value));
}

Query& QuerySqlite::GreaterThan(const std::string& column, int32_t value) {
  return Compare(column, " > ", static_cast<int64_t>(value));
}

Query& QuerySqlite::GreaterThan(const std::string& column, uint32_t value) {
  return Compare(column, " > ", static_cast<int64_t>(value));
}

Query& QuerySqlite::GreaterThan(const std::string& column, double value) {
  return Compare(column, " > ", value);
}

Query& QuerySqlite::GreaterThan(const std::string& column, bool value) {
  return Compare(column, " > ", static_cast<int64_t>(value));
}

Query& QuerySqlite::GreaterThan(const std::string& column, const std::string& value) {
  return Compare(column, " > ", value);
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, int64_t value) {
  return Compare(column, " <= ", value);
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, uint64_t value) {
  return Compare(column, " <= ", static_cast<int64_t>(value));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, int32_t value) {
  return Compare(column, " <= ", static_cast<int64_t>(value));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, uint32_t value) {
  return Compare(column, " <= ", static_cast<int64_t>(value));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, double value) {
  return Compare(column, " <= ", value);
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, bool value) {
  return Compare(column, " <= ", static_cast<int64_t>(value));
}

Query& QuerySqlite::LessThanOrEquals(const std::string& column, const std::string& value) {
  return Compare(column, " <= ", value);
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, int64_t value) {
  return Compare(column, " >= ", value);
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, uint64_t value) {
  return Compare(column, " >= ", static_cast<int64_t>(value));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, int32_t value) {
  return Compare(column, " >= ", static_cast<int64_t>(value));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, uint32_t value) {
  return Compare(column, " >= ", static_cast<int64_t>(value));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, double value) {
  return Compare(column, " >= ", value);
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, bool value) {
  return Compare(column, " >= ", static_cast<int64_t>(value));
}

Query& QuerySqlite::GreaterThanOrEquals(const std::string& column, const std::string& value) {
  return Compare(column, " >= ", value);
}

Query& QuerySqlite::Equals(const std::string& column, const uint8_t* bytes, int32_t length) {
  return Compare(column, " = ", Bytes(bytes, length));
}

Query& QuerySqlite::Contains(const std::string& column, const std::string& value) {
  if (HasNul(value)) return Contains(column, Data(value), static_cast<int32_t>(value.size()));
  return Like(column, "%", value, "%");
}

Query& QuerySqlite::Contains(const std::string& column, const uint8_t* bytes, int32_t length) {
  return Add("instr(" + AsBytes(column) + ", ?) > 0", {Bytes(bytes, length)});
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
  // Of no bytes at all substr() gives NULL, which is not "no".
  return Add("(length(" + all + ") >= ? AND substr(" + all + ", ?, ?) = ?)",
             {int64_t{length}, start, int64_t{length}, Bytes(bytes, length)});
}

Query& QuerySqlite::In(const std::string& column, const std::string& table, const std::string& tableColumn,
                       const Query& query) {
  const QuerySqlite& among = OfSqlite(query);
  std::string condition =
      CheckedName(column) + " IN (SELECT " + CheckedName(tableColumn) + " FROM " + CheckedName(table);
  if (!among.IsEmpty()) condition.append(" WHERE ").append(among.mFilter);
  return Add(condition.append(")"), among.mValues);
}

Query& QuerySqlite::In(const std::string& column, const std::string& table, const std::string& tableColumn,
                       std::shared_ptr<Query> query) {
  return In(column, table, tableColumn, *query);
}

Query& QuerySqlite::In(const std::string& column, const std::string& table, const std::string& tableColumn) {
  return In(column, table, tableColumn, QuerySqlite());
}

template <class Value>
Query& QuerySqlite::Among(const std::string& column, const std::vector<Value>& values) {
  std::string condition = CheckedName(column) + " IN (";
  for (std::size_t i = 0; i < values.size(); ++i)
    condition += i == 0 ? "?" : ", ?";
  return Add(condition.append(")"), {values.begin(), values.end()});
}

Query& QuerySqlite::In(const std::string& column, const std::vector<long long>& values) {
  return Among(column, std::vector<int64_t>(values.begin(), values.end()));
}

Query& QuerySqlite::In(const std::string& column, const std::vector<std::string>& values) {
  return Among(column, values);
}

Query& QuerySqlite::Not(const Query& query) {
  const QuerySqlite& other = OfSqlite(query);
  return other.IsEmpty() ? *this : Add("NOT " + Parenthesised(other.mFilter), other.mValues);
}

Query& QuerySqlite::And(const Query& query) {
  const QuerySqlite& other = OfSqlite(query);
  return other.IsEmpty() ? *this : Add(Parenthesised(other.mFilter), other.mValues);
}

Query& QuerySqlite::Or(const Query& query) {
  const QuerySqlite& other = OfSqlite(query);
  if (other.IsEmpty()) return *this;
  std::string alternative = Parenthesised(other.mFilter);
  if (!mFilter.empty()) {
    // The outer parentheses keep the alternative whole, whatever is added after or before it.
    alternative = Parenthesised(Parenthesised(mFilter) + " OR " + alternative);
    mFilter.clear();
  }
  return Add(alternative, other.mValues);
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
  mLimit = {int64_t{count}, int64_t{offset}};
  return *this;
}

Query& QuerySqlite::Match(const std::string& table, const std::string& expression) {
  if (HasNul(expression)) throw ArgumentException();
  return Compare(table, " MATCH ", expression);
}

}  // namespace Oru::Common::Databases::Sqlite
