#pragma once

#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "Side.h"
#include "Statement.h"

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Oru::Benchmarks {

/// The jobs of the library's tables, written by hand on SQLite's C API for these entities alone: each
/// statement is prepared once and kept, values are bound, columns are read by their places. It writes the
/// same rows and reads the same objects as the library, which `CheckSameResults` proves.
///
/// It runs what the tables must run to keep their promises (old rows of an owner go before the new ones come,
/// keys are looked up by identifier), and no more: under a row that it has just inserted it deletes and looks up
/// nothing.
class Rival final : public Side {
 public:
  /// @param handle  a connection to a file with all tables, which must outlive the object
  explicit Rival(sqlite3* handle);

  void Begin() override { begin.Run(); }
  void Commit() override { commit.Run(); }

  void Save(MediaAsset& asset) override;
  int64_t FindKey(const Identifier& id) override { return Find(findAsset.With(id.Value())); }
  bool GetAsset(int64_t key, MediaAsset& asset) override;
  void ReadDeep(int64_t key, MediaAsset& asset) override;
  void ReadLazy(int64_t key, MediaAsset& asset) override;
  int Walk() override;
  int WalkPlain() override;
  std::vector<MediaAsset> Search(const std::string& text, int limit) override;
  std::vector<MediaAsset> Match(const std::string& word, int limit) override;
  std::vector<std::string> MatchNames(const std::string& word, int limit) override;
  void Delete(MediaAsset& asset) override;
  void DeleteAbove(int64_t key) override;

  void SaveGroup(AnglesMediaAssetGroup& group) override;
  void ReadGroup(const Identifier& id, AnglesMediaAssetGroup& group) override;
  void SaveSequence(Sequence& sequence) override;
  void ReadSequence(const Identifier& id, Sequence& sequence) override;

 private:
  using MetadataProfileDictionary = BusinessEntityModel::BaseTypes::MetadataProfileDictionary;
  using MediaResource = DataModel::MediaAssets::MediaResource;
  using Stream = DataModel::MediaAssets::Stream;
  using Essence = DataModel::MediaAssets::Essence;
  using VideoEssence = DataModel::MediaAssets::VideoEssence;
  using AudioEssence = DataModel::MediaAssets::AudioEssence;
  using Track = DataModel::MediaAssets::Track;
  using TimeBoundsArray = DataModel::MediaAssets::TimeBoundsArray;

  int Walk(Statement& select);

  /// The rows of one table by their owner.
  struct OwnedRows {
    OwnedRows(sqlite3* handle, const std::string& table, const std::string& columns);

    Statement remove;
    Statement insert;
    Statement select;
  };

  /// The time bounds of one kind of owner.
  struct BoundsTable : OwnedRows {
    BoundsTable(sqlite3* handle, const std::string& table);
    void Write(int64_t owner, bool isNew, const TimeBoundsArray& bounds);
    void Read(int64_t owner, TimeBoundsArray& bounds);
  };

  /// The generic metadata of one kind of owner.
  struct EntriesTable : OwnedRows {
    EntriesTable(sqlite3* handle, const std::string& table);
    void Write(int64_t owner, bool isNew, const MetadataProfileDictionary& metadata);
    void Read(int64_t owner, MetadataProfileDictionary& metadata);
  };

  static int64_t Find(Statement& bound);
  int64_t Insert(Statement& bound);
  static void ReadAsset(const Rows& row, MediaAsset& asset);
  static std::vector<MediaAsset> ReadAssets(Statement& bound);

  void SaveAssetRow(MediaAsset& asset);
  void WriteAnnotations(MediaAsset& asset, bool isNew);
  void WriteOperator(MediaAsset& asset, bool isNew);
  void SaveResource(MediaResource& resource);
  void SaveStream(Stream& stream, int64_t resourceKey);
  void SaveEssence(Essence& essence, int64_t streamKey, bool isStreamNew);
  void SaveKind(const VideoEssence& video, bool isNew);
  void SaveKind(const AudioEssence& audio, bool isNew);
  void SaveTrack(Track& track);

  void ReadOwnParts(MediaAsset& asset);
  void ReadOperator(MediaAsset& asset);
  void ReadAnnotations(MediaAsset& asset);
  void ReadResources(MediaAsset& asset);
  void ReadStreams(MediaResource& resource);
  void ReadEssences(Stream& stream);
  void ReadTracks(MediaAsset& asset, bool deep);
  void ReadChannels(Track& track);
  void LoadStreams(Track& track);

  sqlite3* handle;
  Statement begin, commit;
  Statement findAsset, insertAsset, updateAsset, selectAsset, selectAllAssets, selectAllPlain, searchAssets,
      matchAssets;
  Statement deleteAsset, deleteAssetsAbove, deleteUnusedResources, deleteUnusedTracks, deleteEmptyGroups;
  BoundsTable assetBounds, resourceBounds, streamBounds;
  EntriesTable assetEntries, annotationEntries, resourceEntries, streamEntries, essenceEntries,
      sequenceEntries;
  Statement deleteAnnotations, insertAnnotation, selectAnnotations;
  Statement findOperator, insertOperator, updateOperator, selectOperator;
  Statement deleteKeywords, insertKeyword, selectKeywords;
  Statement findResource, insertResource, updateResource, selectResources, selectResourceIds, linkResource;
  Statement findStream, insertStream, updateStream, selectStreams, selectStreamById;
  Statement findEssence, insertEssence, updateEssence;
  Statement insertVideo, updateVideo, selectVideos;
  Statement insertAudio, updateAudio, selectAudios;
  Statement insertData, updateData, selectDatas;
  Statement findTrack, insertTrack, updateTrack, selectTracks, linkTrack;
  Statement deleteChannels, findChannelEssence, insertChannel, selectChannels;
  Statement findGroup, insertGroup, updateGroup;
  Statement deleteItems, insertItem, insertAngleItem, selectAngleItems, selectItemAsset;
  Statement findAngles, insertAngles, updateAngles, findAnglesById, selectAngles;
  Statement findAnglesOperator, insertAnglesOperator, updateAnglesOperator, selectAnglesOperator;
  Statement findSequence, insertSequence, updateSequence, selectSequence;
  Statement findSequenceOperator, insertSequenceOperator, updateSequenceOperator, selectSequenceOperator;
};

}  // namespace Oru::Benchmarks
