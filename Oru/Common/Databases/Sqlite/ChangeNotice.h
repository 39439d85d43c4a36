#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

/// What was committed: the changed rows by table and key.
struct ChangeNotice {
  /// What is called with each notice.
  using Callback = std::function<void(const ChangeNotice&)>;

  /// The difference that a transaction made to a row. A row that was inserted and deleted again isn't
  /// reported.
  enum class Kind : uint8_t {
    Inserted,
    Updated,
    Deleted,
    /// One of these, or nothing: a part of the transaction was rolled back, by a savepoint or by a statement
    /// that failed after its first row. Look at the row.
    Unknown
  };

  /// A row by its key, the rowid of SQLite. That is the value of the column `key`, or of another column that
  /// is the integer primary key of its table. A table without one numbers its rows itself.
  struct Row {
    /// The rowid; unique in its table.
    int64_t key;
    /// The difference.
    Kind kind;
  };

  /// The changed rows of one table.
  struct Table {
    /// As it was given when the table was made.
    std::string name;
    /// In the order of their keys.
    std::vector<Row> rows;
    /// Whether too many rows were changed to list them: then `rows` is empty, and any row may have changed.
    bool areAllRows = false;
  };

  /// In the order of their names.
  std::vector<Table> tables;
  /// Whether there was too little memory to list them: any row of any table may have changed.
  bool areAllTables = false;
};

}  // namespace Oru::Common::Databases::Sqlite
