#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

/// What was committed: the changed rows by table and key.
struct ChangeNotice {
  /// What has become of a row from the begin to the end of the transaction. A row that was inserted and
  /// deleted again isn't told at all.
  enum class Kind : uint8_t {
    Inserted,
    Updated,
    Deleted,
    /// One of these, or nothing: a part of the transaction was rolled back, by a savepoint or by a statement
    /// that failed behind its first row. Look at the row.
    Unknown
  };

  /// A row by its key, the rowid of SQLite. That is the value of the column `key`, or of whichever column is
  /// the integer primary key of its table; tables without one number their rows by themselves.
  struct Row {
    /// The rowid; unique in its table.
    int64_t key;
    /// What has become of the row.
    Kind kind;
  };

  /// The changed rows of one table.
  struct Table {
    /// As it was given when the table was made.
    std::string name;
    /// In the order of their keys.
    std::vector<Row> rows;
    /// Whether too many rows were changed to tell: `rows` is empty then, and any row may have changed.
    bool areAllRows = false;
  };

  /// In the order of their names.
  std::vector<Table> tables;
  /// Whether memory was too short to tell: any row of any table may have changed.
  bool areAllTables = false;
};

}  // namespace Oru::Common::Databases::Sqlite
