#pragma once

#include "Oru/Common/Databases/Export.h"

#include <exception>

namespace Oru::Common::Databases {

/// Thrown when a cursor is used that has no statement: it was never opened, it was closed, or SQLite refused
/// its statement.
///
/// Each library that throws it contains its code, so that a program needn't link this one for it.
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
