#pragma once

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What became of an asset that was to be removed.
enum class RemoveOutcome : int32_t {
  Removed,
  /// It is protected, and is still stored.
  Protected,
  /// No asset of that identifier was stored.
  Absent,
};

}  // namespace Oru::DataModel::MediaAssets::Database
