#include "Oru/Common/Databases/Sqlite/ChangeListener.h"

#include "Oru/Common/Databases/Sqlite/Connection/ConnectionParts.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

ChangeListener::ChangeListener(DatabaseSqlite& database, Function function)
    : mEntry(std::make_shared<ListenerEntry>(std::move(function))) {
  const ConnectionLock lock(database.Parts());
  mNotifier = database.Parts().connection.Listeners().Add(mEntry, database.Handle());
}

ChangeListener::~ChangeListener() {
  mNotifier->Remove(*mEntry);
}

}  // namespace Oru::Common::Databases::Sqlite
