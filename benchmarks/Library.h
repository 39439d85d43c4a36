#pragma once

#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "Side.h"

#include <memory>

namespace Oru::Benchmarks {

/// The jobs as a program does them with the library.
/// @param database  must outlive the object
std::unique_ptr<Side> MakeLibrarySide(DataModel::MediaAssets::Database::DataModelDatabase& database);

}  // namespace Oru::Benchmarks
