#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>
#include <exception>
#include <string>

namespace Oru::Common::Databases {

/// Thrown when a file can't be opened or can't serve as a database. `what()` carries the database's own
/// description of the failure and the place in the source that met it.
///
/// Each library that throws it contains its code, so that a program needn't link this one for it.
class ORU_COMMON_DATABASE_EXPORT NotSupportedException : public std::exception {
 public:
  /// @param description  why, usually SQLite's text
  /// @param file, line   the place of the throw: `__FILE__` and `__LINE__`
  NotSupportedException(const char* description, const char* file, int32_t line) {
    msg.append(name).append(" : ").append(description);
    msg.append(" (in file ").append(file).append("at line ").append(std::to_string(line)).append(")");
  }
  NotSupportedException(const NotSupportedException&) = default;
  NotSupportedException& operator=(const NotSupportedException&) = default;
  ORU_COMMON_DATABASE_EXPORT ~NotSupportedException() override = default;

  ORU_COMMON_DATABASE_EXPORT const char* what() const noexcept override { return msg.c_str(); }

 protected:
  /// What `what()` gives.
  std::string msg;
  /// How each message begins.
  const char* name = "Not supported exception";
};

}  // namespace Oru::Common::Databases
