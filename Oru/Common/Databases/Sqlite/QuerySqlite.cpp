#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/Statements/SqlText.h"

#include <algorithm>
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

// MATCH reads its expression only up to the first NUL byte.
bool HasNul(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

// LIKE reads a pattern up to its first NUL byte, and takes bytes that are no UTF-8 for others that aren't.
bool IsPatternExact(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c > 0 && c < 0x80; });
}

std::string AsBytes(const std::string& column) {
  return "CAST(" + CheckedName(column) + " AS BLOB)";
}

// The bytes of a text with the letters A to Z in lower case, as LIKE compares them: of a column and of a
// value.
std::string AsFoldedBytes(const std::string& column) {
  return "CAST(lower(" + CheckedName(column) + ") AS BLOB)";
}

std::vector<uint8_t> FoldedBytes(const std::string& text) {
  std::vector<uint8_t> bytes(text.begin(), text.end());
  for (uint8_t& byte : bytes)
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<uint8_t>(byte - 'A' + 'a');
  return bytes;
}

std::vector<uint8_t> Bytes(const uint8_t* bytes, int32_t length) {
  if (length < 0 || (!bytes && length > 0)) throw ArgumentException();
  return std::vector<uint8_t>(bytes, bytes + length);
}

// The places of values in a text. The text of a query has no other such characters, since names are plain
// identifiers. A pattern is written into the text that runs, or SQLite wouldn't look for its beginning in an index:
// https://sqlite.org/optoverview.html#like_opt
constexpr char BoundPlace = '?';
constexpr char WrittenPlace = '$';

// Gives a text with its values, the bound ones in place or beside it.
void AppendWithValues(StatementText& statement, const std::string& text,
                      const std::vector<StatementValue>& values, QuerySqlite::Values form) {
  std::size_t begin = 0;
  for (const StatementValue& value : values) {
    const std::size_t mark = text.find_first_of({BoundPlace, WrittenPlace}, begin);
    statement.text.append(text, begin, mark - begin);
    if (form == QuerySqlite::Values::Bound && text[mark] == BoundPlace) {
      statement.text += BoundPlace;
      statement.values.push_back(value);
    } else {
      statement.text += std::visit([](const auto& held) { return SqlText::Literal(held); }, value);
    }
    begin = mark + 1;
  }
  statement.text.append(text, begin, std::string::npos);
}

// Writes a condition so that NOT is right for it. Where NULL is among the values of a subselect, IN is
// unknown for every value that isn't, and so would be its negation. A column that is NULL stays unknown, as
// in every comparison.
std::string WithKnownSubselects(std::string condition) {
  const std::string in = " IN (", select = "SELECT ", alternative = "ifnull(";
  for (std::size_t at = condition.find(in + select); at != std::string::npos;
       at = condition.find(in + select, at + in.size() + alternative.size())) {
    const std::size_t begin = condition.find_last_of(" (", at - 1) + 1;
    const std::string column = condition.substr(begin, at - begin);
    std::size_t end = at + in.size();
    for (int depth = 1; depth > 0; ++end) {
      if (condition[end] == '(') ++depth;
      if (condition[end] == ')') --depth;
    }
    condition.insert(end, std::string(", ").append(column).append(" <> ").append(column).append(")"))
        .insert(begin, alternative);
  }
  return condition;
}

constexpr const char* LimitText = "LIMIT ? OFFSET ?";

// Each link of a chain is a level of the expression, of which SQLite takes 1000: a longer chain is made of
// groups. https://sqlite.org/limits.html#max_expr_depth
constexpr std::size_t LongestGroup = 250;

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
  AppendWithValues(statement, mFilter, mValues, mValues.size() <= MostBoundValues ? form : Values::Literal);
}

void QuerySqlite::AppendLimit(StatementText& statement, Values form) const {
  if (!mLimit.empty()) AppendWithValues(statement, LimitText, mLimit, form);
}

void QuerySqlite::BeginLink(const char* word) {
  if (mGroupSize == LongestGroup) {
    mFilter.insert(mGroupBegin, "(").append(")").append(word);
    mGroupBegin = mFilter.size();
    mGroupSize = 0;
  } else if (mGroupSize > 0) {
    mFilter += word;
  }
  ++mGroupSize;
}

void QuerySqlite::BeginCondition() {
  if (mIsAlternatives) {
    mIsAlternatives = false;
    mGroupBegin = 0;
    mGroupSize = 1;
  }
  BeginLink(" AND ");
}

Query& QuerySqlite::Add(const std::string& condition, std::vector<StatementValue> values) {
  BeginCondition();
  mFilter += condition;
  mValues.insert(mValues.end(), std::make_move_iterator(values.begin()),
                 std::make_move_iterator(values.end()));
  return *this;
}

Query& QuerySqlite::Compare(const std::string& column, const char* comparison, StatementValue value) {
  CheckedName(column);
  BeginCondition();
  mFilter.append(column).append(comparison).append("?");
  mValues.push_back(std::move(value));
  return *this;
}

Query& QuerySqlite::Like(const std::string& column, const char* before, const std::string& text,
                         const char* after) {
  const char place = *before == '\0' ? WrittenPlace : BoundPlace;
  return Add(CheckedName(column) + " LIKE " + place + " ESCAPE '\\'",
             {before + SqlText::EscapedForLike(text) + after});
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
  return IsPatternExact(value) ? Like(column, "%", value, "%")
                               : Within(AsFoldedBytes(column), FoldedBytes(value));
}

Query& QuerySqlite::Contains(const std::string& column, const uint8_t* bytes, int32_t length) {
  return Within(AsBytes(column), Bytes(bytes, length));
}

Query& QuerySqlite::BeginWith(const std::string& column, const std::string& value) {
  return IsPatternExact(value) ? Like(column, "", value, "%")
                               : From(AsFoldedBytes(column), Start::Begin, FoldedBytes(value));
}

Query& QuerySqlite::BeginWith(const std::string& column, const uint8_t* bytes, int32_t length) {
  return From(AsBytes(column), Start::Begin, Bytes(bytes, length));
}

Query& QuerySqlite::EndWith(const std::string& column, const std::string& value) {
  return IsPatternExact(value) ? Like(column, "%", value, "")
                               : From(AsFoldedBytes(column), Start::End, FoldedBytes(value));
}

Query& QuerySqlite::EndWith(const std::string& column, const uint8_t* bytes, int32_t length) {
  return From(AsBytes(column), Start::End, Bytes(bytes, length));
}

Query& QuerySqlite::Within(const std::string& all, std::vector<uint8_t> bytes) {
  return Add("instr(" + all + ", ?) > 0", {std::move(bytes)});
}

Query& QuerySqlite::From(const std::string& all, Start start, std::vector<uint8_t> bytes) {
  if (bytes.empty()) return Within(all, std::move(bytes));
  const auto length = static_cast<int64_t>(bytes.size());
  // For no bytes at all substr() gives NULL, which is not "no". A negative start counts from the end.
  return Add("(length(" + all + ") >= ? AND substr(" + all + ", ?, ?) = ?)",
             {length, start == Start::Begin ? int64_t{1} : -length, length, std::move(bytes)});
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
  return In(column, table, tableColumn, Checked(query));
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
  return other.IsEmpty() ? *this
                         : Add("NOT " + Parenthesised(WithKnownSubselects(other.mFilter)), other.mValues);
}

Query& QuerySqlite::And(const Query& query) {
  const QuerySqlite& other = OfSqlite(query);
  return other.IsEmpty() ? *this : Add(Parenthesised(other.mFilter), other.mValues);
}

Query& QuerySqlite::Or(const Query& query) {
  const QuerySqlite other = OfSqlite(query);
  if (other.IsEmpty()) return *this;
  if (mFilter.empty()) return Add(Parenthesised(other.mFilter), other.mValues);
  if (mIsAlternatives) {
    mFilter.pop_back();
  } else {
    mFilter = "(" + Parenthesised(mFilter);
    mIsAlternatives = true;
    mGroupBegin = mGroupSize = 1;
  }
  BeginLink(" OR ");
  // The outer parentheses keep the alternatives whole, whatever is added after or before them.
  mFilter.append(Parenthesised(other.mFilter)).append(")");
  mValues.insert(mValues.end(), other.mValues.begin(), other.mValues.end());
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
  mLimit = {int64_t{count}, int64_t{offset}};
  return *this;
}

Query& QuerySqlite::Match(const std::string& table, const std::string& expression) {
  if (HasNul(expression)) throw ArgumentException();
  return Compare(table, " MATCH ", expression);
}

}  // namespace Oru::Common::Databases::Sqlite
