#pragma once

#include "Oru/Common/Databases/Cursor.h"

namespace Oru::Common::Databases {

class RawRead;

/// A cursor that steps through rows as they are stored.
class ORU_COMMON_DATABASE_EXPORT RawCursor : public Cursor {
 public:
  using Cursor::Cursor;
  ~RawCursor() override;

  /// Steps to the next row and fills `row` with its columns.
  /// @return false after the last row, and at every further call
  /// @throws ObjectClosedException on a closed cursor, InvalidOperationException when the step fails
  virtual bool Next(RawRead& row) = 0;
  /// The same without reading anything.
  virtual bool Next() = 0;
};

}  // namespace Oru::Common::Databases
