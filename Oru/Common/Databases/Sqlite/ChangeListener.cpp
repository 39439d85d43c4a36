#include "Oru/Common/Databases/Sqlite/ChangeListener.h"

#include "Oru/Common/Databases/Sqlite/Changes/ChangeTeller.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

ChangeListener::ChangeListener(DatabaseSqlite& database, Function function)
    : mEntry(std::make_shared<Entry>(std::move(function))) {
  mTeller = database.AddListener(mEntry);
}

ChangeListener::~ChangeListener() {
  mTeller->Remove(*mEntry);
}

}  // namespace Oru::Common::Databases::Sqlite
