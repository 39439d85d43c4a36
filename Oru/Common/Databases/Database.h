#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Oru::Common::Databases {

class Query;

/// A connection to one database.
///
/// Threads: open, close and destroy a database while no other thread uses it. All else may be called from
/// several threads at once.
class ORU_COMMON_DATABASE_EXPORT Database {
 public:
  Database();
  /// @param connection  the connection text; for SQLite a path or a `file:` URI
  explicit Database(const std::string& connection);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  virtual ~Database();

  /// Opens the connection.
  virtual void Open() = 0;
  /// Whether `Open` was called last, and not `Close`.
  virtual bool IsOpen() const = 0;
  /// Closes the connection. Does nothing if it is closed. An open transaction is rolled back.
  virtual void Close() = 0;
  /// A new, empty query for the views and tables of this database.
  virtual std::unique_ptr<Query> NewQuery() const = 0;
  /// Begins a transaction that other writers wait for.
  virtual void BeginTransaction() = 0;
  /// Ends the transaction: commits it if `commit` is true, and otherwise rolls it back.
  /// @return the number of rows changed since the beginning, 0 after a rollback
  virtual int64_t EndTransaction(bool commit) = 0;

 protected:
  /// The connection text.
  std::string mConnection;
};

}  // namespace Oru::Common::Databases
