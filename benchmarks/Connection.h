#pragma once

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace Oru::Benchmarks {

/// A plain connection to a file, opened as a program without any library would.
///
/// Threads: a connection belongs to one thread at a time.
class Connection {
 public:
  /// @throws std::runtime_error, with SQLite's text, when the file can't be opened
  explicit Connection(const std::string& file) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(file.c_str(), &opened);
    handle.reset(opened);
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(opened));
    Execute("PRAGMA foreign_keys = ON");
  }

  sqlite3* Handle() const { return handle.get(); }

  /// @throws std::runtime_error, with SQLite's text, at the first statement that fails
  void Execute(const std::string& text) { Execute(Handle(), text); }
  static void Execute(sqlite3* on, const std::string& text) {
    if (sqlite3_exec(on, text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(text + ": " + sqlite3_errmsg(on));
    }
  }

 private:
  struct Closer {
    void operator()(sqlite3* open) const { sqlite3_close_v2(open); }
  };

  std::unique_ptr<sqlite3, Closer> handle;
};

}  // namespace Oru::Benchmarks
