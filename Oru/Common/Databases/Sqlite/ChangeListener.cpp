#include "Oru/Common/Databases/Sqlite/ChangeListener.h"

#include "Oru/Common/Databases/Sqlite/Changes/ChangeNotifier.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

ChangeListener::ChangeListener(DatabaseSqlite& database, Function function)
    : mEntry(std::make_shared<ListenerEntry>(std::move(function))) {
  mNotifier = database.AddListener(mEntry);
}

ChangeListener::~ChangeListener() {
  mNotifier->Remove(*mEntry);
}

}  // namespace Oru::Common::Databases::Sqlite
