#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

PreparedStatement::PreparedStatement(std::string text) : mText(std::move(text)) {}

PreparedStatement::Run::Run(PreparedStatement& statement, DatabaseSqlite& db, Bare)
    : mLock(db.Parts()), mStatement(statement), mCursor(std::move(statement.mCursor)) {
  if (!mCursor) mCursor = std::make_unique<CursorSqlite>();
  if (!mCursor->IsOpenedOn(db)) mCursor->Reset(db, statement.mText, std::string());
}

PreparedStatement::Run::~Run() {
  mCursor->ResetForSameValues();
  mStatement.mCursor = std::move(mCursor);
}

}  // namespace Oru::Common::Databases::Sqlite
