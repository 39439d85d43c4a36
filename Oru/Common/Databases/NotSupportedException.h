#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>
#include <exception>
#include <string>

namespace Oru::Common::Databases {

/// Thrown when a file can't be opened or can't serve as a database. `what()` carries the database's own
/// description of the failure and the place in the source that met it.
class ORU_COMMON_DATABASE_EXPORT NotSupportedException : public std::exception {
 public:
  /// @param description  why, usually SQLite's text
  /// @param file, line   the place of the throw, as of `__FILE__` and `__LINE__`
  NotSupportedException(const char* description, const char* file, int32_t line);
  NotSupportedException(const NotSupportedException&) = default;
  NotSupportedException& operator=(const NotSupportedException&) = default;
  ~NotSupportedException() override;

  const char* what() const noexcept override;

 private:
  std::string msg;
  const char* name = "Not supported exception";
};

}  // namespace Oru::Common::Databases
