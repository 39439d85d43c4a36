#pragma once

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What a removal does about assets that the operator or the interface has protected.
enum class Protection : int32_t {
  /// It leaves them alone.
  Respect,
  /// It removes them too.
  Ignore,
};

}  // namespace Oru::DataModel::MediaAssets::Database
