#include "Oru/Common/Databases/Sqlite/KeptStatement.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

KeptStatement::KeptStatement(std::string text) : mText(std::move(text)) {}

KeptStatement::Run::Run(KeptStatement& statement, DatabaseSqlite& db)
    : mLock(db), mCursor(statement.mCursor) {
  if (!mCursor.IsOpenedOn(db)) mCursor.Reset(db, statement.mText, std::string());
}

KeptStatement::Run::~Run() {
  mCursor.Reset();
}

}  // namespace Oru::Common::Databases::Sqlite
