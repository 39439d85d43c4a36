#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// The part of a cursor that a `CursorSqlite` does for it.
/// @tparam Base  the kind of cursor: `RawCursor` or an `ObjectCursor`
template <class Base>
class ORU_COMMON_DATABASE_EXPORT ForwardingCursor : public Base {
 public:
  using Cursor::GetBytes;
  using Cursor::GetDouble;
  using Cursor::GetUInt32;
  using Cursor::GetUInt64;

  int32_t GetColumnsCount() override { return cursorSqlite.GetColumnsCount(); }
  std::string GetColumnName(int32_t index) const override { return cursorSqlite.GetColumnName(index); }
  int32_t GetColumnIndex(const std::string& name) const override { return cursorSqlite.GetColumnIndex(name); }
  bool IsOpened() const override { return cursorSqlite.IsOpened(); }
  /// Whether the cursor is open on that database.
  bool IsOpenedOn(const DatabaseSqlite& db) const { return cursorSqlite.IsOpenedOn(db); }
  bool IsNull(const std::string& name) const override { return cursorSqlite.IsNull(name); }
  bool Get(const std::string& name, int64_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, uint64_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, int32_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, uint32_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, double& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, bool& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, std::string& out) const override { return cursorSqlite.Get(name, out); }
  int32_t Get(const std::string& name, uint8_t** out) const override { return cursorSqlite.Get(name, out); }

  int64_t GetInt64(const std::string& name) const override { return cursorSqlite.GetInt64(name); }
  int32_t GetInt32(const std::string& name) const override { return cursorSqlite.GetInt32(name); }
  bool GetBoolean(const std::string& name) const override { return cursorSqlite.GetBoolean(name); }
  std::string GetString(const std::string& name) const override { return cursorSqlite.GetString(name); }

  /// The same by position, from 0:
  bool IsNull(int32_t index) const { return cursorSqlite.IsNull(index); }
  bool Get(int32_t index, int64_t& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, uint64_t& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, int32_t& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, uint32_t& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, double& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, bool& out) const { return cursorSqlite.Get(index, out); }
  bool Get(int32_t index, std::string& out) const { return cursorSqlite.Get(index, out); }
  int32_t Get(int32_t index, uint8_t** out) const { return cursorSqlite.Get(index, out); }
  int64_t GetInt64(int32_t index) const { return cursorSqlite.GetInt64(index); }
  uint64_t GetUInt64(int32_t index) const { return cursorSqlite.GetUInt64(index); }
  int32_t GetInt32(int32_t index) const { return cursorSqlite.GetInt32(index); }
  uint32_t GetUInt32(int32_t index) const { return cursorSqlite.GetUInt32(index); }
  double GetDouble(int32_t index) const { return cursorSqlite.GetDouble(index); }
  bool GetBoolean(int32_t index) const { return cursorSqlite.GetBoolean(index); }
  std::string GetString(int32_t index) const { return cursorSqlite.GetString(index); }
  int32_t GetBytes(int32_t index, uint8_t** out) const { return cursorSqlite.GetBytes(index, out); }

  using Cursor::Bind;
  bool Bind(const std::string& name, int64_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, uint64_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, int32_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, uint32_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, double value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, bool value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, const std::string& value) override {
    return cursorSqlite.Bind(name, value);
  }
  bool Bind(const std::string& name, const uint8_t* bytes, int32_t length) override {
    return cursorSqlite.Bind(name, bytes, length);
  }
  bool Bind(const std::string& name) override { return cursorSqlite.Bind(name); }

  /// The same by the parameter's number, from 1.
  bool Bind(int32_t number, int64_t value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, uint64_t value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, int32_t value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, uint32_t value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, double value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, bool value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, const std::string& value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, const char* value) { return cursorSqlite.Bind(number, value); }
  bool Bind(int32_t number, const uint8_t* bytes, int32_t length) {
    return cursorSqlite.Bind(number, bytes, length);
  }
  bool Bind(int32_t number) { return cursorSqlite.Bind(number); }

  /// See `CursorSqlite`.
  void UseConstantNames(const std::string* names, std::size_t count) {
    cursorSqlite.UseConstantNames(names, count);
  }

  int32_t GetTotalItemsCount() const override { return cursorSqlite.GetTotalItemsCount(); }
  void Close() override { cursorSqlite.Close(); }
  void Reset() override { cursorSqlite.Reset(); }
  /// See `CursorSqlite`.
  void ResetForSameValues() { cursorSqlite.ResetForSameValues(); }

 protected:
  /// Without a statement.
  /// @param arguments  for the constructor of `Base`
  template <class... Arguments>
  explicit ForwardingCursor(Arguments&&... arguments) : Base(std::forward<Arguments>(arguments)...) {}

  /// The statement that this cursor steps.
  CursorSqlite cursorSqlite;
};

}  // namespace Oru::Common::Databases::Sqlite
