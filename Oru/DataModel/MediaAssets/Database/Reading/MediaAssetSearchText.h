#pragma once

#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

class MediaAssetTable;

/// Writes the statements that run a search. Internal to the library.
class MediaAssetSearchText {
 public:
  using Value = MediaAssetSearch::Value;

  /// A statement with the values of its parameters, in their order.
  struct Statement : Common::Databases::Sqlite::StatementText {
    // Whether the text has a condition that others follow by AND.
    bool hasCondition = false;
  };

  /// @param search  must outlive this
  /// @param assets  the table that the conditions of queries are for
  MediaAssetSearchText(const MediaAssetSearch& search, MediaAssetTable& assets);

  /// What a search orders by.
  static MediaAssetOrder OrderOf(const MediaAssetSearch& search);
  MediaAssetOrder Order() const { return order; }
  /// Whether the page follows an asset.
  bool IsAfterAsset() const { return search.after.has_value(); }
  /// The key of the asset that the page follows; -1 for an object that has none.
  int64_t KeyBefore() const { return search.after->key; }
  /// What that asset's object says of the order; nothing where it doesn't.
  std::optional<Value> ValueBefore() const;
  /// Reads what the stored asset of that key says of the order. For orders that an object needn't know.
  Statement StoredValueBefore() const;

  /// Selects the keys of the page, in order.
  /// @param valueBefore  what the asset that the page follows has in the order; not looked at without such an
  /// asset
  /// @param withOrderValue  whether each row also has what the asset has in the order
  Statement Keys(const Value& valueBefore, bool withOrderValue) const;
  /// Counts what the search finds, without regard to its page.
  Statement Count() const;

  /// How many assets the page may have, -1 for no limit, and how many it passes over.
  int64_t Limit() const { return search.count; }
  int64_t Offset() const { return search.offset; }

 private:
  // The tables that a statement reads and the name that the key has there.
  struct Sources {
    std::string from;
    std::string key;
  };

  bool HasSubject(MediaAssetSearch::Subject subject) const;
  bool OrdersByColumnOfAsset() const;
  Sources SourcesFor(bool isOrdered) const;
  std::string OrderColumn(const Sources& sources) const;
  std::string Match() const;
  void AppendConditions(Statement& statement, const Sources& sources) const;
  void AppendPositionOfPage(Statement& statement, const std::string& key, const std::string& column,
                            const Value& valueBefore) const;

  const MediaAssetSearch& search;
  MediaAssetTable& table;
  MediaAssetOrder order;
};

}  // namespace Oru::DataModel::MediaAssets::Database
