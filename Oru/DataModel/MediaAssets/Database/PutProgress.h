#pragma once

#include <cstdint>
#include <functional>

namespace Oru::DataModel::MediaAssets::Database {

/// Reports how far a batch has come: how many assets were handled, those left out included, and of how many,
/// -1 when that is unknown. Gives false to end the batch. It runs under the connection's lock, so it must not
/// wait for another thread that uses the same database.
using PutProgress = std::function<bool(int64_t done, int64_t total)>;

}  // namespace Oru::DataModel::MediaAssets::Database
