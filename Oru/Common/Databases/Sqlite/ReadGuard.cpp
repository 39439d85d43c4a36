#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

ReadGuard::ReadGuard(DatabaseSqlite& database) : mDatabase(database), mNumber(database.BeginReading()) {}

ReadGuard::~ReadGuard() {
  try {
    End();
  } catch (...) {
    // A destructor can't report a failure.
  }
}

void ReadGuard::End() {
  const uint64_t number = std::exchange(mNumber, 0);
  if (number != 0) mDatabase.EndReading(number);
}

}  // namespace Oru::Common::Databases::Sqlite
