#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

namespace Oru::Common::Databases::Sqlite {

ReadGuard::ReadGuard(DatabaseSqlite& database) : mDatabase(database), mNumber(database.BeginReading()) {}

ReadGuard::~ReadGuard() {
  End();
}

void ReadGuard::End() {
  if (mNumber != 0) mDatabase.EndReading(mNumber);
  mNumber = 0;
}

}  // namespace Oru::Common::Databases::Sqlite
