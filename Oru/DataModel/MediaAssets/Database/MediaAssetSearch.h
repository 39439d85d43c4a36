#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/DateTime.h"
#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/StatementText.h"
#include "Oru/DataModel/MediaAssets/Database/Direction.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetOrder.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"
#include "Oru/TimePoints/Core/Duration.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// What to look for among media assets, in which order, and which page of it. `MediaAssetRepository` runs it.
///
/// Each call adds a condition, and all of them must hold. Without a condition all assets are found. Each call
/// gives the search itself, so that calls chain:
///
///     MediaAssetSearch search;
///     search.Typed("inter goal").OnServer(ZuServerId(110)).OrderBy(MediaAssetOrder::CreationDate).Limit(50);
class ORU_DATAMODEL_DATABASE_EXPORT MediaAssetSearch {
 public:
  /// What a person typed: each word may be the start of a word in the name or the description, as in "inter
  /// goal". The empty text is no condition; a text without a word in it finds nothing.
  MediaAssetSearch& Typed(const std::string& text);
  /// The letters A to Z match in either case.
  MediaAssetSearch& NameContains(const std::string& text);
  /// One of the keywords, as a whole. The letters A to Z match in either case, except for a keyword with a
  /// NUL byte.
  MediaAssetSearch& Keyword(const std::string& keyword);
  /// The empty server finds assets on none, those without an operator's profile too.
  MediaAssetSearch& OnServer(const ZuServerId& server);
  /// `DapId::Unset` finds assets where it isn't set, those without an operator's profile too:
  MediaAssetSearch& OnPage(int page);
  MediaAssetSearch& OnBank(int bank);
  MediaAssetSearch& OnRow(int row);
  /// 0 finds assets without a camera, those without an operator's profile too.
  MediaAssetSearch& OnCamera(char camera);
  /// Whether the operator or the interface has protected the asset.
  MediaAssetSearch& Protected(bool isProtected = true);
  /// Creation and modification dates; `first` is part of the span, `end` isn't:
  MediaAssetSearch& CreatedFrom(BusinessEntityModel::BaseTypes::DateTime first);
  MediaAssetSearch& CreatedBefore(BusinessEntityModel::BaseTypes::DateTime end);
  MediaAssetSearch& ModifiedFrom(BusinessEntityModel::BaseTypes::DateTime first);
  MediaAssetSearch& ModifiedBefore(BusinessEntityModel::BaseTypes::DateTime end);
  /// The out mark minus the in mark; an asset without both isn't found:
  MediaAssetSearch& LastsAtLeast(const TimePoints::Duration& shortest);
  MediaAssetSearch& LastsAtMost(const TimePoints::Duration& longest);
  /// Items of the group with that identifier.
  MediaAssetSearch& InGroup(const BusinessEntityModel::BaseTypes::Identifier& group);
  /// Assets that refer to the resource with that identifier.
  MediaAssetSearch& UsesResource(const BusinessEntityModel::BaseTypes::Identifier& resource);
  /// Any condition of a query of `MediaAssetTable`. The order and the limit of the query don't count.
  MediaAssetSearch& Where(const Common::Databases::Query& condition);

  /// Assets that are equal in the order follow by key, in the same direction. Without this call: by relevance
  /// if something was typed, else by key.
  MediaAssetSearch& OrderBy(MediaAssetOrder assetOrder, Direction orderDirection = Direction::Ascending);
  /// At most `count` assets, after passing over `offset` of them. A negative count means no limit, a negative
  /// offset 0.
  MediaAssetSearch& Limit(int64_t limit, int64_t firstPlace = 0);
  /// Only what follows that asset in the order, at a cost that doesn't grow with its place. `OrderBy` may be
  /// called before or after. The search keeps what it needs of the asset: the values of the object where it
  /// holds them, else those of the stored asset of its key when the search runs. Without either, the run
  /// throws ArgumentException.
  MediaAssetSearch& After(const MediaAsset& last);

 private:
  friend class FederatedSearch;
  friend class MediaAssetSearchText;

  using Value = Common::Databases::Sqlite::StatementValue;

  // What a condition is about: the key alone, a column of the asset, a column of an operator's profile that
  // must be there, a column of a profile for which it must not hold, or which may be missing.
  enum class Subject { Key, Asset, Profile, MissingProfile };

  struct Condition {
    Subject subject;
    // A condition on the key follows the key's name.
    std::string text;
    std::vector<Value> values;
  };

  // What an order needs to know of the asset that the page follows.
  struct Position {
    int64_t key = -1;
    std::string id;
    std::string name;
    BusinessEntityModel::BaseTypes::DateTime creationDate = 0;
    BusinessEntityModel::BaseTypes::DateTime modificationDate = 0;
    Value duration;
    // None when the object doesn't hold the operator's part.
    std::optional<int64_t> place;
    // What the search orders by, in place of all these; none when the object is to be asked.
    std::optional<Value> value;
  };

  MediaAssetSearch& Add(Subject subject, const std::string& text, std::vector<Value> values = {});
  MediaAssetSearch& OnPlace(const std::string& column, int place);

  // The full-text expressions of what was typed, one a call.
  std::vector<std::string> matches;
  std::vector<Common::Databases::Sqlite::QuerySqlite> queries;
  std::vector<Condition> conditions;
  std::optional<MediaAssetOrder> order;
  Direction direction = Direction::Ascending;
  int64_t count = -1;
  int64_t offset = 0;
  std::optional<Position> after;
};

}  // namespace Oru::DataModel::MediaAssets::Database
