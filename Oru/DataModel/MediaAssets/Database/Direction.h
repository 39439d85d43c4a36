#pragma once

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// Which end of an order comes first.
enum class Direction : int32_t { Ascending, Descending };

}  // namespace Oru::DataModel::MediaAssets::Database
