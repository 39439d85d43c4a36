#pragma once

#include "Oru/Common/Databases/Sqlite/Connection/Connection.h"
#include "Oru/Common/Databases/Sqlite/Connection/Transactions.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// What a `DatabaseSqlite` consists of, beside its members that tables read.
struct ConnectionParts {
  explicit ConnectionParts(Connection::LogFailure logFailure)
      : connection(std::move(logFailure)), transactions(connection) {}

  Connection connection;
  Transactions transactions;
};

}  // namespace Oru::Common::Databases::Sqlite
