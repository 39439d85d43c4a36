#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/HandleLock.h"

namespace Oru::Common::Databases::Sqlite {

ConnectionLock::ConnectionLock(const DatabaseSqlite& database)
    : mLock(std::make_unique<HandleLock>(database.Handle())) {}

ConnectionLock::~ConnectionLock() = default;

}  // namespace Oru::Common::Databases::Sqlite
