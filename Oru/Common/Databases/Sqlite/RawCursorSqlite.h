#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/RawCursor.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases::Sqlite {

/// Fills a snapshot with the current row of a cursor, each value in its stored type.
ORU_COMMON_DATABASE_EXPORT void ReadRow(CursorSqlite& cursor, RawRead& row);

/// A cursor over the rows of a statement as they are stored.
///
/// Threads: a cursor belongs to one thread at a time.
class ORU_COMMON_DATABASE_EXPORT RawCursorSqlite : public RawCursor {
 public:
  RawCursorSqlite();
  /// Opens the cursor, as `CursorSqlite` does.
  RawCursorSqlite(DatabaseSqlite& db, const std::string& select);
  RawCursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count);
  RawCursorSqlite(DatabaseSqlite& db, StatementText select, StatementText count);
  ~RawCursorSqlite() override;

  int32_t GetColumnsCount() override { return cursorSqlite.GetColumnsCount(); }
  std::string GetColumnName(int32_t index) const override { return cursorSqlite.GetColumnName(index); }
  int32_t GetColumnIndex(const std::string& name) const override { return cursorSqlite.GetColumnIndex(name); }
  bool IsOpened() const override { return cursorSqlite.IsOpened(); }
  bool IsNull(const std::string& name) const override { return cursorSqlite.IsNull(name); }
  bool Get(const std::string& name, int64_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, uint64_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, int32_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, uint32_t& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, double& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, bool& out) const override { return cursorSqlite.Get(name, out); }
  bool Get(const std::string& name, std::string& out) const override { return cursorSqlite.Get(name, out); }
  int32_t Get(const std::string& name, uint8_t** out) const override { return cursorSqlite.Get(name, out); }

  using Cursor::Bind;
  bool Bind(const std::string& name, int64_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, uint64_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, int32_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, uint32_t value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, double value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, bool value) override { return cursorSqlite.Bind(name, value); }
  bool Bind(const std::string& name, const std::string& value) override {
    return cursorSqlite.Bind(name, value);
  }
  bool Bind(const std::string& name, const uint8_t* bytes, int32_t length) override {
    return cursorSqlite.Bind(name, bytes, length);
  }
  bool Bind(const std::string& name) override { return cursorSqlite.Bind(name); }

  int32_t GetTotalItemsCount() const override { return cursorSqlite.GetTotalItemsCount(); }
  void Close() override { cursorSqlite.Close(); }
  void Reset() override { cursorSqlite.Reset(); }
  /// Gives the statement up for another one.
  void Reset(DatabaseSqlite& db, const std::string& select, const std::string& count);
  void Reset(DatabaseSqlite& db, StatementText select, StatementText count);

  bool Next(RawRead& row) override;
  bool Next() override { return cursorSqlite.Step(); }

 private:
  CursorSqlite cursorSqlite;
};

}  // namespace Oru::Common::Databases::Sqlite
