#pragma once

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Export.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases {

/// A snapshot of one row: values by column name, independent of the cursor that filled it.
class ORU_COMMON_DATABASE_EXPORT RawRead {
 public:
  RawRead() = default;
  RawRead(const RawRead&) = default;
  RawRead& operator=(const RawRead&) = default;
  virtual ~RawRead();

  /// Sets a column, which is added if the snapshot doesn't hold it yet.
  virtual void Set(const std::string& name, int64_t value) = 0;
  virtual void Set(const std::string& name, uint64_t value) = 0;
  virtual void Set(const std::string& name, int32_t value) = 0;
  virtual void Set(const std::string& name, uint32_t value) = 0;
  virtual void Set(const std::string& name, double value) = 0;
  virtual void Set(const std::string& name, bool value) = 0;
  virtual void Set(const std::string& name, const std::string& value) = 0;
  /// Copies the bytes.
  /// @throws ArgumentException for a negative length, and for a null pointer with another length than 0
  virtual void Set(const std::string& name, uint8_t* bytes, int32_t length) = 0;
  /// Sets a column to NULL, added as by `Set`.
  virtual void SetNull(const std::string& name) = 0;

  /// The reads throw ArgumentException for a name that the snapshot doesn't hold. NULL reads as 0, false or
  /// empty:
  virtual bool IsNull(const std::string& name) const = 0;
  virtual int64_t GetInt64(const std::string& name) const = 0;
  virtual uint64_t GetUInt64(const std::string& name) const = 0;
  virtual int32_t GetInt32(const std::string& name) const = 0;
  virtual uint32_t GetUInt32(const std::string& name) const = 0;
  virtual double GetDouble(const std::string& name) const = 0;
  virtual bool GetBoolean(const std::string& name) const = 0;
  virtual std::string GetString(const std::string& name) const = 0;
  virtual int32_t GetBytesArraySize(const std::string& name) const = 0;
  /// Copies at most `length` bytes to `bytes` and gives how many were copied.
  virtual int32_t GetBytesArray(const std::string& name, uint8_t* bytes, int32_t length) const = 0;
  /// Forgets all columns.
  virtual void Reset() = 0;

  /// Overloads for arguments that C++ would convert badly or not at all: a C string is text (not bool; a null
  /// pointer throws ArgumentException), a long long has 64 bits:
  void Set(const std::string& name, const char* value) {
    if (!value) throw ArgumentException();
    Set(name, std::string(value));
  }
  void Set(const std::string& name, long long value) { Set(name, static_cast<int64_t>(value)); }
  void Set(const std::string& name, unsigned long long value) { Set(name, static_cast<uint64_t>(value)); }
};

}  // namespace Oru::Common::Databases
