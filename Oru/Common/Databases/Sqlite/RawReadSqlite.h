#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/RawRead.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

class CursorSqlite;

/// A snapshot of one row of SQLite. Values convert between their types as SQLite's columns do.
class ORU_COMMON_DATABASE_EXPORT RawReadSqlite : public RawRead {
 public:
  RawReadSqlite();
  RawReadSqlite(const RawReadSqlite&);
  RawReadSqlite& operator=(const RawReadSqlite&);
  ~RawReadSqlite() override;

  /// Gives the snapshot the columns of a cursor, which are NULL until a row fills them.
  void InitFromToCursor(CursorSqlite& cursor);

  using RawRead::Set;
  void Set(const std::string& name, int64_t value) override;
  void Set(const std::string& name, uint64_t value) override;
  void Set(const std::string& name, int32_t value) override;
  void Set(const std::string& name, uint32_t value) override;
  void Set(const std::string& name, double value) override;
  void Set(const std::string& name, bool value) override;
  void Set(const std::string& name, const std::string& value) override;
  void Set(const std::string& name, uint8_t* bytes, int32_t length) override;
  void SetNull(const std::string& name) override;

  bool IsNull(const std::string& name) const override;
  int64_t GetInt64(const std::string& name) const override;
  uint64_t GetUInt64(const std::string& name) const override;
  int32_t GetInt32(const std::string& name) const override;
  uint32_t GetUInt32(const std::string& name) const override;
  double GetDouble(const std::string& name) const override;
  bool GetBoolean(const std::string& name) const override;
  std::string GetString(const std::string& name) const override;
  int32_t GetBytesArraySize(const std::string& name) const override;
  int32_t GetBytesArray(const std::string& name, uint8_t* bytes, int32_t length) const override;
  void Reset() override;

 private:
  using Bytes = std::vector<uint8_t>;
  using Value = std::variant<std::monostate, int64_t, double, std::string, Bytes>;
  struct Column {
    std::string name;
    Value value;
  };

  const Value& At(const std::string& name) const;
  Value& AtOrNew(const std::string& name);
  const Column* Find(const std::string& name) const;

  std::vector<Column> mColumns;
};

}  // namespace Oru::Common::Databases::Sqlite
