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

  /// A text with the values of its parameters, in their order.
  using Statement = Common::Databases::Sqlite::StatementText;

  /// A statement of `Keys`.
  struct KeySelect {
    Statement statement;
    /// Whether it looks for assets without an operator's profile alone, at each of the file.
    bool looksForMissingProfiles;
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

  /// Selects all keys, in order, that follow the asset before the page: by one statement, or by several whose
  /// keys follow on each other.
  /// @param valueBefore     what the asset that the page follows has in the order; not looked at without such an
  ///                        asset
  /// @param withOrderValue  whether each row also has what the asset has in the order
  std::vector<KeySelect> Keys(const Value& valueBefore, bool withOrderValue) const;
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

  // What is read: those that may have an operator's profile, that have one, that have none.
  enum class Profiles { Any, With, Without };
  enum class Purpose { Page, Total };
  // What is selected of the order: all of it; the keys after that of the asset before; what is equal to that asset
  // and follows by key; what follows it by value; the last two together.
  enum class Part { Whole, AfterKey, Equal, AfterValue, After };

  // The conditions of one select.
  class Conditions {
   public:
    explicit Conditions(Statement& writtenStatement) : statement(writtenStatement) {}
    void Add(const std::string& condition, const std::vector<Value>& values) {
      statement.text.append(isFirst ? " WHERE " : " AND ").append(condition);
      statement.values.insert(statement.values.end(), values.begin(), values.end());
      isFirst = false;
    }

   private:
    Statement& statement;
    bool isFirst = true;
  };

  bool HasSubject(MediaAssetSearch::Subject subject) const;
  bool OrdersByColumnOfAsset() const;
  bool IsAscending() const;
  Sources SourcesFor(Purpose purpose, Profiles profiles) const;
  std::string OrderColumn(const Sources& sources, Profiles profiles) const;
  std::string Match() const;
  void AppendConditions(Conditions& conditions, const Sources& sources, Profiles profiles) const;
  void AppendPart(Conditions& conditions, Part part, const std::string& key, const std::string& column,
                  const Value& valueBefore) const;
  // Selects keys in the order of the search.
  Statement Select(Profiles profiles, Part part, const Value& valueBefore, bool withOrderValue) const;
  std::vector<Part> PartsAfterAsset() const;

  const MediaAssetSearch& search;
  MediaAssetTable& table;
  MediaAssetOrder order;
};

}  // namespace Oru::DataModel::MediaAssets::Database
