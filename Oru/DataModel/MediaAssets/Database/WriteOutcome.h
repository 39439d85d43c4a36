#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/DataModel/MediaAssets/Database/StorableCheck.h"

namespace Oru::DataModel::MediaAssets::Database {

/// Turns what a table gave for a write into an exception. To be called before anything else runs on the
/// connection. Internal to the library.
/// @param asset  the asset that was to be stored
/// @throws NotStoredException, with SQLite's text, when it refused a value; InvalidOperationException when
/// the
///         file can't be written
inline void RequireDone(const Common::Databases::Sqlite::DatabaseSqlite& database,
                        const BusinessEntityModel::BaseTypes::Identifier& asset, bool isDone) {
  if (isDone) return;
  if (database.HasRefusedValue()) Refuse(asset, database.LastFailure());
  throw Common::Databases::InvalidOperationException();
}

}  // namespace Oru::DataModel::MediaAssets::Database
