#pragma once

#include "Oru/Common/Databases/Export.h"

#include <exception>

namespace Oru::Common::Databases {

/// Thrown when a call got an argument that it can't work with: an unknown column, a missing database, a bad
/// option.
class ORU_COMMON_DATABASE_EXPORT ArgumentException : public std::exception {
 public:
  ArgumentException() = default;
  ArgumentException(const ArgumentException&) = default;
  ArgumentException& operator=(const ArgumentException&) = default;
  ~ArgumentException() override;

  /// A fixed text that callers may compare with.
  const char* what() const noexcept override;
};

}  // namespace Oru::Common::Databases
