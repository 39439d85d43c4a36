#pragma once

#include "support/DatabasePrelude.h"

namespace Oru::Reliability {

using namespace BusinessEntityModel::BaseTypes;
using namespace Common::Databases;
using namespace Common::Databases::Sqlite;
using namespace DataModel::MediaAssets;
using namespace DataModel::MediaAssets::Database;
namespace Edits = BusinessEntityModel::Edits;
using Clock = std::chrono::steady_clock;

/// A clip with something in every table below an asset. The version is in all of its parts, so that a clip of which
/// only some were stored differs from a whole one. Its name is "v" and the version.
MediaAsset MakeClip(const std::string& id, int version);

/// A multi-angle group of stored clips, with an operator identity.
AnglesMediaAssetGroup MakeGroup(const std::string& id, int version, const std::vector<std::string>& clips);

/// The version of a clip in the file, 0 without that clip, -1 when what is there isn't a whole version.
int StoredVersion(DataModelDatabase& database, const std::string& id);

/// What is wrong with a file, as SQLite's own checks report it: the pages, the foreign keys and the full-text
/// index against the assets; also a text that says so when it can't be opened. Empty when all is well.
std::string Faults(const std::string& path);

/// Every row of every table of a file and the definition of each object in it, as text.
std::string Dump(const std::string& path);

/// Whether files of a rollback journal, a write-ahead log or shared memory exist beside the file.
bool HasSideFiles(const std::string& path);

/// Removes a file and those beside it, and puts a copy of another file in its place.
void Restore(const std::string& path, const std::string& from);

/// Whether the long form of the tests was asked for, by the variable ORU_RELIABILITY=long.
bool IsLong();

}  // namespace Oru::Reliability
