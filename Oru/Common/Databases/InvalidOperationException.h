#pragma once

#include "Oru/Common/Databases/Export.h"

#include <exception>

namespace Oru::Common::Databases {

/// Thrown when the database refused a step, or a call came in a state that doesn't allow it; the log holds
/// SQLite's text.
class ORU_COMMON_DATABASE_EXPORT InvalidOperationException : public std::exception {
 public:
  InvalidOperationException() = default;
  InvalidOperationException(const InvalidOperationException&) = default;
  InvalidOperationException& operator=(const InvalidOperationException&) = default;
  ~InvalidOperationException() override;

  /// A fixed text that callers may compare with.
  const char* what() const noexcept override;
};

}  // namespace Oru::Common::Databases
