#include "RepositoryJobs.h"

#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "Clock.h"
#include "FileJobs.h"
#include "SampleClips.h"
#include "ScratchFile.h"
#include "Site.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Oru::Benchmarks {

using namespace DataModel::MediaAssets::Database;
using Common::Databases::Sqlite::QuerySqlite;
using Common::Databases::Sqlite::ReadGuard;
using Common::Databases::Sqlite::TransactionGuard;
using DataModel::MediaAssets::DapId;
using DataModel::MediaAssets::MediaAssetParts;
using DataModel::MediaAssets::ZuServerId;

namespace {

constexpr int PageLength = 50;
// What a page may cost, in multiples of the page by hand or in microseconds.
constexpr double ListCeiling = 1.5;
constexpr double DeepCeiling = 1.6;
constexpr double FastPage = 3000;

double Median(std::vector<double> costs) {
  const auto middle = costs.begin() + static_cast<std::ptrdiff_t>(costs.size() / 2);
  std::nth_element(costs.begin(), middle, costs.end());
  return *middle * 1e6;
}

/// The lines of the report.
class Report {
 public:
  explicit Report(std::ostream& stream) : out(stream) {}
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report() { out << "\n]\n"; }

  /// Runs both sides in turn and notes the medians of one run. Each gets the number of the run.
  /// @param ceiling  the most that the library may cost, as a multiple of the other
  /// @param most     the same in microseconds; either will do. 0 for none
  template <class Run, class OtherRun>
  void Compare(const std::string& job, int runs, double ceiling, double most, Run run, OtherRun other) {
    std::vector<double> costs, otherCosts;
    run(0);
    other(1);
    for (int i = 0; i < runs; ++i) {
      costs.push_back(SecondsOf(run, 2 * i));
      otherCosts.push_back(SecondsOf(other, 2 * i + 1));
    }
    out << separator << "  {\"job\": \"" << job << "\", \"library\": " << Median(costs)
        << ", \"rival\": " << Median(otherCosts) << ", \"ceiling\": " << ceiling << ", \"most\": " << most
        << "}";
    out.flush();
    separator = ",\n";
  }

 private:
  template <class Run>
  static double SecondsOf(Run& run, int number) {
    const double start = ThreadSeconds();
    run(number);
    return ThreadSeconds() - start;
  }

  std::ostream& out;
  const char* separator = "[\n";
};

/// Reads the keys of all that is stored of a clip, by hand.
class ClipKeys {
 public:
  explicit ClipKeys(sqlite3* handle)
      : asset(handle, "SELECT key FROM MediaAsset WHERE id = ?"),
        resource(handle, "SELECT key FROM MediaResource WHERE id = ?"),
        stream(handle, "SELECT key FROM Stream WHERE id = ?"),
        essences(handle, "SELECT key, nr FROM Essence WHERE refStream = ?"),
        track(handle, "SELECT key FROM Track WHERE id = ?"),
        annotations(handle, "SELECT key FROM Annotation WHERE refMediaAsset = ?") {}

  void Read(MediaAsset& clip) {
    const int64_t key = Key(asset.With(clip.Id().Value()));
    ReadAll(annotations.With(key));
    for (auto& clipResource : clip.MediaResources()) {
      Key(resource.With(clipResource.Id().Value()));
      for (auto& clipStream : clipResource->Streams())
        ReadAll(essences.With(Key(stream.With(clipStream.Id().Value()))));
    }
    for (const auto& clipTrack : clip.Tracks())
      Key(track.With(clipTrack->Id().Value()));
  }

 private:
  static int64_t Key(Statement& bound) {
    Rows rows(bound);
    return rows.Next() ? rows->Int64(0) : -1;
  }
  static void ReadAll(Statement& bound) {
    for (Rows rows(bound); rows.Next();)
      rows->Int64(0);
  }

  Statement asset, resource, stream, essences, track, annotations;
};

// One clip a transaction, in memory, new or known. The other side saves through the tables, in a guard.
void MeasurePuts(Report& report) {
  constexpr int known = 2000, runs = 400;
  LibrarySite site;
  std::vector<MediaAsset> clips = MakeClips(0, known + 2 * runs + 2);
  site.Jobs().Begin();
  for (int i = 0; i < known; ++i)
    site.Jobs().Save(clips[static_cast<std::size_t>(i)]);
  site.Jobs().Commit();
  MediaAssetRepository repository(site.Database());
  const auto save = [&](MediaAsset& clip) {
    TransactionGuard guard(site.Database());
    site.Jobs().Save(clip);
    guard.Commit();
  };
  const auto anyKnown = [&](int i) -> MediaAsset& {
    return clips[static_cast<std::size_t>(i) * 617 % known];
  };
  const auto fresh = [&](int i) -> MediaAsset& {
    return clips[static_cast<std::size_t>(known) + static_cast<std::size_t>(i)];
  };
  report.Compare(
      "put new", runs, 1.1, 0, [&](int i) { repository.Put(fresh(i)); }, [&](int i) { save(fresh(i)); });
  ClipKeys keys(site.Handle());
  report.Compare(
      "put known", runs, 1.25, 0, [&](int i) { repository.Put(anyKnown(i)); },
      [&](int i) {
        keys.Read(anyKnown(i));
        save(anyKnown(i));
      });
}

/// Statements by hand on the file. What they give is read and dropped.
class ByHand {
 public:
  explicit ByHand(const std::string& file) : connection(file) {}

  Statement& Prepared(const std::string& text) {
    statements.push_back(std::make_unique<Statement>(connection.Handle(), text));
    return *statements.back();
  }

  // Reads the columns of all rows.
  int Read(Statement& bound) {
    int count = 0;
    for (Rows rows(bound); rows.Next(); ++count)
      rows->ReadColumns();
    return count;
  }

  void Begin() { connection.Execute("BEGIN"); }
  void End() { connection.Execute("COMMIT"); }

 private:
  Connection connection;
  std::vector<std::unique_ptr<Statement>> statements;
};

/// All rows of a page of clips: one statement for each kind of row.
class DeepPage {
 public:
  explicit DeepPage(ByHand& onFile)
      : byHand(onFile),
        assets(Of("SELECT * FROM MediaAsset WHERE key")),
        ofAssets{&Of("SELECT * FROM TimeBoundsMediaAsset WHERE foreignKey"),
                 &Of("SELECT * FROM MetadataMediaAsset WHERE foreignKey"),
                 &Of("SELECT * FROM DapOperatorMetadata WHERE refMediaAsset"),
                 &Of("SELECT * FROM DapOperatorKeywords WHERE refDapOperatorMetadata")},
        annotations(Of("SELECT * FROM Annotation WHERE refMediaAsset")),
        ofAnnotations(Of("SELECT * FROM MetadataAnnotation WHERE foreignKey")),
        resources(Of("SELECT MediaResource.*, refMediaAsset FROM RelationMediaAssetMediaResource"
                     " CROSS JOIN MediaResource ON key = refMediaResource WHERE refMediaAsset")),
        ofResources{&Of("SELECT * FROM TimeBoundsMediaResource WHERE foreignKey"),
                    &Of("SELECT * FROM MetadataMediaResource WHERE foreignKey")},
        streams(Of("SELECT * FROM Stream WHERE refMediaResource")),
        ofStreams{&Of("SELECT * FROM TimeBoundsStream WHERE foreignKey"),
                  &Of("SELECT * FROM MetadataStream WHERE foreignKey")},
        essences(
            Of("SELECT * FROM Essence LEFT JOIN VideoEssence v ON v.refEssence = key LEFT JOIN AudioEssence a"
               " ON a.refEssence = key LEFT JOIN DataEssence d ON d.refEssence = key WHERE refStream")),
        ofEssences(Of("SELECT * FROM MetadataEssence WHERE foreignKey")),
        tracks(Of("SELECT Track.*, refMediaAsset FROM RelationAssetTrack CROSS JOIN Track ON key = refTrack"
                  " WHERE refMediaAsset")),
        ofTracks(Of(
            "SELECT refTrack, Stream.id, nr, channelNr FROM TrackChannel CROSS JOIN Essence ON Essence.key ="
            " refEssence CROSS JOIN Stream ON Stream.key = refStream WHERE refTrack")) {}

  void Read(int64_t firstKey) {
    std::string keys = "[" + std::to_string(firstKey);
    for (int i = 1; i < PageLength; ++i)
      keys += "," + std::to_string(firstKey + i);
    keys += "]";
    byHand.Begin();
    byHand.Read(assets.With(keys));
    ReadAll(ofAssets, keys);
    byHand.Read(ofAnnotations.With(ReadKeys(annotations, keys)));
    const std::string resourceKeys = ReadKeys(resources, keys);
    ReadAll(ofResources, resourceKeys);
    const std::string streamKeys = ReadKeys(streams, resourceKeys);
    ReadAll(ofStreams, streamKeys);
    byHand.Read(ofEssences.With(ReadKeys(essences, streamKeys)));
    if (byHand.Read(ofTracks.With(ReadKeys(tracks, keys))) != 5 * PageLength)
      throw std::logic_error("the page by hand lacks channels");
    byHand.End();
  }

 private:
  Statement& Of(const std::string& text) {
    return byHand.Prepared(text + " IN (SELECT value FROM json_each(?))");
  }
  template <class Statements>
  void ReadAll(const Statements& kinds, const std::string& owners) {
    for (Statement* kind : kinds)
      byHand.Read(kind->With(owners));
  }
  // Reads the rows and gives their keys, the first column.
  static std::string ReadKeys(Statement& kind, const std::string& owners) {
    std::string keys;
    for (Rows row(kind.With(owners)); row.Next();) {
      row->ReadColumns();
      keys.append(keys.empty() ? "[" : ",").append(std::to_string(row->Int64(0)));
    }
    return keys.empty() ? "[]" : keys += ']';
  }

  ByHand& byHand;
  Statement& assets;
  std::array<Statement*, 4> ofAssets;
  Statement &annotations, &ofAnnotations, &resources;
  std::array<Statement*, 2> ofResources;
  Statement& streams;
  std::array<Statement*, 2> ofStreams;
  Statement &essences, &ofEssences, &tracks, &ofTracks;
};

void MeasureDeepPages(Report& report, LibrarySite& site, ByHand& byHand, int clipCount) {
  MediaAssetRepository repository(site.Database());
  DeepPage page(byHand);
  const auto first = [clipCount](int run) { return 1 + int64_t{run} * 7919 % (clipCount - PageLength); };
  const auto read = [&](int run) {
    MediaAsset before;
    before.ObjectId(first(run) - 1);
    int count = 0;
    for (const MediaAsset& clip :
         repository.Each(MediaAssetSearch().After(before).Limit(PageLength), MediaAssetParts::All))
      count += clip.Tracks().Size() == 3 ? 1 : 0;
    if (count != PageLength) throw std::logic_error("the page lacks clips");
  };
  const auto readByHand = [&](int run) { page.Read(first(run)); };
  report.Compare("deep page", 100, DeepCeiling, 0, read, readByHand);
  const ReadGuard guard(site.Database());
  report.Compare("deep page in a guard", 100, DeepCeiling, 0, read, readByHand);
}

/// What a list gives: the keys of its first page and the total.
struct Page {
  std::vector<int64_t> keys;
  int64_t total = 0;
};

/// Compares a page of a list and its total with SQL by hand, which runs in a transaction.
/// @param rows   selects the page
/// @param total  selects the total
/// @param read   gives the library's page
template <class Read>
void ComparePage(Report& report, ByHand& byHand, const std::string& job, const std::string& rows,
                 const std::string& total, double most, Read read) {
  Statement& rowsByHand = byHand.Prepared(rows + " LIMIT " + std::to_string(PageLength));
  Statement& totalByHand = byHand.Prepared("SELECT " + total);
  Page page, pageByHand;
  report.Compare(
      job, 15, ListCeiling, most, [&](int) { page = read(); },
      [&](int) {
        byHand.Begin();
        pageByHand.keys.clear();
        for (Rows row(rowsByHand); row.Next();) {
          row->ReadColumns();
          pageByHand.keys.push_back(row->Int64(0));
        }
        {
          Rows row(totalByHand);
          row.Next();
          pageByHand.total = row->Int64(0);
        }
        byHand.End();
      });
  if (page.keys != pageByHand.keys || page.total != pageByHand.total)
    throw std::logic_error(job + ": by hand something else is found");
}

/// A list of the repository.
struct ListJob {
  std::string name;
  MediaAssetSearch search;
  // What follows FROM, with the conditions; the order; the total. The values are part of the texts.
  std::string rows, order, total;
  double most = 0;
};

const std::string assetColumns = "SELECT MediaAsset.* FROM ";

void MeasureList(Report& report, MediaAssetRepository& repository, ByHand& byHand, const ListJob& job) {
  const MediaAssetSearch search = MediaAssetSearch(job.search).Limit(PageLength);
  ComparePage(report, byHand, job.name, assetColumns + job.rows + " ORDER BY " + job.order, job.total,
              job.most, [&] {
                const MediaAssetPage found = repository.Find(search);
                Page page{{}, found.total};
                for (const MediaAsset& asset : found.assets)
                  page.keys.push_back(asset.ObjectId());
                return page;
              });
}

// The same through an object cursor of the table.
void MeasureCursors(Report& report, LibrarySite& site, ByHand& byHand) {
  MediaAssetTable& assets = site.Database().GetMediaAssetTable();
  const auto measure = [&](const std::string& name, double most, QuerySqlite query,
                           const std::string& columns, const std::string& rows, const std::string& order) {
    query.Limit(PageLength, 0);
    ComparePage(report, byHand, "object cursor, " + name, columns + rows + order, "count(*) FROM " + rows,
                most, [&] {
                  const ReadGuard guard(site.Database());
                  const auto cursor = assets.OpenObjectCursor(query, true);
                  Page page;
                  for (MediaAsset asset; cursor->Next(asset);)
                    page.keys.push_back(asset.ObjectId());
                  page.total = cursor->GetTotalItemsCount();
                  return page;
                });
  };
  const auto ordered = [](const std::string& column, bool isUp) {
    QuerySqlite query;
    isUp ? query.OrderByAsc(column) : query.OrderByDesc(column);
    return query;
  };
  const auto among = [&](const std::string& table, const std::string& column, const QuerySqlite& condition) {
    QuerySqlite query = ordered("creationDate", false);
    query.In("MediaAsset.key", table, column, condition);
    return query;
  };
  QuerySqlite ofServer, beginning, matching;
  ofServer.Equals("zuServerId", 120);
  beginning.BeginWith("keyword", "camera 7");
  matching.Match("MediaAssetFts", "19").OrderByAsc("MediaAssetFts.rank").OrderByAsc("MediaAsset.key");
  const std::string newestFirst = " ORDER BY creationDate DESC";
  measure("by key, down", FastPage, ordered("MediaAsset.key", false), assetColumns, "MediaAsset",
          " ORDER BY key DESC");
  measure("by name, up", 0, ordered("MediaAsset.name", true), assetColumns, "MediaAsset", " ORDER BY name");
  measure("newest first", FastPage, ordered("creationDate", false), assetColumns, "MediaAsset", newestFirst);
  measure("changed last", 0, ordered("modificationDate", false), assetColumns, "MediaAsset",
          " ORDER BY modificationDate DESC");
  measure("on a server, newest first", 0, among("DapOperatorMetadata", "refMediaAsset", ofServer),
          assetColumns,
          "MediaAsset WHERE key IN (SELECT refMediaAsset FROM DapOperatorMetadata WHERE zuServerId = 120)",
          newestFirst);
  measure("beginning of a keyword, newest first", 0,
          among("DapOperatorKeywords", "refDapOperatorMetadata", beginning), assetColumns,
          "MediaAsset WHERE key IN (SELECT refDapOperatorMetadata FROM DapOperatorKeywords WHERE keyword LIKE"
          " 'camera 7%')",
          newestFirst);
  measure(
      "match, by rank", 0, matching,
      "SELECT MediaAsset.*, highlight(MediaAssetFts, 0, '<b>', '</b>'), highlight(MediaAssetFts, 1, '<b>', '</b>')"
      " FROM ",
      "MediaAssetFts CROSS JOIN MediaAsset ON key = MediaAssetFts.rowid WHERE MediaAssetFts MATCH '19'",
      " ORDER BY MediaAssetFts.rank, key");
}

void MeasureLists(Report& report, LibrarySite& site, ByHand& byHand) {
  MediaAssetRepository repository(site.Database());
  const std::string all = "count(*) FROM MediaAsset";
  const std::string profiles = "DapOperatorMetadata";
  const std::string joined = "MediaAsset LEFT JOIN DapOperatorMetadata ON refMediaAsset = key";
  const std::string allWithProfile = "MediaAsset CROSS JOIN DapOperatorMetadata ON refMediaAsset = key";
  const std::string unset = std::to_string(TimePoints::TimePoint::Empty().ToNanoseconds());
  const std::string duration = "CASE WHEN inBoundary IS NOT " + unset + " AND outBoundary IS NOT " + unset +
                               " THEN ifnull(outBoundary, 0) - ifnull(inBoundary, 0) ELSE -9e999 END";
  const std::string place = [] {
    std::string number =
        "CASE WHEN zuServerId > 0 AND zuServerId % 10 = 0 THEN zuServerId ELSE 2147483648 END";
    for (const std::string column : {"dapIdPage", "dapIdBank", "dapIdRow"})
      number.insert(0, "(")
          .append(") * 16 + CASE WHEN ")
          .append(column)
          .append(" BETWEEN 0 AND 9 THEN ")
          .append(column)
          .append(" ELSE 15 END");
    return number.insert(0, "(").append(
        ") * 16 + CASE WHEN dapIdCamera BETWEEN 65 AND 76 THEN dapIdCamera - 65 ELSE 15 END");
  }();
  const auto down = [](const std::string& terms) {
    std::string result;
    int depth = 0;
    for (const char c : terms + ",") {
      depth += c == '(' ? 1 : c == ')' ? -1 : 0;
      result += c == ',' && depth == 0 ? std::string(" DESC,") : std::string(1, c);
    }
    result.pop_back();
    return result;
  };
  const struct {
    const char* name;
    MediaAssetOrder order;
    std::string from, terms;
    double most;
  } orders[] = {
      {"key", MediaAssetOrder::Key, "MediaAsset", "key", FastPage},
      {"identifier", MediaAssetOrder::Identifier, "MediaAsset", "id", 0},
      {"name", MediaAssetOrder::Name, "MediaAsset", "name, key", 0},
      {"creation date", MediaAssetOrder::CreationDate, "MediaAsset", "creationDate, key", FastPage},
      {"modification date", MediaAssetOrder::ModificationDate, "MediaAsset", "modificationDate, key", 0},
      {"duration", MediaAssetOrder::Duration, "MediaAsset", duration + ", key", 0}};
  const auto middle = repository.Find("c11b0000-7d3a-4c60-0000-000000050000").value();
  for (const auto& [name, order, from, terms, most] : orders) {
    for (const auto direction : {Direction::Ascending, Direction::Descending}) {
      const bool isUp = direction == Direction::Ascending;
      const std::string sorted = isUp ? terms : down(terms);
      const auto search = MediaAssetSearch().OrderBy(order, direction);
      const std::string words = std::string(name) + (isUp ? ", up" : ", down");
      MeasureList(report, repository, byHand, {"by " + words, search, from, sorted, all, most});
      const std::string comparison = isUp ? " > " : " < ";
      // SQLite doesn't look for a row value in an index of an expression.
      const std::string range = order == MediaAssetOrder::Duration
                                    ? std::string(duration)
                                          .append(comparison, 0, 2)
                                          .append("= (SELECT ")
                                          .append(duration)
                                          .append(" FROM MediaAsset WHERE key = 50001) AND ")
                                    : std::string();
      const std::string after = std::string(" WHERE ")
                                    .append(range)
                                    .append("(")
                                    .append(terms)
                                    .append(")")
                                    .append(comparison)
                                    .append("(SELECT ")
                                    .append(terms)
                                    .append(" FROM MediaAsset WHERE id = '")
                                    .append(middle.Id().Value())
                                    .append("')");
      MeasureList(report, repository, byHand,
                  {"by " + words + ", after", MediaAssetSearch(search).After(middle), from + after, sorted,
                   all, most});
    }
  }
  // More clips than a page holds have no profile, and these come first.
  const auto byPlace = MediaAssetSearch().OrderBy(MediaAssetOrder::Place);
  MeasureList(report, repository, byHand,
              {"by place, up", byPlace,
               "MediaAsset WHERE NOT EXISTS (SELECT 1 FROM DapOperatorMetadata WHERE refMediaAsset = key)",
               "key", all});
  MeasureList(
      report, repository, byHand,
      {"by place, up, after", MediaAssetSearch(byPlace).After(middle),
       "DapOperatorMetadata CROSS JOIN MediaAsset ON key = refMediaAsset WHERE " + place + " >= (SELECT " +
           place + " FROM DapOperatorMetadata WHERE refMediaAsset = 50001) AND (" + place +
           ", key) > (SELECT " + place + ", 50001 FROM DapOperatorMetadata WHERE refMediaAsset = 50001)",
       place + ", refMediaAsset", all});
  MeasureList(report, repository, byHand,
              {"by place, down", MediaAssetSearch().OrderBy(MediaAssetOrder::Place, Direction::Descending),
               "DapOperatorMetadata CROSS JOIN MediaAsset ON key = refMediaAsset",
               place + " DESC, refMediaAsset DESC", all});
  const auto ofProfile = [&](const std::string& name, const MediaAssetSearch& search,
                             const std::string& condition) {
    MeasureList(report, repository, byHand,
                {name, search, allWithProfile + " WHERE " + condition, "key",
                 "count(*) FROM DapOperatorMetadata WHERE " + condition, 0});
  };
  const auto lacking = [&](const std::string& name, const MediaAssetSearch& search,
                           const std::string& condition) {
    MeasureList(
        report, repository, byHand,
        {name, search, joined + " WHERE NOT ifnull(" + condition + ", 0)", "key",
         "(SELECT " + all + ") - (SELECT count(*) FROM DapOperatorMetadata WHERE " + condition + ")", 0});
  };
  const auto ofAsset = [&](const std::string& name, const MediaAssetSearch& search,
                           const std::string& condition) {
    MeasureList(report, repository, byHand,
                {name, search, "MediaAsset WHERE " + condition, "key", all + " WHERE " + condition, 0});
  };
  const std::string server = "zuServerId > 0 AND zuServerId % 10 = 0";
  const std::string isProtected = "(userProtected <> 0 OR dapUIProtected <> 0)";
  ofProfile("on a server", MediaAssetSearch().OnServer(ZuServerId(120)), "zuServerId = 120");
  lacking("on no server", MediaAssetSearch().OnServer(ZuServerId()), server);
  ofProfile("on a page", MediaAssetSearch().OnPage(3), "dapIdPage = 3");
  lacking("on no page", MediaAssetSearch().OnPage(DapId::Unset), "dapIdPage BETWEEN 0 AND 9");
  ofProfile("on a bank", MediaAssetSearch().OnBank(3), "dapIdBank = 3");
  ofProfile("on a row", MediaAssetSearch().OnRow(3), "dapIdRow = 3");
  ofProfile("of a camera", MediaAssetSearch().OnCamera('C'), "dapIdCamera = 67");
  lacking("of no camera", MediaAssetSearch().OnCamera(0), "dapIdCamera BETWEEN 65 AND 76");
  ofProfile("protected", MediaAssetSearch().Protected(), isProtected);
  lacking("not protected", MediaAssetSearch().Protected(false), isProtected);
  ofProfile("at a place", MediaAssetSearch().OnServer(ZuServerId(120)).OnPage(3).OnBank(2).OnRow(0),
            "zuServerId = 120 AND dapIdPage = 3 AND dapIdBank = 2 AND dapIdRow = 0");
  ofAsset("created from", MediaAssetSearch().CreatedFrom(1'700'060'000), "creationDate >= 1700060000");
  ofAsset("created in a span", MediaAssetSearch().CreatedFrom(1'700'060'000).CreatedBefore(1'700'063'600),
          "creationDate >= 1700060000 AND creationDate < 1700063600");
  ofAsset("modified before", MediaAssetSearch().ModifiedBefore(1'700'060'000),
          "modificationDate < 1700060000");
  ofAsset("lasts at least", MediaAssetSearch().LastsAtLeast(TimePoints::Duration::FromSeconds(100)),
          duration + " >= 100000000000");
  ofAsset("lasts at most", MediaAssetSearch().LastsAtMost(TimePoints::Duration::FromSeconds(30)),
          duration + " BETWEEN -9223372036854775807 AND 30000000000");
  ofAsset("name contains", MediaAssetSearch().NameContains("take 19"), "name LIKE '%take 19%'");
  ofAsset(
      "keyword", MediaAssetSearch().Keyword("camera 7"),
      "key IN (SELECT refDapOperatorMetadata FROM DapOperatorKeywords WHERE keyword = 'camera 7' COLLATE NOCASE)");
  ofAsset("in a group", MediaAssetSearch().InGroup("64090000-7d3a-4c60-0000-000000000000"),
          "key IN (SELECT refMediaAsset FROM MediaAssetGroupItem WHERE refMediaAssetGroup = 1)");
  ofAsset("uses a resource", MediaAssetSearch().UsesResource("4e500000-7d3a-4c60-0000-000000050000"),
          "key IN (SELECT refMediaAsset FROM RelationMediaAssetMediaResource WHERE refMediaResource ="
          " (SELECT key FROM MediaResource WHERE id = '4e500000-7d3a-4c60-0000-000000050000'))");
  MeasureList(
      report, repository, byHand,
      {"typed", MediaAssetSearch().Typed("take 19"),
       "MediaAssetFts CROSS JOIN MediaAsset ON key = MediaAssetFts.rowid WHERE MediaAssetFts MATCH 'take* 19*'",
       "MediaAssetFts.rank, key", "count(*) FROM MediaAssetFts WHERE MediaAssetFts MATCH 'take* 19*'", 0});
  MeasureList(
      report, repository, byHand,
      {"typed, newest first",
       MediaAssetSearch().Typed("take 19").OrderBy(MediaAssetOrder::CreationDate, Direction::Descending),
       "MediaAssetFts CROSS JOIN MediaAsset ON key = MediaAssetFts.rowid WHERE MediaAssetFts MATCH 'take* 19*'",
       "creationDate DESC, key DESC", "count(*) FROM MediaAssetFts WHERE MediaAssetFts MATCH 'take* 19*'",
       0});
}

// Clips of many lengths, some of them without marks, a server, a place, protection or a profile.
void Vary(sqlite3* handle) {
  for (const char* change :
       {"UPDATE MediaAsset SET outBoundary = inBoundary + key * 7919 % 100003 * 3000000",
        "UPDATE MediaAsset SET outBoundary = -9223372036854775807 WHERE key % 50 = 0",
        "UPDATE DapOperatorMetadata SET zuServerId = 0 WHERE refMediaAsset % 10 = 1",
        "UPDATE DapOperatorMetadata SET dapIdPage = 255, dapIdCamera = 0 WHERE refMediaAsset % 12 = 2",
        "UPDATE DapOperatorMetadata SET userProtected = 0, dapUIProtected = 0 WHERE refMediaAsset % 3 <> 0",
        "DELETE FROM DapOperatorMetadata WHERE refMediaAsset % 20 = 7"})
    Connection::Execute(handle, change);
}

}  // namespace

void MeasureRepository(const std::string& folder, int clipCount, std::ostream& out) {
  Report report(out);
  MeasurePuts(report);
  const ScratchFile file(folder);
  LibrarySite site(file.Uri("_journal_mode=wal&_synchronous=off"));
  int count = 0;
  FillUpTo(site, count, clipCount);
  auto group = MakeGroup(0, 100);
  site.Jobs().SaveGroup(group);
  ByHand byHand(file.Path());
  MeasureDeepPages(report, site, byHand, clipCount);
  Vary(site.Handle());
  MeasureLists(report, site, byHand);
  MeasureCursors(report, site, byHand);
}

}  // namespace Oru::Benchmarks
