#pragma once

#include <cstdint>

namespace Oru::Common::Databases::Sqlite {

/// What a caller knows of the row under which other rows are written.
enum class OwnerRow : uint8_t {
  /// It may have rows below it.
  Stored,
  /// The caller has just inserted it. Keys aren't given twice, so nothing is below it and nothing needs to be
  /// deleted or looked up there.
  New
};

/// The same by whether the caller has just inserted it.
constexpr OwnerRow OwnerRowThatIs(bool isNew) {
  return isNew ? OwnerRow::New : OwnerRow::Stored;
}

}  // namespace Oru::Common::Databases::Sqlite
