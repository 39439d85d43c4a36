#pragma once

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What a copy of an asset does about the resources and tracks of the original.
enum class CopyResources : int32_t {
  /// It refers to the same ones.
  Share,
  /// It gets copies of its own, under identifiers that start with its own.
  Own,
};

}  // namespace Oru::DataModel::MediaAssets::Database
