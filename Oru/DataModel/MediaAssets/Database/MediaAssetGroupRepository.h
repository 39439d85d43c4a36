#pragma once

#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"

#include <optional>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

class DataModelDatabase;

/// Groups of assets, plain ones and multi-angle ones, stored and read whole: with their items and, for a
/// multi-angle group, with the names of the angles and the operator's identity.
///
/// Objects are known by their identifiers; their object ids are set when an operation succeeds, and are as
/// before when it doesn't. Each operation that writes is one transaction, or a savepoint in the caller's.
/// Each that reads sees one state of the file.
///
/// All operations throw InvalidOperationException, with a log entry, when the file can't be read or written;
/// those that write do so within a `ReadGuard` too.
///
/// Threads: a repository belongs to one thread at a time; several on one database may be used from different
/// threads at once. An operation keeps the connection to itself from begin to end.
class ORU_DATAMODEL_DATABASE_EXPORT MediaAssetGroupRepository {
 public:
  /// @param database  must outlive the repository, which may be made before it is opened
  explicit MediaAssetGroupRepository(DataModelDatabase& database);
  MediaAssetGroupRepository(const MediaAssetGroupRepository&) = delete;
  MediaAssetGroupRepository& operator=(const MediaAssetGroupRepository&) = delete;
  ~MediaAssetGroupRepository();

  /// The group with that identifier, with its items in order. They know the identifier of their asset; those
  /// with an angle's name are `AnglesMediaAssetGroupItem`. A multi-angle group comes as a plain one.
  std::optional<MediaAssetGroup> Find(const MediaAssetGroupId& id);
  /// The multi-angle group with that identifier; a plain group isn't found. All items are
  /// `AnglesMediaAssetGroupItem`.
  std::optional<AnglesMediaAssetGroup> FindAngles(const MediaAssetGroupId& id);
  /// All groups, as `Find` gives them, by name; those of one name in the order in which they were first
  /// stored.
  std::vector<MediaAssetGroup> All();

  /// Stores a group as it is, whatever the file held of it. A group without items stays until it is removed.
  /// What is stored follows from the class of the object: an `AnglesMediaAssetGroup` makes a plain group a
  /// multi-angle one, and its identity goes when the object has none.
  /// @throws NotStoredException for an empty identifier, an item whose asset isn't stored, a plain group
  ///         under the identifier of a multi-angle one, metadata other than the operator's identity of a
  ///         multi-angle group, and a place of that off its range
  void Put(MediaAssetGroup& group);
  void Put(AnglesMediaAssetGroup& group);

  /// Removes a group of either kind. Its assets stay.
  /// @return false when there is none
  bool Remove(const MediaAssetGroupId& id);

 private:
  template <class Group, class Table, class Prepare>
  void PutInto(Table& table, Group& group, Prepare prepare);
  void ReadItems(MediaAssetGroup& group, bool areAngles);
  void RequireItemsStored(const MediaAssetGroup& group);

  DataModelDatabase& mDatabase;
  Common::Databases::Sqlite::PreparedStatement mItemsOfGroup;
};

}  // namespace Oru::DataModel::MediaAssets::Database
