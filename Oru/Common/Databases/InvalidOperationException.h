#pragma once

#include "Oru/Common/Databases/Export.h"

#include <exception>

namespace Oru::Common::Databases {

/// Thrown when the database refuses a step, or when a call isn't allowed in the present state. The log holds
/// SQLite's text.
///
/// Each library that throws it contains its code, so that a program needn't link this one for it.
class ORU_COMMON_DATABASE_EXPORT InvalidOperationException : public std::exception {
 public:
  InvalidOperationException() = default;
  InvalidOperationException(const InvalidOperationException&) = default;
  InvalidOperationException& operator=(const InvalidOperationException&) = default;
  ORU_COMMON_DATABASE_EXPORT ~InvalidOperationException() override = default;

  /// A fixed text that callers may compare with.
  ORU_COMMON_DATABASE_EXPORT const char* what() const noexcept override {
    return "Invalid Operation Exception";
  }
};

}  // namespace Oru::Common::Databases
