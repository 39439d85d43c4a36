#include "SameResults.h"

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"

#include "SampleClips.h"
#include "Site.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Oru::Benchmarks {

namespace {

using DataModel::MediaAssets::Track;

constexpr int ClipCount = 24;
constexpr int GroupCount = 3;
constexpr int SequenceCount = 3;

void Require(bool isSame, const std::string& what) {
  if (!isSame) throw std::runtime_error("the library and its rival differ in " + what);
}

std::vector<std::string> Texts(sqlite3* handle, const std::string& select) {
  std::vector<std::string> texts;
  Statement statement(handle, select);
  for (Rows row(statement); row.Next();)
    texts.push_back(row->Text(0));
  return texts;
}

// The words of the full-text index lie in blobs whose layout follows from when they were merged: that it
// agrees with the table says all of it. The planner's numbers are the library's own.
std::vector<std::string> ComparedTables(sqlite3* handle) {
  return Texts(handle,
               "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'MediaAssetFts%' AND "
               "name NOT IN ('sqlite_stat1', 'Props') ORDER BY name");
}

// A row a line, every column with its type.
std::vector<std::string> RowsOf(sqlite3* handle, const std::string& table) {
  std::string line;
  for (const std::string& column : Texts(handle, "SELECT name FROM pragma_table_info('" + table + "')")) {
    line += (line.empty() ? "quote(" : " || ' ' || quote(") + column + ")";
  }
  return Texts(handle, "SELECT " + line + " FROM " + table + " ORDER BY rowid");
}

int CompareFiles(LibrarySite& library, RivalSite& rival, const std::string& step) {
  const std::vector<std::string> tables = ComparedTables(library.Handle());
  Require(!tables.empty() && tables == ComparedTables(rival.Handle()), "their tables, " + step);
  int rowCount = 0;
  for (const std::string& table : tables) {
    const std::vector<std::string> rows = RowsOf(library.Handle(), table);
    Require(rows == RowsOf(rival.Handle(), table),
            std::string("the rows of ").append(table).append(", ").append(step));
    rowCount += static_cast<int>(rows.size());
  }
  for (sqlite3* handle : {library.Handle(), rival.Handle()})
    Connection::Execute(handle,
                        "INSERT INTO MediaAssetFts(MediaAssetFts, rank) VALUES('integrity-check', 1)");
  return rowCount;
}

bool AreChannelsEqual(const Track& left, const Track& right) {
  return std::equal(left.Channels().begin(), left.Channels().end(), right.Channels().begin(),
                    right.Channels().end(), [](const auto& one, const auto& other) {
                      const auto& stream = one->Stream();
                      const auto& otherStream = other->Stream();
                      return *one == *other && static_cast<bool>(stream) == static_cast<bool>(otherStream) &&
                             (!stream || *stream == *otherStream);
                    });
}

// The comparison of assets leaves out keys and the channels of tracks.
bool AreSame(const MediaAsset& left, const MediaAsset& right) {
  return left.ObjectId() == right.ObjectId() && left == right &&
         std::equal(left.Tracks().begin(), left.Tracks().end(), right.Tracks().begin(), right.Tracks().end(),
                    [](const auto& one, const auto& other) {
                      return one->ObjectId() == other->ObjectId() && AreChannelsEqual(*one, *other);
                    });
}

// What a file doesn't keep apart: a stream that several objects of a clip share comes back as one copy each.
bool IsWhole(const MediaAsset& read, const MediaAsset& saved) {
  return read == saved &&
         std::equal(read.Tracks().begin(), read.Tracks().end(), saved.Tracks().begin(), saved.Tracks().end(),
                    [](const auto& one, const auto& other) { return AreChannelsEqual(*one, *other); });
}

void CompareReads(LibrarySite& library, RivalSite& rival, const std::vector<MediaAsset>& saved,
                  const std::string& step) {
  Require(library.Jobs().Walk() == rival.Jobs().Walk(), "a walk, " + step);
  for (const MediaAsset& clip : saved) {
    const int64_t key = library.Jobs().FindKey(clip.Id());
    Require(key == rival.Jobs().FindKey(clip.Id()), "the key of a clip, " + step);
    MediaAsset one;
    MediaAsset other;
    library.Jobs().ReadDeep(key, one);
    rival.Jobs().ReadDeep(key, other);
    Require(AreSame(one, other), "a clip read deep, " + step);
    Require(IsWhole(one, clip), "a clip read deep and the one that was saved, " + step);
    MediaAsset lazyOne;
    MediaAsset lazyOther;
    library.Jobs().ReadLazy(key, lazyOne);
    rival.Jobs().ReadLazy(key, lazyOther);
    Require(AreSame(lazyOne, lazyOther) && lazyOne.MediaResources() == one.MediaResources(),
            "a clip read lazily, " + step);
  }
  const auto areSame = [](const std::vector<MediaAsset>& found, const std::vector<MediaAsset>& foundOther) {
    return found.size() == 5 &&
           std::equal(found.begin(), found.end(), foundOther.begin(), foundOther.end(), AreSame);
  };
  Require(areSame(library.Jobs().Search("take 1", 5), rival.Jobs().Search("take 1", 5)),
          "what a search finds, " + step);
  Require(areSame(library.Jobs().Match("take", 5), rival.Jobs().Match("take", 5)),
          "what a full-text search finds, " + step);
  Require(library.Jobs().MatchNames("take", 5) == rival.Jobs().MatchNames("take", 5) &&
              library.Jobs().MatchNames("take", 5).size() == 10,
          "what a raw full-text search finds, " + step);
}

void SaveAll(Side& side, std::vector<MediaAsset>& clips) {
  side.Begin();
  for (MediaAsset& clip : clips)
    side.Save(clip);
  side.Commit();
}

void SaveGroupsAndSequences(Side& side) {
  for (int i = 0; i < GroupCount; ++i) {
    AnglesMediaAssetGroup group = MakeGroup(i, 2 * i);
    side.SaveGroup(group);
  }
  for (int i = 0; i < SequenceCount; ++i) {
    Sequence sequence = MakeSequence(i);
    side.SaveSequence(sequence);
  }
}

void CompareGroupsAndSequences(LibrarySite& library, RivalSite& rival) {
  for (int i = 0; i < GroupCount; ++i) {
    const AnglesMediaAssetGroup saved = MakeGroup(i, 2 * i);
    AnglesMediaAssetGroup one;
    AnglesMediaAssetGroup other;
    library.Jobs().ReadGroup(saved.Id(), one);
    rival.Jobs().ReadGroup(saved.Id(), other);
    Require(one == saved && one == other && one.Asset(3) && *one.Asset(3) == *other.Asset(3), "a group");
  }
  for (int i = 0; i < SequenceCount; ++i) {
    const Sequence saved = MakeSequence(i);
    Sequence one;
    Sequence other;
    library.Jobs().ReadSequence(saved.Id(), one);
    rival.Jobs().ReadSequence(saved.Id(), other);
    Require(one == saved && one == other, "a sequence");
  }
}

}  // namespace

void CheckSameResults() {
  LibrarySite library;
  RivalSite rival;
  std::vector<MediaAsset> clips = MakeClips(0, ClipCount);
  std::vector<MediaAsset> rivalClips = MakeClips(0, ClipCount);

  SaveAll(library.Jobs(), clips);
  SaveAll(rival.Jobs(), rivalClips);
  const int rowCount = CompareFiles(library, rival, "saved");
  Require(rowCount > 40 * ClipCount, "nothing, but hardly a row was saved");
  CompareReads(library, rival, clips, "saved");

  std::for_each(clips.begin(), clips.end(), Edit);
  std::for_each(rivalClips.begin(), rivalClips.end(), Edit);
  SaveAll(library.Jobs(), clips);
  SaveAll(rival.Jobs(), rivalClips);
  CompareFiles(library, rival, "saved again");
  CompareReads(library, rival, clips, "saved again");

  // Twice, so that both the insert and the update of each row run.
  for (int round = 0; round < 2; ++round) {
    SaveGroupsAndSequences(library.Jobs());
    SaveGroupsAndSequences(rival.Jobs());
    CompareFiles(library, rival, "with groups and sequences");
    CompareGroupsAndSequences(library, rival);
  }

  for (int i = 0; i < 4; ++i) {
    library.Jobs().Delete(clips[static_cast<std::size_t>(i)]);
    rival.Jobs().Delete(rivalClips[static_cast<std::size_t>(i)]);
  }
  CompareFiles(library, rival, "after deletions");
  library.Jobs().DeleteAbove(10);
  rival.Jobs().DeleteAbove(10);
  CompareFiles(library, rival, "after a deletion by query");
}

}  // namespace Oru::Benchmarks
