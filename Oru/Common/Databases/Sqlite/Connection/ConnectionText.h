#pragma once

#include <optional>
#include <string>

namespace Oru::Common::Databases::Sqlite {

/// What a connection text asks for: a path, or a `file:` URI that may carry options of this library beside
/// those of SQLite.
struct ConnectionText {
  /// Milliseconds that a statement waits for another connection's lock; option `_busy_timeout`.
  int busyTimeout = 5000;
  /// Milliseconds that a statement may take; option `_statement_timeout`, without it no limit.
  std::optional<int> statementTimeout;
  /// The pragma values asked for, empty for SQLite's defaults; options `_journal_mode` and `_synchronous`.
  std::string journalMode;
  std::string synchronous;
  /// Numbers as they are written; options `_cache_size` and `_mmap_size`.
  std::string cacheSize;
  std::string mmapSize;
  /// What is wrong with the text, naming the option; empty when nothing is.
  std::string fault;

  static ConnectionText Parse(const std::string& text);
};

}  // namespace Oru::Common::Databases::Sqlite
