#pragma once

#include <cstdint>

namespace Oru::DataModel::MediaAssets {

/// Parts of a media asset, combined with `|`. An asset's own columns are always there.
enum class MediaAssetParts : uint32_t {
  /// The asset's own columns, its in and out marks among them.
  Row = 0,
  /// The stretches of time for which there is material.
  TimeBounds = 1,
  /// The generic metadata profiles.
  Metadata = 2,
  /// The operator's profile, with its keywords.
  Operator = 4,
  /// The annotations, with their metadata.
  Annotations = 8,
  /// The resources, with their streams, essences, bounds and metadata.
  Resources = 16,
  /// The tracks, whose channels know the identifier of their stream.
  Tracks = 32,
  All = 63,
};

/// The parts of both.
constexpr MediaAssetParts operator|(MediaAssetParts left, MediaAssetParts right) noexcept {
  return static_cast<MediaAssetParts>(static_cast<uint32_t>(left) | static_cast<uint32_t>(right));
}

/// The parts that both have.
constexpr MediaAssetParts operator&(MediaAssetParts left, MediaAssetParts right) noexcept {
  return static_cast<MediaAssetParts>(static_cast<uint32_t>(left) & static_cast<uint32_t>(right));
}

}  // namespace Oru::DataModel::MediaAssets
