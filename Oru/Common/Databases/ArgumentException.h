#pragma once

#include "Oru/Common/Databases/Export.h"

#include <exception>

namespace Oru::Common::Databases {

/// Thrown for an argument that a call can't work with: an unknown column, a missing database, a bad option.
///
/// Each library that throws it contains its code, so that a program needn't link this one for it.
class ORU_COMMON_DATABASE_EXPORT ArgumentException : public std::exception {
 public:
  ArgumentException() = default;
  ArgumentException(const ArgumentException&) = default;
  ArgumentException& operator=(const ArgumentException&) = default;
  ORU_COMMON_DATABASE_EXPORT ~ArgumentException() override = default;

  /// A fixed text that callers may compare with.
  ORU_COMMON_DATABASE_EXPORT const char* what() const noexcept override {
    return "Wrong arguement exception";
  }
};

}  // namespace Oru::Common::Databases
