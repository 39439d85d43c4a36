#pragma once

#include "Oru/Common/Databases/Export.h"

#include <exception>

namespace Oru::Common::Databases {

/// Thrown when a cursor was used that has no statement: never opened, closed, or its statement could not be
/// prepared.
class ORU_COMMON_DATABASE_EXPORT ObjectClosedException : public std::exception {
 public:
  ObjectClosedException() = default;
  ObjectClosedException(const ObjectClosedException&) = default;
  ObjectClosedException& operator=(const ObjectClosedException&) = default;
  ~ObjectClosedException() override;

  /// A fixed text that callers may compare with.
  const char* what() const noexcept override;
};

}  // namespace Oru::Common::Databases
