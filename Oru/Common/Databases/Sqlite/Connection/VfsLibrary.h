#pragma once

#include <string>

namespace Oru::Common::Databases::Sqlite::VfsLibrary {

/// Loads an extension of SQLite that registers a VFS; see `DatabaseSqlite::LoadVfs`. Internal to the access layer.
/// @return what went wrong, empty for nothing
std::string Load(const std::string& library);

}  // namespace Oru::Common::Databases::Sqlite::VfsLibrary
