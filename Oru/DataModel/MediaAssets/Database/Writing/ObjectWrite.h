#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/DataModel/MediaAssets/Database/NotStoredException.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// What the write operations of assets, groups and edits have in common. Internal to the library.
namespace Oru::DataModel::MediaAssets::Database {

/// Throws a NotStoredException about an object, which its text names first.
/// @param reason  which part of it, and what is missing or wrong
[[noreturn]] inline void RefuseObject(const BusinessEntityModel::BaseTypes::Identifier& object,
                                      const std::string& reason) {
  throw NotStoredException(object, object.IsEmpty() ? reason : object.Value() + ": " + reason);
}

/// Turns what a table gave for a write into an exception. To be called before anything else runs on the
/// connection.
/// @throws NotStoredException when SQLite refused a value; InvalidOperationException when the file can't be
///         written
inline void RequireWritten(const Common::Databases::Sqlite::DatabaseSqlite& database,
                           const BusinessEntityModel::BaseTypes::Identifier& object, bool isWritten) {
  if (isWritten) return;
  if (database.HasRefusedValue()) RefuseObject(object, database.LastFailure());
  throw Common::Databases::InvalidOperationException();
}

/// The object ids that objects came with. They are put back at the end of a scope that has not kept the new
/// ones.
class FormerObjectIds {
 public:
  FormerObjectIds() = default;
  FormerObjectIds(const FormerObjectIds&) = delete;
  FormerObjectIds& operator=(const FormerObjectIds&) = delete;
  ~FormerObjectIds() {
    for (auto entry = remembered.rbegin(); entry != remembered.rend(); ++entry)
      entry->first->ObjectId(entry->second);
  }

  void Remember(BusinessEntityModel::BaseTypes::PersistentObject& object) {
    remembered.emplace_back(&object, object.ObjectId());
  }
  /// Takes over what another one remembers.
  void Take(FormerObjectIds& other) {
    remembered.insert(remembered.end(), other.remembered.begin(), other.remembered.end());
    other.remembered.clear();
  }
  /// Lets the objects keep the ids that they have now.
  void KeepNew() noexcept { remembered.clear(); }

 private:
  std::vector<std::pair<BusinessEntityModel::BaseTypes::PersistentObject*, int64_t>> remembered;
};

}  // namespace Oru::DataModel::MediaAssets::Database
