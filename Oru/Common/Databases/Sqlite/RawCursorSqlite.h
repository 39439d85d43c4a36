#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/RawCursor.h"
#include "Oru/Common/Databases/Sqlite/ForwardingCursor.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases::Sqlite {

/// Fills a snapshot with the current row of a cursor, each value in its stored type.
ORU_COMMON_DATABASE_EXPORT void ReadRow(CursorSqlite& cursor, RawRead& row);

/// A cursor over the rows of a statement as they are stored.
class ORU_COMMON_DATABASE_EXPORT RawCursorSqlite : public ForwardingCursor<RawCursor> {
 public:
  RawCursorSqlite();
  /// Opens the cursor, as `CursorSqlite` does.
  RawCursorSqlite(DatabaseSqlite& db, const std::string& select);
  RawCursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count);
  RawCursorSqlite(DatabaseSqlite& db, StatementText select, StatementText count);
  ~RawCursorSqlite() override;

  using ForwardingCursor::Reset;
  /// Replaces the statement.
  void Reset(DatabaseSqlite& db, const std::string& select, const std::string& count);
  void Reset(DatabaseSqlite& db, StatementText select, StatementText count);

  bool Next(RawRead& row) override;
  bool Next() override { return cursorSqlite.Step(); }
};

}  // namespace Oru::Common::Databases::Sqlite
