#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetSearchText.h"

#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetSearchColumns.h"

#include <algorithm>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Sqlite::QuerySqlite;
using Common::Databases::Sqlite::StatementText;

namespace {

// Adds to a statement a condition, which follows the others by AND.
void AppendCondition(MediaAssetSearchText::Statement& statement, const std::string& condition) {
  statement.text.append(statement.hasCondition ? " AND " : " WHERE ").append(condition);
  statement.hasCondition = true;
}

template <class Values>
void AppendValues(MediaAssetSearchText::Statement& statement, const Values& values) {
  statement.values.insert(statement.values.end(), values.begin(), values.end());
}

}  // namespace

MediaAssetSearchText::MediaAssetSearchText(const MediaAssetSearch& searched, MediaAssetTable& assets)
    : search(searched), table(assets), order(OrderOf(searched)) {}

MediaAssetOrder MediaAssetSearchText::OrderOf(const MediaAssetSearch& search) {
  const bool isTyped = !search.matches.empty();
  const MediaAssetOrder order =
      search.order.value_or(isTyped ? MediaAssetOrder::Relevance : MediaAssetOrder::Key);
  return order == MediaAssetOrder::Relevance && !isTyped ? MediaAssetOrder::Key : order;
}

std::optional<MediaAssetSearchText::Value> MediaAssetSearchText::ValueBefore() const {
  const MediaAssetSearch::Position& before = *search.after;
  if (before.value) return before.value;
  switch (order) {
    case MediaAssetOrder::Key:
      return before.key;
    case MediaAssetOrder::Identifier:
      return before.id;
    case MediaAssetOrder::Name:
      return before.name;
    case MediaAssetOrder::CreationDate:
      return int64_t{before.creationDate};
    case MediaAssetOrder::ModificationDate:
      return int64_t{before.modificationDate};
    case MediaAssetOrder::Duration:
      return before.duration;
    case MediaAssetOrder::Place:
      return before.place ? std::optional<Value>(*before.place) : std::nullopt;
    case MediaAssetOrder::Relevance:
      break;
  }
  return std::nullopt;
}

MediaAssetSearchText::Statement MediaAssetSearchText::StoredValueBefore() const {
  Statement statement;
  if (order == MediaAssetOrder::Relevance) {
    statement.text = "SELECT rank FROM MediaAssetFts WHERE MediaAssetFts MATCH ? AND rowid = ?";
    statement.values.emplace_back(Match());
  } else {
    statement.text = "SELECT " + SearchColumns::PlaceOrder() +
                     " FROM MediaAsset LEFT JOIN DapOperatorMetadata ON refMediaAsset = key WHERE key = ?";
  }
  statement.values.emplace_back(KeyBefore());
  return statement;
}

bool MediaAssetSearchText::HasSubject(MediaAssetSearch::Subject subject) const {
  return std::any_of(
      search.conditions.begin(), search.conditions.end(),
      [&](const MediaAssetSearch::Condition& condition) { return condition.subject == subject; });
}

bool MediaAssetSearchText::OrdersByColumnOfAsset() const {
  return order != MediaAssetOrder::Key && order != MediaAssetOrder::Relevance &&
         order != MediaAssetOrder::Place;
}

// Reads no table that neither a condition nor the order asks for.
MediaAssetSearchText::Sources MediaAssetSearchText::SourcesFor(bool isOrdered) const {
  using Subject = MediaAssetSearch::Subject;
  const bool isMatched = !search.matches.empty();
  const bool needsProfile = HasSubject(Subject::Profile);
  const bool looksAtProfile =
      needsProfile || HasSubject(Subject::MissingProfile) || (isOrdered && order == MediaAssetOrder::Place);
  const bool looksAtAsset =
      !search.queries.empty() || HasSubject(Subject::Asset) || (isOrdered && OrdersByColumnOfAsset());
  Sources sources;
  const auto join = [&](const char* kind, const std::string& name, const std::string& key) {
    if (sources.from.empty()) {
      sources = {name, key};
    } else {
      sources.from.append(kind).append(name).append(" ON ").append(key).append(" = ").append(sources.key);
    }
  };
  // The full-text index is searched and never looked up row by row: CROSS keeps it first.
  if (isMatched) join("", "MediaAssetFts", "MediaAssetFts.rowid");
  if (looksAtAsset || (!isMatched && !needsProfile)) join(" CROSS JOIN ", "MediaAsset", "MediaAsset.key");
  if (looksAtProfile)
    join(needsProfile ? " JOIN " : " LEFT JOIN ", "DapOperatorMetadata", "DapOperatorMetadata.refMediaAsset");
  return sources;
}

std::string MediaAssetSearchText::Match() const {
  std::string expression;
  for (const std::string& match : search.matches)
    expression.append(expression.empty() ? "(" : " AND (").append(match).append(")");
  return expression;
}

void MediaAssetSearchText::AppendConditions(Statement& statement, const Sources& sources) const {
  if (!search.matches.empty()) {
    AppendCondition(statement, "MediaAssetFts MATCH ?");
    statement.values.emplace_back(Match());
  }
  for (const MediaAssetSearch::Condition& condition : search.conditions) {
    const bool isOnKey = condition.subject == MediaAssetSearch::Subject::Key;
    AppendCondition(statement, (isOnKey ? sources.key : std::string()) + condition.text);
    AppendValues(statement, condition.values);
  }
  for (const QuerySqlite& query : search.queries) {
    StatementText condition;
    query.AppendFilter(condition, QuerySqlite::Values::Bound);
    // The table reads through the full-text index, which is joined only for a condition that names it.
    const bool namesIndex = condition.text.find("Fts") != std::string::npos;
    if (!namesIndex) {
      AppendCondition(statement, "(" + condition.text + ")");
    } else {
      QuerySqlite selecting;
      selecting.And(query);
      condition = table.StatementGenerator().SelectToRun(selecting);
      AppendCondition(statement, sources.key + " IN (SELECT key FROM (" + condition.text + "))");
    }
    AppendValues(statement, condition.values);
  }
}

std::string MediaAssetSearchText::OrderColumn(const Sources& sources) const {
  switch (order) {
    case MediaAssetOrder::Key:
      break;
    case MediaAssetOrder::Identifier:
      return "MediaAsset.id";
    case MediaAssetOrder::Name:
      return "MediaAsset.name";
    case MediaAssetOrder::CreationDate:
      return "MediaAsset.creationDate";
    case MediaAssetOrder::ModificationDate:
      return "MediaAsset.modificationDate";
    case MediaAssetOrder::Duration:
      return SearchColumns::DurationOrder();
    case MediaAssetOrder::Place:
      return SearchColumns::PlaceOrder();
    case MediaAssetOrder::Relevance:
      return "MediaAssetFts.rank";
  }
  return sources.key;
}

void MediaAssetSearchText::AppendPositionOfPage(Statement& statement, const std::string& key,
                                                const std::string& column, const Value& valueBefore) const {
  const char* comparison = search.direction == Direction::Ascending ? " > " : " < ";
  if (order == MediaAssetOrder::Key) {
    AppendCondition(statement, key + comparison + "?");
  } else {
    AppendCondition(statement, "(" + column + ", " + key + ")" + comparison + "(?, ?)");
    statement.values.push_back(valueBefore);
  }
  statement.values.emplace_back(KeyBefore());
}

MediaAssetSearchText::Statement MediaAssetSearchText::Keys(const Value& valueBefore,
                                                           bool withOrderValue) const {
  const Sources sources = SourcesFor(true);
  const std::string column = OrderColumn(sources);
  Statement statement;
  statement.text =
      "SELECT " + sources.key + (withOrderValue ? ", " + column : std::string()) + " FROM " + sources.from;
  AppendConditions(statement, sources);
  if (IsAfterAsset()) AppendPositionOfPage(statement, sources.key, column, valueBefore);
  const std::string direction = search.direction == Direction::Ascending ? "" : " DESC";
  statement.text += " ORDER BY " + column + direction;
  if (order != MediaAssetOrder::Key) statement.text += ", " + sources.key + direction;
  statement.text += " LIMIT ? OFFSET ?";
  statement.values.emplace_back(search.count);
  statement.values.emplace_back(search.offset);
  return statement;
}

MediaAssetSearchText::Statement MediaAssetSearchText::Count() const {
  const Sources sources = SourcesFor(false);
  Statement statement;
  statement.text = "SELECT COUNT(*) FROM " + sources.from;
  AppendConditions(statement, sources);
  return statement;
}

}  // namespace Oru::DataModel::MediaAssets::Database
