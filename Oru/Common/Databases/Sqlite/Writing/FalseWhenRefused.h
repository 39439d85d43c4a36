#pragma once

#include "Oru/Common/Databases/InvalidOperationException.h"

namespace Oru::Common::Databases::Sqlite {

/// Runs a write that looks something up first: a look-up that SQLite refuses, for a lock or a failure of the disk,
/// is a failure of the write. Internal to the libraries.
/// @return what `write` gives; false, after a log entry, if SQLite refuses a step of a look-up
template <class Write>
bool FalseWhenRefused(Write write) {
  try {
    return write();
  } catch (const InvalidOperationException&) {
    return false;
  }
}

}  // namespace Oru::Common::Databases::Sqlite
