#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"

#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/MediaAssetSearchColumns.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace Oru::DataModel::MediaAssets::Database {

using BusinessEntityModel::BaseTypes::DateTime;
using BusinessEntityModel::BaseTypes::Identifier;
using Common::Databases::Sqlite::FullTextExpression;
using Common::Databases::Sqlite::QuerySqlite;

MediaAssetSearch& MediaAssetSearch::Add(Subject subject, const std::string& text, std::vector<Value> values) {
  conditions.push_back({subject, text, std::move(values)});
  return *this;
}

MediaAssetSearch& MediaAssetSearch::Typed(const std::string& text) {
  if (!text.empty()) matches.push_back(FullTextExpression::AllWordsBegun(text));
  return *this;
}

MediaAssetSearch& MediaAssetSearch::NameContains(const std::string& text) {
  queries.emplace_back();
  queries.back().Contains("MediaAsset.name", text);
  return *this;
}

MediaAssetSearch& MediaAssetSearch::Keyword(const std::string& keyword) {
  // NOCASE compares up to the first NUL byte.
  const bool hasNul = keyword.find('\0') != std::string::npos;
  const std::string collation = hasNul ? "" : " COLLATE NOCASE";
  return Add(
      Subject::Key,
      " IN (SELECT refDapOperatorMetadata FROM DapOperatorKeywords WHERE keyword = ?" + collation + ")",
      {keyword});
}

MediaAssetSearch& MediaAssetSearch::OnServer(const ZuServerId& server) {
  if (server == ZuServerId::Empty()) return Add(Subject::MissingProfile, SearchColumns::HasServer());
  return Add(Subject::Profile, "zuServerId = ?", {int64_t{server.SerialNumber()}});
}

MediaAssetSearch& MediaAssetSearch::OnPlace(const std::string& column, int place) {
  if (place == DapId::Unset) return Add(Subject::MissingProfile, SearchColumns::HasGridPlace(column));
  // A number off the grid counts as not set when it is read.
  if (!SearchColumns::IsGridPlace(place)) return Add(Subject::Key, " IS NULL");
  // Or SQLite would rather look at all clips of a server, which their index has in the order of the keys.
  return Add(Subject::Profile, "unlikely(" + column + " = ?)", {int64_t{place}});
}

MediaAssetSearch& MediaAssetSearch::OnPage(int page) {
  return OnPlace("dapIdPage", page);
}

MediaAssetSearch& MediaAssetSearch::OnBank(int bank) {
  return OnPlace("dapIdBank", bank);
}

MediaAssetSearch& MediaAssetSearch::OnRow(int row) {
  return OnPlace("dapIdRow", row);
}

MediaAssetSearch& MediaAssetSearch::OnCamera(char camera) {
  if (camera == 0) return Add(Subject::MissingProfile, SearchColumns::HasCamera());
  if (!DapId::IsValidCamera(camera)) return Add(Subject::Key, " IS NULL");
  return Add(Subject::Profile, "dapIdCamera = ?", {int64_t{camera}});
}

MediaAssetSearch& MediaAssetSearch::Protected(bool isProtected) {
  return Add(isProtected ? Subject::Profile : Subject::MissingProfile, SearchColumns::Protected());
}

MediaAssetSearch& MediaAssetSearch::CreatedFrom(DateTime first) {
  return Add(Subject::Asset, "MediaAsset.creationDate >= ?", {int64_t{first}});
}

MediaAssetSearch& MediaAssetSearch::CreatedBefore(DateTime end) {
  return Add(Subject::Asset, "MediaAsset.creationDate < ?", {int64_t{end}});
}

MediaAssetSearch& MediaAssetSearch::ModifiedFrom(DateTime first) {
  return Add(Subject::Asset, "MediaAsset.modificationDate >= ?", {int64_t{first}});
}

MediaAssetSearch& MediaAssetSearch::ModifiedBefore(DateTime end) {
  return Add(Subject::Asset, "MediaAsset.modificationDate < ?", {int64_t{end}});
}

MediaAssetSearch& MediaAssetSearch::LastsAtLeast(const TimePoints::Duration& shortest) {
  return Add(Subject::Asset, SearchColumns::DurationOfMarks() + " >= ?", {shortest.ToNanoseconds()});
}

MediaAssetSearch& MediaAssetSearch::LastsAtMost(const TimePoints::Duration& longest) {
  const std::string duration = SearchColumns::DurationOfMarks();
  return Add(Subject::Asset, duration + " > " + SearchColumns::NoDuration + " AND " + duration + " <= ?",
             {longest.ToNanoseconds()});
}

MediaAssetSearch& MediaAssetSearch::InGroup(const Identifier& group) {
  return Add(Subject::Key,
             " IN (SELECT refMediaAsset FROM MediaAssetGroupItem WHERE refMediaAssetGroup ="
             " (SELECT key FROM MediaAssetGroup WHERE id = ?))",
             {group.Value()});
}

MediaAssetSearch& MediaAssetSearch::UsesResource(const Identifier& resource) {
  return Add(Subject::Key,
             " IN (SELECT refMediaAsset FROM RelationMediaAssetMediaResource WHERE refMediaResource ="
             " (SELECT key FROM MediaResource WHERE id = ?))",
             {resource.Value()});
}

MediaAssetSearch& MediaAssetSearch::Where(const Common::Databases::Query& condition) {
  if (condition.IsEmpty()) return *this;
  queries.push_back(static_cast<const QuerySqlite&>(condition));
  return *this;
}

MediaAssetSearch& MediaAssetSearch::OrderBy(MediaAssetOrder assetOrder, Direction orderDirection) {
  order = assetOrder;
  direction = orderDirection;
  return *this;
}

MediaAssetSearch& MediaAssetSearch::Limit(int64_t limit, int64_t firstPlace) {
  count = std::max<int64_t>(limit, -1);
  offset = std::max<int64_t>(firstPlace, 0);
  return *this;
}

MediaAssetSearch& MediaAssetSearch::After(const MediaAsset& last) {
  after = Position{};
  after->key = last.ObjectId();
  after->id = last.Id().Value();
  after->name = last.Name();
  after->creationDate = last.CreationDate();
  after->modificationDate = last.ModificationDate();
  const std::variant<int64_t, double> duration =
      SearchColumns::DurationOfMarks(last.InBoundary().TimePoint(), last.OutBoundary().TimePoint());
  after->duration = std::visit([](auto value) { return Value(value); }, duration);
  const bool holdsProfile = (last.HeldParts() & MediaAssetParts::Operator) == MediaAssetParts::Operator;
  if (!holdsProfile) return *this;
  after->place = last.HasDapOperatorMetadata() ? SearchColumns::PlaceOfProfile(last.DapOperatorMetadata())
                                               : SearchColumns::NoProfile;
  return *this;
}

}  // namespace Oru::DataModel::MediaAssets::Database
