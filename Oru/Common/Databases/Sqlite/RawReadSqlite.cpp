#include "Oru/Common/Databases/Sqlite/RawReadSqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace Oru::Common::Databases::Sqlite {

namespace {

int64_t ToInteger(double value) {
  if (std::isnan(value)) return 0;
  // 2^63 as a double, the first value that doesn't fit.
  constexpr double limit = 9223372036854775808.0;
  if (value >= limit) return std::numeric_limits<int64_t>::max();
  if (value < -limit) return std::numeric_limits<int64_t>::min();
  return static_cast<int64_t>(value);
}

// The number at the start of a text, 0 without one. Not by strtod, which follows the program's locale.
double ToDouble(const std::string& text) {
  const std::size_t begin = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
  const char* first = text.data() + begin;
  if (begin < text.size() && *first == '+') ++first;
  double value = 0;
  std::from_chars(first, text.data() + text.size(), value);
  return std::isfinite(value) ? value : 0;
}

// As SQLite writes a double out.
std::string ToText(double value) {
  char text[32];
  return sqlite3_snprintf(sizeof text, text, "%!.15g", value);
}

}  // namespace

RawReadSqlite::RawReadSqlite() = default;
RawReadSqlite::RawReadSqlite(const RawReadSqlite&) = default;
RawReadSqlite& RawReadSqlite::operator=(const RawReadSqlite&) = default;
RawReadSqlite::~RawReadSqlite() = default;

void RawReadSqlite::InitFromToCursor(CursorSqlite& cursor) {
  mColumns.resize(static_cast<std::size_t>(cursor.GetColumnsCount()));
  int32_t index = 0;
  for (Column& column : mColumns) {
    column.name = cursor.GetColumnName(index++);
    column.value = std::monostate();
  }
}

const RawReadSqlite::Column* RawReadSqlite::Find(const std::string& name) const {
  const auto found = std::find_if(mColumns.begin(), mColumns.end(),
                                  [&name](const Column& column) { return column.name == name; });
  return found == mColumns.end() ? nullptr : &*found;
}

const RawReadSqlite::Value& RawReadSqlite::At(const std::string& name) const {
  const Column* column = Find(name);
  if (!column) throw ArgumentException();
  return column->value;
}

RawReadSqlite::Value& RawReadSqlite::AtOrNew(const std::string& name) {
  const auto found = std::find_if(mColumns.begin(), mColumns.end(),
                                  [&name](const Column& column) { return column.name == name; });
  return found == mColumns.end() ? mColumns.emplace_back(Column{name, {}}).value : found->value;
}

void RawReadSqlite::Set(const std::string& name, int64_t value) {
  AtOrNew(name) = value;
}

void RawReadSqlite::Set(const std::string& name, uint64_t value) {
  Set(name, static_cast<int64_t>(value));
}

void RawReadSqlite::Set(const std::string& name, int32_t value) {
  Set(name, int64_t{value});
}

void RawReadSqlite::Set(const std::string& name, uint32_t value) {
  Set(name, int64_t{value});
}

void RawReadSqlite::Set(const std::string& name, double value) {
  AtOrNew(name) = value;
}

void RawReadSqlite::Set(const std::string& name, bool value) {
  Set(name, int64_t{value ? 1 : 0});
}

void RawReadSqlite::Set(const std::string& name, const std::string& value) {
  AtOrNew(name) = value;
}

void RawReadSqlite::Set(const std::string& name, uint8_t* bytes, int32_t length) {
  if (length < 0 || (!bytes && length > 0)) throw ArgumentException();
  AtOrNew(name) = bytes ? Bytes(bytes, bytes + length) : Bytes();
}

void RawReadSqlite::SetNull(const std::string& name) {
  AtOrNew(name) = std::monostate();
}

bool RawReadSqlite::IsNull(const std::string& name) const {
  return std::holds_alternative<std::monostate>(At(name));
}

int64_t RawReadSqlite::GetInt64(const std::string& name) const {
  const Value& value = At(name);
  if (const auto* integer = std::get_if<int64_t>(&value)) return *integer;
  if (const auto* real = std::get_if<double>(&value)) return ToInteger(*real);
  return std::strtoll(GetString(name).c_str(), nullptr, 10);
}

uint64_t RawReadSqlite::GetUInt64(const std::string& name) const {
  return static_cast<uint64_t>(GetInt64(name));
}

int32_t RawReadSqlite::GetInt32(const std::string& name) const {
  return static_cast<int32_t>(GetInt64(name));
}

uint32_t RawReadSqlite::GetUInt32(const std::string& name) const {
  return static_cast<uint32_t>(GetInt64(name));
}

double RawReadSqlite::GetDouble(const std::string& name) const {
  const Value& value = At(name);
  if (const auto* real = std::get_if<double>(&value)) return *real;
  if (const auto* integer = std::get_if<int64_t>(&value)) return static_cast<double>(*integer);
  return ToDouble(GetString(name));
}

bool RawReadSqlite::GetBoolean(const std::string& name) const {
  return GetInt64(name) != 0;
}

std::string RawReadSqlite::GetString(const std::string& name) const {
  const Value& value = At(name);
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* bytes = std::get_if<Bytes>(&value)) return std::string(bytes->begin(), bytes->end());
  if (const auto* integer = std::get_if<int64_t>(&value)) return std::to_string(*integer);
  if (const auto* real = std::get_if<double>(&value)) return ToText(*real);
  return {};
}

int32_t RawReadSqlite::GetBytesArraySize(const std::string& name) const {
  const auto* bytes = std::get_if<Bytes>(&At(name));
  return bytes ? static_cast<int32_t>(bytes->size()) : static_cast<int32_t>(GetString(name).size());
}

int32_t RawReadSqlite::GetBytesArray(const std::string& name, uint8_t* bytes, int32_t length) const {
  const std::string all = GetString(name);
  const int32_t count = std::clamp<int32_t>(static_cast<int32_t>(all.size()), 0, std::max(length, 0));
  std::copy_n(all.begin(), count, bytes);
  return count;
}

void RawReadSqlite::Reset() {
  mColumns.clear();
}

}  // namespace Oru::Common::Databases::Sqlite
