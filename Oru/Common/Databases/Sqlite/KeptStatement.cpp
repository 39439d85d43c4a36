#include "Oru/Common/Databases/Sqlite/KeptStatement.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

KeptStatement::KeptStatement(std::string text) : mText(std::move(text)) {}

KeptStatement::Run::Run(KeptStatement& statement, DatabaseSqlite& db)
    : mLock(db), mCursor(statement.mCursor) {
  const bool isReady = mCursor.IsOpened() && &mCursor.GetDatabase() == &db;
  if (!isReady) mCursor.Reset(db, statement.mText, std::string());
}

KeptStatement::Run::~Run() {
  mCursor.Reset();
}

}  // namespace Oru::Common::Databases::Sqlite
