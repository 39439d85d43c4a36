#pragma once

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What the assets of a search are ordered by. Assets that are equal in it follow by key, in the same
/// direction.
enum class MediaAssetOrder : int32_t {
  /// The order in which the assets were first stored.
  Key,
  /// Identifiers and names, by their bytes:
  Identifier,
  Name,

  CreationDate,
  ModificationDate,
  /// The out mark minus the in mark. An asset without both comes first.
  Duration,
  /// Server, page, bank, row, camera. Assets without an operator's profile come first; what isn't set comes
  /// last.
  Place,
  /// How well the typed text matches, the best first when ascending; by key when no text was typed.
  Relevance,
};

}  // namespace Oru::DataModel::MediaAssets::Database
