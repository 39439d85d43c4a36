#pragma once

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/ViewSqlite.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// Reads the rows that belong to many owners by one statement. Internal to the library.
namespace Oru::DataModel::MediaAssets::Database {

/// The condition that a column holds one of the keys of a list, the statement's one parameter.
inline std::string IsOneOfKeys(const std::string& column) {
  return column + " IN (SELECT value FROM json_each(?))";
}

/// A list of keys as the parameter of `IsOneOfKeys`.
inline std::string KeyList(const std::vector<int64_t>& keys) {
  std::string list;
  list.reserve(keys.size() * 8 + 2);
  for (const int64_t key : keys)
    list.append(list.empty() ? "[" : ",").append(std::to_string(key));
  return list.empty() ? "[]" : list += ']';
}

/// Objects found by their keys. It refers to the objects, which must stay where they are.
template <class T>
class ObjectsByKey {
 public:
  void Add(int64_t key, T& object) { objects.emplace_back(key, &object); }

  /// Makes the objects ready to be found. Of several with the same key, the one added first is.
  void Sort() {
    const auto isLess = [](const Entry& left, const Entry& right) { return left.first < right.first; };
    std::stable_sort(objects.begin(), objects.end(), isLess);
  }

  bool IsEmpty() const { return objects.empty(); }

  /// The keys as the parameter of `IsOneOfKeys`.
  std::string Keys() const {
    std::vector<int64_t> keys;
    keys.reserve(objects.size());
    for (const Entry& entry : objects)
      keys.push_back(entry.first);
    return KeyList(keys);
  }

  /// The object of that key, which must have been added.
  T& At(int64_t key) {
    // The rows of one owner follow on each other.
    if (last >= objects.size() || objects[last].first != key) {
      const auto isLess = [](const Entry& entry, int64_t sought) { return entry.first < sought; };
      last = static_cast<std::size_t>(std::lower_bound(objects.begin(), objects.end(), key, isLess) -
                                      objects.begin());
    }
    return *objects.at(last).second;
  }

 private:
  using Entry = std::pair<int64_t, T*>;

  std::vector<Entry> objects;
  std::size_t last = 0;
};

/// The rows of a view that belong to owners, by one statement for all of them.
/// @tparam T  what the view reads
template <class T>
class RowsOfOwners {
 public:
  using View = Common::Databases::Sqlite::ViewSqlite<T>;

  /// @param readView     must outlive this
  /// @param text         a select of the view whose one parameter is a list of keys of owners
  /// @param ownerColumn  the name of the column that holds the key of a row's owner
  RowsOfOwners(View& readView, std::string text, std::string ownerColumn)
      : view(readView), select(std::move(text)), owner(std::move(ownerColumn)) {}
  /// Of a view whose rows name their owner in one of their columns.
  RowsOfOwners(View& readView, const std::string& ownerColumn)
      : RowsOfOwners(readView, readView.GetSelectStatement() + " WHERE " + IsOneOfKeys(ownerColumn),
                     ownerColumn) {}

  /// Reads each row into an object.
  /// @param keys  a list of keys of owners
  /// @param make  gives an owning pointer to a new object
  /// @param use   called after each row with the owner's key and that pointer
  /// @throws InvalidOperationException, with a log entry, when SQLite fails
  template <class Make, class Use>
  void ForEach(const std::string& keys, Make make, Use use) {
    Run run(select, Database(), keys);
    while (run.Step()) {
      auto object = make();
      view.ReadFromCursor(run.Row(), *object, true);
      use(run.Row().GetInt64(owner), std::move(object));
    }
  }

  /// The same in the order of the objects' keys, whatever the owner.
  template <class Make, class Use>
  void ForEachInOrder(const std::string& keys, Make make, Use use) {
    std::vector<std::pair<int64_t, decltype(make())>> rows;
    ForEach(keys, make,
            [&](int64_t ownerKey, auto object) { rows.emplace_back(ownerKey, std::move(object)); });
    std::sort(rows.begin(), rows.end(), [](const auto& left, const auto& right) {
      return left.second->ObjectId() < right.second->ObjectId();
    });
    for (auto& [ownerKey, object] : rows)
      use(ownerKey, std::move(object));
  }

  /// The same with one object for all rows, for views whose rows leave nothing in it.
  /// @param use  called after each row with the owner's key and the object
  template <class Use>
  void ForEach(const std::string& keys, Use use) {
    Run run(select, Database(), keys);
    for (T object{}; run.Step(); use(run.Row().GetInt64(owner), object))
      view.ReadFromCursor(run.Row(), object, true);
  }

 private:
  using Run = Common::Databases::Sqlite::PreparedStatement::Run;

  Common::Databases::Sqlite::DatabaseSqlite& Database() const {
    return static_cast<Common::Databases::Sqlite::DatabaseSqlite&>(view.GetDatabase());
  }

  View& view;
  Common::Databases::Sqlite::PreparedStatement select;
  const std::string owner;
};

}  // namespace Oru::DataModel::MediaAssets::Database
