#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases {

class Database;

/// Reads the columns of one row and binds the parameters of one statement, both by name.
///
/// A parameter is named as its column, without the colon that the statement writes before it.
class ORU_COMMON_DATABASE_EXPORT Cursor {
 public:
  Cursor() = default;
  /// A closed cursor of that database, which must outlive its use.
  explicit Cursor(Database& attachedDatabase) : database(&attachedDatabase) {}
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;
  virtual ~Cursor();

  /// Sets the database, which must outlive the cursor's use of it.
  void AttachToDatabase(Database& attachedDatabase) { database = &attachedDatabase; }

  /// The number of result columns; 0 for a statement that gives no rows.
  virtual int32_t GetColumnsCount() = 0;
  /// The name of a result column, empty for an index outside the columns.
  virtual std::string GetColumnName(int32_t index) const = 0;
  /// The position of a result column, from 0; -1 for an unknown name.
  virtual int32_t GetColumnIndex(const std::string& name) const = 0;
  /// Whether a statement is prepared.
  virtual bool IsOpened() const = 0;
  /// Whether the column of the current row is NULL; true also without a row or for an unknown name.
  virtual bool IsNull(const std::string& name) const = 0;

  /// Read a column of the current row. False, with `out` as it was, for an unknown name and while the cursor
  /// is on no row. A NULL column gives true with 0, false or the empty text.
  virtual bool Get(const std::string& name, int64_t& out) const = 0;
  virtual bool Get(const std::string& name, uint64_t& out) const = 0;
  virtual bool Get(const std::string& name, int32_t& out) const = 0;
  virtual bool Get(const std::string& name, uint32_t& out) const = 0;
  virtual bool Get(const std::string& name, double& out) const = 0;
  virtual bool Get(const std::string& name, bool& out) const = 0;
  virtual bool Get(const std::string& name, std::string& out) const = 0;
  /// Gives the number of bytes, -1 on failure. `*out` becomes a new array that the caller frees with array
  /// delete, null when there are no bytes.
  virtual int32_t Get(const std::string& name, uint8_t** out) const = 0;

  /// Read a column of the current row, or throw ArgumentException where `Get` gives false:
  virtual int64_t GetInt64(const std::string& name) const;
  virtual uint64_t GetUInt64(const std::string& name) const;
  virtual int32_t GetInt32(const std::string& name) const;
  virtual uint32_t GetUInt32(const std::string& name) const;
  virtual double GetDouble(const std::string& name) const;
  virtual bool GetBoolean(const std::string& name) const;
  virtual std::string GetString(const std::string& name) const;
  virtual int32_t GetBytes(const std::string& name, uint8_t** out) const;

  /// Bind a parameter. False, with a log entry, for an unknown name, for a null pointer to text or to bytes
  /// of a length other than 0, or when the database refuses the value.
  virtual bool Bind(const std::string& name, int64_t value) = 0;
  virtual bool Bind(const std::string& name, uint64_t value) = 0;
  virtual bool Bind(const std::string& name, int32_t value) = 0;
  virtual bool Bind(const std::string& name, uint32_t value) = 0;
  virtual bool Bind(const std::string& name, double value) = 0;
  virtual bool Bind(const std::string& name, bool value) = 0;
  virtual bool Bind(const std::string& name, const std::string& value) = 0;
  virtual bool Bind(const std::string& name, const uint8_t* bytes, int32_t length) = 0;
  /// Binds NULL.
  virtual bool Bind(const std::string& name) = 0;

  /// The number of rows that the statement finds, without its order and limit; -1 for a cursor that was
  /// opened without a count statement.
  virtual int32_t GetTotalItemsCount() const = 0;
  /// Releases the statement. Does nothing on a closed cursor.
  virtual void Close() = 0;
  /// Rewinds the statement and clears its bindings, so that it can be bound and stepped again.
  virtual void Reset() = 0;

  /// Overloads for arguments that C++ would convert badly or not at all: a C string is text (not bool), a
  /// long long has 64 bits:
  bool Bind(const std::string& name, const char* value) {
    return value ? Bind(name, std::string(value)) : Bind(name, nullptr, -1);
  }
  bool Bind(const std::string& name, long long value) { return Bind(name, static_cast<int64_t>(value)); }
  bool Bind(const std::string& name, unsigned long long value) {
    return Bind(name, static_cast<uint64_t>(value));
  }

 protected:
  /// Null for a cursor without one.
  Database* database = nullptr;
};

}  // namespace Oru::Common::Databases
