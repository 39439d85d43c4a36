#pragma once

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Export.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace Oru::Common::Databases {

/// A filter, an order and a limit that narrow what a view reads or what a table deletes.
///
/// Each operation adds to the query and returns it, so that calls chain. Conditions added one
/// after the other combine by AND, in the order added; `Or(q)` makes it (all so far) OR (q). An empty `q` in
/// `And`, `Or` and `Not` adds nothing.
///
/// Column and table names are one or more plain identifiers joined by dots, as `MediaAsset.name`; anything
/// else throws ArgumentException. Values are ordinary data whatever they hold: quotes, wildcards and NUL
/// bytes have no meaning in them. Unsigned values beyond the signed range compare as the negative numbers
/// that the database stores for them. A null pointer throws ArgumentException, except for bytes of length 0.
///
/// A query may hold 100,000 conditions and more. SQLite limits how deep they may nest instead: a cursor stays
/// closed if `And`, `Or` and `Not` have put queries into queries more than 20 deep.
class ORU_COMMON_DATABASE_EXPORT Query {
 public:
  Query() = default;
  Query(const Query&) = default;
  Query& operator=(const Query&) = default;
  virtual ~Query();

  /// Rows whose column holds no value.
  virtual Query& IsNULL(const std::string& column) = 0;

  /// Rows whose column equals the value. Text compares byte by byte.
  virtual Query& Equals(const std::string& column, int64_t value) = 0;
  virtual Query& Equals(const std::string& column, uint64_t value) = 0;
  virtual Query& Equals(const std::string& column, int32_t value) = 0;
  virtual Query& Equals(const std::string& column, uint32_t value) = 0;
  virtual Query& Equals(const std::string& column, double value) = 0;
  virtual Query& Equals(const std::string& column, bool value) = 0;
  virtual Query& Equals(const std::string& column, const std::string& value) = 0;
  virtual Query& Equals(const std::string& column, const uint8_t* bytes, int32_t length) = 0;

  /// Rows whose column is less than the value, in the database's own ordering of values.
  virtual Query& LessThan(const std::string& column, int64_t value) = 0;
  virtual Query& LessThan(const std::string& column, uint64_t value) = 0;
  virtual Query& LessThan(const std::string& column, int32_t value) = 0;
  virtual Query& LessThan(const std::string& column, uint32_t value) = 0;
  virtual Query& LessThan(const std::string& column, double value) = 0;
  virtual Query& LessThan(const std::string& column, bool value) = 0;
  virtual Query& LessThan(const std::string& column, const std::string& value) = 0;

  /// Rows whose column is greater than the value, in the database's own ordering of values.
  virtual Query& GreaterThan(const std::string& column, int64_t value) = 0;
  virtual Query& GreaterThan(const std::string& column, uint64_t value) = 0;
  virtual Query& GreaterThan(const std::string& column, int32_t value) = 0;
  virtual Query& GreaterThan(const std::string& column, uint32_t value) = 0;
  virtual Query& GreaterThan(const std::string& column, double value) = 0;
  virtual Query& GreaterThan(const std::string& column, bool value) = 0;
  virtual Query& GreaterThan(const std::string& column, const std::string& value) = 0;

  /// Rows whose column is less than the value or equals it.
  virtual Query& LessThanOrEquals(const std::string& column, int64_t value) = 0;
  virtual Query& LessThanOrEquals(const std::string& column, uint64_t value) = 0;
  virtual Query& LessThanOrEquals(const std::string& column, int32_t value) = 0;
  virtual Query& LessThanOrEquals(const std::string& column, uint32_t value) = 0;
  virtual Query& LessThanOrEquals(const std::string& column, double value) = 0;
  virtual Query& LessThanOrEquals(const std::string& column, bool value) = 0;
  virtual Query& LessThanOrEquals(const std::string& column, const std::string& value) = 0;

  /// Rows whose column is greater than the value or equals it.
  virtual Query& GreaterThanOrEquals(const std::string& column, int64_t value) = 0;
  virtual Query& GreaterThanOrEquals(const std::string& column, uint64_t value) = 0;
  virtual Query& GreaterThanOrEquals(const std::string& column, int32_t value) = 0;
  virtual Query& GreaterThanOrEquals(const std::string& column, uint32_t value) = 0;
  virtual Query& GreaterThanOrEquals(const std::string& column, double value) = 0;
  virtual Query& GreaterThanOrEquals(const std::string& column, bool value) = 0;
  virtual Query& GreaterThanOrEquals(const std::string& column, const std::string& value) = 0;

  /// Rows whose column holds the text anywhere, at its start or at its end. The letters A to Z match in
  /// either case, and all else byte by byte. Bytes match exactly:
  virtual Query& Contains(const std::string& column, const std::string& value) = 0;
  virtual Query& Contains(const std::string& column, const uint8_t* bytes, int32_t length) = 0;
  virtual Query& BeginWith(const std::string& column, const std::string& value) = 0;
  virtual Query& BeginWith(const std::string& column, const uint8_t* bytes, int32_t length) = 0;
  virtual Query& EndWith(const std::string& column, const std::string& value) = 0;
  virtual Query& EndWith(const std::string& column, const uint8_t* bytes, int32_t length) = 0;

  /// Rows whose column value occurs in `tableColumn` of those rows of `table` that the filter of `query`
  /// selects; of all its rows without a query.
  virtual Query& In(const std::string& column, const std::string& table, const std::string& tableColumn,
                    const Query& query) = 0;
  virtual Query& In(const std::string& column, const std::string& table, const std::string& tableColumn,
                    std::shared_ptr<Query> query) = 0;
  virtual Query& In(const std::string& column, const std::string& table, const std::string& tableColumn) = 0;
  /// Rows whose column equals one of the values; none for an empty vector.
  virtual Query& In(const std::string& column, const std::vector<long long>& values) = 0;
  virtual Query& In(const std::string& column, const std::vector<std::string>& values) = 0;

  /// Adds the negation of the filter of another query. A column that is NULL fulfils neither a comparison nor
  /// its negation; that there is a NULL among the values that `In` looks at makes no difference.
  virtual Query& Not(const Query& query) = 0;
  /// Adds the filter of another query as one condition.
  virtual Query& And(const Query& query) = 0;
  /// Makes the filter (all so far) OR (that of another query).
  virtual Query& Or(const Query& query) = 0;
  /// The same with a pointer to a query:
  Query& Not(const std::shared_ptr<Query>& query) { return Not(Checked(query)); }
  Query& And(const std::shared_ptr<Query>& query) { return And(Checked(query)); }
  Query& Or(const std::shared_ptr<Query>& query) { return Or(Checked(query)); }

  /// Orders by a column, after the orders already given.
  virtual Query& OrderByAsc(const std::string& column) = 0;
  /// The same, from the greatest value down.
  virtual Query& OrderByDesc(const std::string& column) = 0;

  /// At most `count` rows, after skipping `offset` rows. A negative count means no limit.
  virtual Query& Limit(int32_t count, int32_t offset) = 0;

  /// Whether the query holds no condition. Order and limit don't count.
  virtual bool IsEmpty() const = 0;

  /// Rows that a full-text index finds: `Match("MediaAssetFts", expression)` in a query for media assets.
  ///
  /// A match combines with others, and with conditions of other kinds, by AND as ever. The best come first
  /// with `OrderByAsc("MediaAssetFts.rank")`. Under `Or` and `Not`, in a view that doesn't read through the
  /// index and in a query to delete by, SQLite takes a match in a selection of its own only:
  /// `In("key", "MediaAssetFts", "rowid", matching)`.
  ///
  /// SQLite reads the expression when the statement runs, unless other conditions leave no row to look at. If
  /// SQLite refuses it, or finds it under `Or` or `Not`, the first step of the cursor and its total throw
  /// InvalidOperationException. If the view doesn't read through the index, the cursor stays closed, and a
  /// deletion gives false. Each case leaves a log entry with SQLite's text.
  /// @param table       the index
  /// @param expression  in the language of the index, https://sqlite.org/fts5.html#full_text_query_syntax;
  ///                    pass what a person has typed through FullTextExpression first
  /// @throws ArgumentException for a bad name, as above, and for an expression with a NUL byte;
  ///         NotSupportedException from a class of queries that has no match, as this class does
  virtual Query& Match(const std::string& table, const std::string& expression);

  /// Overloads for arguments that C++ would convert badly or not at all: a C string is text (not bool), a
  /// long long has 64 bits, a vector takes other integers and values in braces:
  Query& Equals(const std::string& column, const char* value) {
    return Equals(column, std::string(Checked(value)));
  }
  Query& Equals(const std::string& column, long long value) {
    return Equals(column, static_cast<int64_t>(value));
  }
  Query& Equals(const std::string& column, unsigned long long value) {
    return Equals(column, static_cast<uint64_t>(value));
  }
  Query& LessThan(const std::string& column, const char* value) {
    return LessThan(column, std::string(Checked(value)));
  }
  Query& LessThan(const std::string& column, long long value) {
    return LessThan(column, static_cast<int64_t>(value));
  }
  Query& LessThan(const std::string& column, unsigned long long value) {
    return LessThan(column, static_cast<uint64_t>(value));
  }
  Query& GreaterThan(const std::string& column, const char* value) {
    return GreaterThan(column, std::string(Checked(value)));
  }
  Query& GreaterThan(const std::string& column, long long value) {
    return GreaterThan(column, static_cast<int64_t>(value));
  }
  Query& GreaterThan(const std::string& column, unsigned long long value) {
    return GreaterThan(column, static_cast<uint64_t>(value));
  }
  Query& LessThanOrEquals(const std::string& column, const char* value) {
    return LessThanOrEquals(column, std::string(Checked(value)));
  }
  Query& LessThanOrEquals(const std::string& column, long long value) {
    return LessThanOrEquals(column, static_cast<int64_t>(value));
  }
  Query& LessThanOrEquals(const std::string& column, unsigned long long value) {
    return LessThanOrEquals(column, static_cast<uint64_t>(value));
  }
  Query& GreaterThanOrEquals(const std::string& column, const char* value) {
    return GreaterThanOrEquals(column, std::string(Checked(value)));
  }
  Query& GreaterThanOrEquals(const std::string& column, long long value) {
    return GreaterThanOrEquals(column, static_cast<int64_t>(value));
  }
  Query& GreaterThanOrEquals(const std::string& column, unsigned long long value) {
    return GreaterThanOrEquals(column, static_cast<uint64_t>(value));
  }
  template <class Integer, class = std::enable_if_t<std::is_integral_v<Integer>>>
  Query& In(const std::string& column, const std::vector<Integer>& values) {
    return In(column, std::vector<long long>(values.begin(), values.end()));
  }
  template <class Value>
  Query& In(const std::string& column, std::initializer_list<Value> values) {
    using Element = std::conditional_t<std::is_integral_v<Value>, long long, std::string>;
    return In(column, std::vector<Element>(values.begin(), values.end()));
  }

 protected:
  /// What a pointer points to.
  /// @throws ArgumentException for a null pointer
  static const Query& Checked(const std::shared_ptr<Query>& query) {
    if (!query) throw ArgumentException();
    return *query;
  }

 private:
  static const char* Checked(const char* text) {
    if (!text) throw ArgumentException();
    return text;
  }
};

}  // namespace Oru::Common::Databases
