#pragma once

#include "Oru/Common/Databases/Export.h"

#include <exception>

namespace Oru::Common::Databases {

/// Thrown when a cursor was used that has no statement: never opened, closed, or its statement could not be
/// prepared.
///
/// Each library that throws it has its code, so that a program needn't link this one for it.
class ORU_COMMON_DATABASE_EXPORT ObjectClosedException : public std::exception {
 public:
  ObjectClosedException() = default;
  ObjectClosedException(const ObjectClosedException&) = default;
  ObjectClosedException& operator=(const ObjectClosedException&) = default;
  ORU_COMMON_DATABASE_EXPORT ~ObjectClosedException() override = default;

  /// A fixed text that callers may compare with.
  ORU_COMMON_DATABASE_EXPORT const char* what() const noexcept override { return "Object closed excpetion"; }
};

}  // namespace Oru::Common::Databases
