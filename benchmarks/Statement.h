#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

namespace Oru::Benchmarks {

/// A statement that is prepared once and run many times: hand-written use of the C API with no more than
/// scopes around it.
///
/// Texts are bound where they lie. They must stay until the statement is run, or until its `Rows` are gone.
///
/// Threads: a statement belongs to one thread at a time.
class Statement {
 public:
  /// @throws std::runtime_error, with SQLite's text
  Statement(sqlite3* handle, const std::string& text) {
    sqlite3_stmt* prepared = nullptr;
    const int length = static_cast<int>(text.size());
    if (sqlite3_prepare_v3(handle, text.c_str(), length, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr) !=
        SQLITE_OK) {
      throw std::runtime_error(text + ": " + sqlite3_errmsg(handle));
    }
    statement.reset(prepared);
  }

  /// Binds the values to the parameters, in order.
  template <class... Values>
  Statement& With(const Values&... values) {
    int number = 0;
    (Bind(++number, values), ...);
    return *this;
  }
  void Bind(int number, int32_t value) { sqlite3_bind_int(Get(), number, value); }
  void Bind(int number, int64_t value) { sqlite3_bind_int64(Get(), number, value); }
  void Bind(int number, std::nullptr_t) { sqlite3_bind_null(Get(), number); }
  void Bind(int number, const std::string& value) {
    sqlite3_bind_text(Get(), number, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
  }

  /// Runs a statement that gives no rows.
  void Run() {
    const int result = sqlite3_step(Get());
    sqlite3_reset(Get());
    if (result != SQLITE_DONE) Fail();
  }

  bool Step() {
    const int result = sqlite3_step(Get());
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE) Fail();
    return false;
  }
  void Reset() { sqlite3_reset(Get()); }

  int32_t Int32(int column) const { return sqlite3_column_int(Get(), column); }
  int64_t Int64(int column) const { return sqlite3_column_int64(Get(), column); }
  bool IsNull(int column) const { return sqlite3_column_type(Get(), column) == SQLITE_NULL; }
  std::string Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(Get(), column));
    if (!text) return {};
    return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(Get(), column)));
  }
  /// Asks SQLite for each column of the row, as what it is.
  void ReadColumns() const {
    for (int column = sqlite3_column_count(Get()) - 1; column >= 0; --column) {
      switch (sqlite3_column_type(Get(), column)) {
        case SQLITE_TEXT:
          sqlite3_column_text(Get(), column);
          break;
        case SQLITE_FLOAT:
          sqlite3_column_double(Get(), column);
          break;
        default:
          sqlite3_column_int64(Get(), column);
      }
    }
  }

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* prepared) const { sqlite3_finalize(prepared); }
  };

  sqlite3_stmt* Get() const { return statement.get(); }
  [[noreturn]] void Fail() const {
    throw std::runtime_error(std::string(sqlite3_sql(Get())) + ": " +
                             sqlite3_errmsg(sqlite3_db_handle(Get())));
  }

  std::unique_ptr<sqlite3_stmt, Finalizer> statement;
};

/// The rows that a bound statement gives. The statement is reset at the end of the scope.
class Rows {
 public:
  explicit Rows(Statement& running) : statement(running) {}
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  ~Rows() { statement.Reset(); }

  bool Next() { return statement.Step(); }
  const Statement* operator->() const { return &statement; }

 private:
  Statement& statement;
};

}  // namespace Oru::Benchmarks
