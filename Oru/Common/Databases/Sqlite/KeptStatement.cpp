#include "Oru/Common/Databases/Sqlite/KeptStatement.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

KeptStatement::KeptStatement(std::string text) : mText(std::move(text)) {}

KeptStatement::Run::Run(KeptStatement& statement, DatabaseSqlite& db, Bare)
    : mLock(db), mStatement(statement), mCursor(std::move(statement.mIdle)) {
  if (!mCursor) mCursor = std::make_unique<CursorSqlite>();
  if (!mCursor->IsOpenedOn(db)) mCursor->Reset(db, statement.mText, std::string());
}

KeptStatement::Run::~Run() {
  mCursor->Reset();
  mStatement.mIdle = std::move(mCursor);
}

}  // namespace Oru::Common::Databases::Sqlite
