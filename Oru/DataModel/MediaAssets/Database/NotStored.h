#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"

#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// An object that was left out of a batch, and why.
struct NotStored {
  /// Identifier of the asset.
  BusinessEntityModel::BaseTypes::Identifier id;
  /// A text that a person can act on: which asset, which part of it, what is missing or wrong.
  std::string reason;
};

}  // namespace Oru::DataModel::MediaAssets::Database
