#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetSearchText.h"

#include "Oru/DataModel/MediaAssets/Database/Columns/MediaAssetSearchColumns.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include <algorithm>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Sqlite::QuerySqlite;
using Common::Databases::Sqlite::StatementText;

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
    statement.text = "SELECT ifnull((SELECT " + SearchColumns::PlaceOfProfile() +
                     " FROM DapOperatorMetadata WHERE refMediaAsset = key), " +
                     std::to_string(SearchColumns::NoProfile) + ") FROM MediaAsset WHERE key = ?";
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
MediaAssetSearchText::Sources MediaAssetSearchText::SourcesFor(Purpose purpose, Profiles profiles) const {
  using Subject = MediaAssetSearch::Subject;
  const bool isMatched = !search.matches.empty();
  const bool needsProfile = HasSubject(Subject::Profile) || profiles == Profiles::With;
  const bool looksAtProfile =
      profiles != Profiles::Without && (needsProfile || HasSubject(Subject::MissingProfile));
  const bool looksAtAsset = !search.queries.empty() || HasSubject(Subject::Asset) ||
                            (purpose == Purpose::Page && OrdersByColumnOfAsset());
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

void MediaAssetSearchText::AppendConditions(Conditions& conditions, const Sources& sources,
                                            Profiles profiles) const {
  if (!search.matches.empty()) conditions.Add("MediaAssetFts MATCH ?", {Match()});
  for (const MediaAssetSearch::Condition& condition : search.conditions) {
    switch (condition.subject) {
      case MediaAssetSearch::Subject::Key:
        conditions.Add(sources.key + condition.text, condition.values);
        break;
      case MediaAssetSearch::Subject::MissingProfile:
        if (profiles == Profiles::Without) break;
        conditions.Add("NOT ifnull(" + condition.text + ", 0)", condition.values);
        break;
      case MediaAssetSearch::Subject::Asset:
      case MediaAssetSearch::Subject::Profile:
        conditions.Add(condition.text, condition.values);
        break;
    }
  }
  for (const QuerySqlite& query : search.queries) {
    StatementText condition;
    query.AppendFilter(condition, QuerySqlite::Values::Bound);
    // The table reads through the full-text index, which is joined only for a condition that names it.
    const bool namesIndex = condition.text.find("Fts") != std::string::npos;
    if (!namesIndex) {
      conditions.Add("(" + condition.text + ")", condition.values);
    } else {
      QuerySqlite selecting;
      selecting.And(query);
      condition = table.StatementGenerator().SelectToRun(selecting);
      conditions.Add(sources.key + " IN (SELECT key FROM (" + condition.text + "))", condition.values);
    }
  }
}

std::string MediaAssetSearchText::OrderColumn(const Sources& sources, Profiles profiles) const {
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
      return SearchColumns::DurationOfMarks();
    case MediaAssetOrder::Place:
      return profiles == Profiles::Without ? sources.key : SearchColumns::PlaceOfProfile();
    case MediaAssetOrder::Relevance:
      return "MediaAssetFts.rank";
  }
  return sources.key;
}

bool MediaAssetSearchText::IsAscending() const {
  return search.direction == Direction::Ascending;
}

void MediaAssetSearchText::AppendPart(Conditions& conditions, Part part, const std::string& key,
                                      const std::string& column, const Value& valueBefore) const {
  const std::string comparison = IsAscending() ? " > " : " < ";
  switch (part) {
    case Part::Whole:
      break;
    case Part::AfterKey:
      conditions.Add(key + comparison + "?", {KeyBefore()});
      break;
    case Part::Equal:
      conditions.Add(column + " = ?", {valueBefore});
      conditions.Add(key + comparison + "?", {KeyBefore()});
      break;
    case Part::AfterValue:
      conditions.Add(column + comparison + "?", {valueBefore});
      break;
    case Part::After:
      conditions.Add("(" + column + ", " + key + ")" + comparison + "(?, ?)", {valueBefore, KeyBefore()});
      break;
  }
}

MediaAssetSearchText::Statement MediaAssetSearchText::Select(Profiles profiles, Part part,
                                                             const Value& valueBefore,
                                                             bool withOrderValue) const {
  const Sources sources = SourcesFor(Purpose::Page, profiles);
  const std::string column = OrderColumn(sources, profiles);
  const std::string direction = IsAscending() ? "" : " DESC";
  Statement statement;
  statement.text = "SELECT " + sources.key;
  if (withOrderValue)
    statement.text +=
        ", " + (profiles == Profiles::Without ? std::to_string(SearchColumns::NoProfile) : column);
  statement.text += " FROM " + sources.from;
  Conditions conditions(statement);
  AppendConditions(conditions, sources, profiles);
  if (profiles == Profiles::Without) {
    conditions.Add("NOT EXISTS (SELECT 1 FROM DapOperatorMetadata WHERE refMediaAsset = " + sources.key + ")",
                   {});
  }
  AppendPart(conditions, part, sources.key, column, valueBefore);
  statement.text += " ORDER BY ";
  // SQLite would sort by an expression that is the same for all.
  if (column != sources.key && part != Part::Equal)
    statement.text.append(column).append(direction).append(", ");
  statement.text.append(sources.key).append(direction);
  return statement;
}

// An index leads to those that are equal to the asset before, and to those after them, but not to both at once:
// SQLite would walk over all that are equal. A search of the full-text index sorts what it finds, and runs once.
std::vector<MediaAssetSearchText::Part> MediaAssetSearchText::PartsAfterAsset() const {
  if (order == MediaAssetOrder::Key) return {Part::AfterKey};
  // In one file no two are equal; those of another file may equal the asset before.
  if (order == MediaAssetOrder::Identifier) return {search.after->value ? Part::After : Part::AfterValue};
  if (!search.matches.empty()) return {Part::After};
  return {Part::Equal, Part::AfterValue};
}

// Those without a profile come first in the order by place. An index has that order of the others alone.
std::vector<MediaAssetSearchText::KeySelect> MediaAssetSearchText::Keys(const Value& valueBefore,
                                                                        bool withOrderValue) const {
  std::vector<KeySelect> selects;
  const auto add = [&](Profiles profiles, const std::vector<Part>& parts) {
    for (const Part part : parts)
      selects.push_back({Select(profiles, part, valueBefore, withOrderValue), profiles == Profiles::Without});
  };
  const std::vector<Part> after = IsAfterAsset() ? PartsAfterAsset() : std::vector<Part>{Part::Whole};
  if (order != MediaAssetOrder::Place || HasSubject(MediaAssetSearch::Subject::Profile)) {
    add(Profiles::Any, after);
    return selects;
  }
  const bool isAfterNoProfile = IsAfterAsset() && valueBefore == Value(SearchColumns::NoProfile);
  const bool isAfterProfile = IsAfterAsset() && !isAfterNoProfile;
  const auto addWithout = [&] { add(Profiles::Without, {isAfterNoProfile ? Part::AfterKey : Part::Whole}); };
  if (IsAscending() && !isAfterProfile) addWithout();
  if (IsAscending() || !isAfterNoProfile)
    add(Profiles::With, isAfterProfile ? after : std::vector<Part>{Part::Whole});
  if (!IsAscending()) addWithout();
  return selects;
}

MediaAssetSearchText::Statement MediaAssetSearchText::Count() const {
  Statement statement;
  const bool isOneCondition =
      search.matches.empty() && search.queries.empty() && search.conditions.size() == 1;
  if (isOneCondition && HasSubject(MediaAssetSearch::Subject::MissingProfile)) {
    // All but those whose profile says otherwise: that takes no look at each asset's profile.
    const MediaAssetSearch::Condition& condition = search.conditions.front();
    statement.text =
        "SELECT (SELECT COUNT(*) FROM MediaAsset) - (SELECT COUNT(*) FROM DapOperatorMetadata WHERE " +
        condition.text + ")";
    statement.values = condition.values;
    return statement;
  }
  const Sources sources = SourcesFor(Purpose::Total, Profiles::Any);
  Conditions conditions(statement);
  statement.text = "SELECT COUNT(*) FROM " + sources.from;
  AppendConditions(conditions, sources, Profiles::Any);
  return statement;
}

}  // namespace Oru::DataModel::MediaAssets::Database
