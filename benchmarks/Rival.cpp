#include "Rival.h"

namespace Oru::Benchmarks {

namespace {

const std::string assetColumns =
    "SELECT MediaAsset.key AS key, MediaAsset.id AS id, MediaAsset.assetType AS assetType, "
    "MediaAsset.ancestor AS ancestor, MediaAsset.parent AS parent, MediaAsset.name AS name, "
    "MediaAsset.description AS description, MediaAsset.inBoundary AS inBoundary, "
    "MediaAsset.inBoundaryMoving AS inBoundaryMoving, MediaAsset.outBoundary AS outBoundary, "
    "MediaAsset.outBoundaryMoving AS outBoundaryMoving, MediaAsset.modificationDate AS modificationDate, "
    "MediaAsset.creationDate AS creationDate, highlight(MediaAssetFts, 0, '<b>', '</b>') AS nameFts, "
    "highlight(MediaAssetFts, 1, '<b>', '</b>') AS descriptionFts "
    "FROM MediaAsset JOIN MediaAssetFts ON  MediaAsset.key = MediaAssetFts.rowid";

const std::string videoColumns =
    "videoCodec, bitRate, bitRateMode, bitDepth, frameRateNum, frameRateDen, height, width, "
    "chromaSubSampling, colorSpace, scanMode, fourCC, aspectRatioWidthFactor, aspectRatioHeightFactor, "
    "boxing";

const std::string audioColumns =
    "audioCodec, bitRate, bitRateMode, sampleRateNum, sampleRateDen, bitDepth, fourCC";

const std::string operatorColumns =
    "zuServerId, dapIdPage, dapIdBank, dapIdRow, dapIdCamera, umId, varId, rating, archiveStatus, "
    "userTimecodeType, primaryTimecode, userTimecode, userTimecodeFormat, todTimecode, todTimecodeFormat, "
    "icon, color, userProtected, dapUIProtected, fillAndKeyType, fillAndKeyMediaAssetId";

const std::string sequenceColumns =
    "id, name, version, duration, fixedDuration, timepoint, creationDate, creationOwner, modificationDate, "
    "modificationOwner, editRef";

const std::string sequenceOperatorColumns =
    "zuServerId, dapIdPage, dapIdBank, dapIdRow, umId, varId, nbVideoElements, archiveStatus, tcRegenOn, "
    "tcRegenContinuity, tcRegenReference, tcRegenTimecodeRef, tcRegenTimecodeRefFormat, tcRegenOutput";

// "INSERT INTO t (a, b) VALUES (?, ?)" from the list of columns.
std::string InsertInto(const std::string& table, const std::string& columns) {
  std::string places("?");
  for (const char letter : columns) {
    if (letter == ',') places += ", ?";
  }
  return "INSERT INTO " + table + " (" + columns + ") VALUES (" + places + ")";
}

// "UPDATE t SET a = ?, b = ? WHERE key = ?"
std::string UpdateOf(const std::string& table, const std::string& columns, const std::string& key) {
  std::string settings;
  for (const char letter : columns)
    settings += letter == ',' ? std::string(" = ?,") : std::string(1, letter);
  return "UPDATE " + table + " SET " + settings + " = ? WHERE " + key + " = ?";
}

std::string EssencesOf(const std::string& table, const std::string& columns) {
  return "SELECT key, refStream, nr, channelCount, refEssence" + columns + " FROM Essence JOIN " + table +
         " ON Essence.key == " + table + ".refEssence WHERE refStream = ?";
}

const std::string boundsColumns = "foreignKey, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving";
const std::string entriesColumns = "foreignKey, fullyQualifiedName, name, value";
const std::string assetWritten =
    "ancestor, parent, id, assetType, name, description, inBoundary, inBoundaryMoving, outBoundary, "
    "outBoundaryMoving, modificationDate, creationDate";
const std::string annotationWritten =
    "refMediaAsset, annotationType, data, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving";
const std::string resourceWritten = "id, name, generalFormat, modificationDate, creationDate";

}  // namespace

Rival::OwnedRows::OwnedRows(sqlite3* handle, const std::string& table, const std::string& columns)
    : remove(handle, "DELETE FROM " + table + " WHERE foreignKey = ?"),
      insert(handle, InsertInto(table, columns)),
      select(handle, "SELECT " + columns + " FROM " + table + " WHERE foreignKey = ?") {}

Rival::BoundsTable::BoundsTable(sqlite3* handle, const std::string& table)
    : OwnedRows(handle, table, boundsColumns) {}

Rival::EntriesTable::EntriesTable(sqlite3* handle, const std::string& table)
    : OwnedRows(handle, table, entriesColumns) {}

Rival::Rival(sqlite3* connection)
    : handle(connection),
      begin(handle, "BEGIN IMMEDIATE"),
      commit(handle, "COMMIT"),
      findAsset(handle, "SELECT key FROM MediaAsset WHERE id = ?"),
      insertAsset(handle, InsertInto("MediaAsset", assetWritten)),
      updateAsset(handle, UpdateOf("MediaAsset", assetWritten, "key")),
      selectAsset(handle, assetColumns + " WHERE MediaAsset.key = ?"),
      selectAllAssets(handle, assetColumns),
      selectAllPlain(
          handle,
          "SELECT key, id, assetType, ancestor, parent, name, description, inBoundary, inBoundaryMoving, "
          "outBoundary, outBoundaryMoving, modificationDate, creationDate FROM MediaAsset"),
      searchAssets(handle, assetColumns + " WHERE MediaAsset.name LIKE ? ESCAPE '\\' LIMIT ?"),
      matchAssets(handle, assetColumns + " WHERE MediaAssetFts MATCH ? ORDER BY MediaAssetFts.rank LIMIT ?"),
      deleteAsset(handle, "DELETE FROM MediaAsset WHERE key = ?"),
      deleteAssetsAbove(handle, "DELETE FROM MediaAsset WHERE key > ?"),
      deleteUnusedResources(handle,
                            "DELETE FROM MediaResource WHERE NOT (key IN (SELECT refMediaResource FROM "
                            "RelationMediaAssetMediaResource))"),
      deleteUnusedTracks(handle,
                         "DELETE FROM Track WHERE NOT (key IN (SELECT refTrack FROM RelationAssetTrack))"),
      deleteEmptyGroups(handle,
                        "DELETE FROM MediaAssetGroup WHERE NOT (key IN (SELECT refMediaAssetGroup FROM "
                        "MediaAssetGroupItem))"),
      assetBounds(handle, "TimeBoundsMediaAsset"),
      resourceBounds(handle, "TimeBoundsMediaResource"),
      streamBounds(handle, "TimeBoundsStream"),
      assetEntries(handle, "MetadataMediaAsset"),
      annotationEntries(handle, "MetadataAnnotation"),
      resourceEntries(handle, "MetadataMediaResource"),
      streamEntries(handle, "MetadataStream"),
      essenceEntries(handle, "MetadataEssence"),
      sequenceEntries(handle, "MetadataSequence"),
      deleteAnnotations(handle, "DELETE FROM Annotation WHERE refMediaAsset = ?"),
      insertAnnotation(handle, InsertInto("Annotation", annotationWritten)),
      selectAnnotations(handle,
                        "SELECT key, refMediaAsset, annotationType, data, inBoundary, inBoundaryMoving, "
                        "outBoundary, outBoundaryMoving FROM Annotation WHERE refMediaAsset = ?"),
      findOperator(handle, "SELECT refMediaAsset FROM DapOperatorMetadata WHERE refMediaAsset = ?"),
      insertOperator(handle, InsertInto("DapOperatorMetadata", operatorColumns + ", refMediaAsset")),
      updateOperator(handle, UpdateOf("DapOperatorMetadata", operatorColumns, "refMediaAsset")),
      selectOperator(handle, "SELECT refMediaAsset, " + operatorColumns +
                                 " FROM DapOperatorMetadata WHERE refMediaAsset = ?"),
      deleteKeywords(handle, "DELETE FROM DapOperatorKeywords WHERE refDapOperatorMetadata = ?"),
      insertKeyword(handle, InsertInto("DapOperatorKeywords", "refDapOperatorMetadata, nr, keyword")),
      selectKeywords(handle,
                     "SELECT refDapOperatorMetadata, nr, keyword FROM DapOperatorKeywords WHERE "
                     "refDapOperatorMetadata = ?"),
      findResource(handle, "SELECT key FROM MediaResource WHERE id = ?"),
      insertResource(handle, InsertInto("MediaResource", resourceWritten)),
      updateResource(handle, UpdateOf("MediaResource", resourceWritten, "key")),
      selectResources(handle, "SELECT key, " + resourceWritten +
                                  " FROM MediaResource WHERE key IN (SELECT refMediaResource FROM "
                                  "RelationMediaAssetMediaResource WHERE refMediaAsset = ?)"),
      selectResourceIds(handle,
                        "SELECT id FROM MediaResource WHERE key IN(SELECT refMediaResource FROM "
                        "RelationMediaAssetMediaResource WHERE refMediaAsset = ?)"),
      linkResource(handle, InsertInto("RelationMediaAssetMediaResource", "refMediaAsset, refMediaResource")),
      findStream(handle, "SELECT key FROM Stream WHERE id = ?"),
      insertStream(handle, InsertInto("Stream", "id, refMediaResource, wrapperFormat")),
      updateStream(handle, UpdateOf("Stream", "id, refMediaResource, wrapperFormat", "key")),
      selectStreams(handle,
                    "SELECT key, id, refMediaResource, wrapperFormat FROM Stream WHERE refMediaResource = ?"),
      selectStreamById(handle, "SELECT key, id, refMediaResource, wrapperFormat FROM Stream WHERE id = ?"),
      findEssence(handle, "SELECT key FROM Essence WHERE refStream = ? AND nr = ?"),
      insertEssence(handle, InsertInto("Essence", "refStream, nr, channelCount")),
      updateEssence(handle, UpdateOf("Essence", "refStream, nr, channelCount", "key")),
      insertVideo(handle, InsertInto("VideoEssence", videoColumns + ", refEssence")),
      updateVideo(handle, UpdateOf("VideoEssence", videoColumns, "refEssence")),
      selectVideos(handle, EssencesOf("VideoEssence", ", " + videoColumns)),
      insertAudio(handle, InsertInto("AudioEssence", audioColumns + ", refEssence")),
      updateAudio(handle, UpdateOf("AudioEssence", audioColumns, "refEssence")),
      selectAudios(handle, EssencesOf("AudioEssence", ", " + audioColumns)),
      insertData(handle, InsertInto("DataEssence", "refEssence")),
      updateData(handle, UpdateOf("DataEssence", "refEssence", "refEssence")),
      selectDatas(handle, EssencesOf("DataEssence", "")),
      findTrack(handle, "SELECT key FROM Track WHERE id = ?"),
      insertTrack(handle, InsertInto("Track", "id, name")),
      updateTrack(handle, UpdateOf("Track", "id, name", "key")),
      selectTracks(handle,
                   "SELECT key, id, name FROM Track WHERE key IN (SELECT refTrack FROM RelationAssetTrack "
                   "WHERE refMediaAsset = ?)"),
      linkTrack(handle, InsertInto("RelationAssetTrack", "refMediaAsset, refTrack")),
      deleteChannels(handle, "DELETE FROM TrackChannel WHERE refTrack = ?"),
      findChannelEssence(handle,
                         "SELECT e.key as essenceKey FROM Essence e JOIN Stream s ON e.refStream = s.key "
                         "WHERE e.nr = ? and s.id = ?"),
      insertChannel(handle, InsertInto("TrackChannel", "refTrack, refEssence, channelNr")),
      selectChannels(handle,
                     "SELECT s.id as streamId, e.nr as essenceNr, t.channelNr as channelNr FROM TrackChannel "
                     "t JOIN Essence e ON t.refEssence = e.key JOIN Stream s ON e.refStream = s.key WHERE "
                     "t.refTrack = ?"),
      findGroup(handle, "SELECT key FROM MediaAssetGroup WHERE id = ?"),
      insertGroup(handle, InsertInto("MediaAssetGroup", "id, type, name")),
      updateGroup(handle, UpdateOf("MediaAssetGroup", "id, type, name", "key")),
      deleteItems(handle, "DELETE FROM MediaAssetGroupItem WHERE refMediaAssetGroup = ?"),
      insertItem(handle, InsertInto("MediaAssetGroupItem", "refMediaAssetGroup, refMediaAsset")),
      insertAngleItem(handle,
                      InsertInto("AnglesMediaAssetGroupItem", "refMediaAssetGroupItem, angleIndex, name")),
      selectAngleItems(handle,
                       "SELECT key, refMediaAssetGroup, refMediaAsset, refMediaAssetGroupItem, angleIndex, "
                       "name FROM MediaAssetGroupItem JOIN AnglesMediaAssetGroupItem ON "
                       "MediaAssetGroupItem.key == AnglesMediaAssetGroupItem.refMediaAssetGroupItem WHERE "
                       "refMediaAssetGroup = ? ORDER BY angleIndex ASC"),
      selectItemAsset(handle, assetColumns +
                                  " WHERE MediaAsset.key IN (SELECT refMediaAsset FROM MediaAssetGroupItem "
                                  "WHERE key = ?)"),
      findAngles(handle, "SELECT refMediaAssetGroup FROM AnglesMediaAssetGroup WHERE refMediaAssetGroup = ?"),
      insertAngles(handle, InsertInto("AnglesMediaAssetGroup", "refMediaAssetGroup")),
      updateAngles(handle, UpdateOf("AnglesMediaAssetGroup", "refMediaAssetGroup", "refMediaAssetGroup")),
      findAnglesById(handle,
                     "SELECT refMediaAssetGroup FROM AnglesMediaAssetGroup JOIN MediaAssetGroup ON "
                     "MediaAssetGroup.key == AnglesMediaAssetGroup.refMediaAssetGroup WHERE "
                     "MediaAssetGroup.Id = ?"),
      selectAngles(handle,
                   "SELECT key, id, type, name, refMediaAssetGroup FROM MediaAssetGroup JOIN "
                   "AnglesMediaAssetGroup ON MediaAssetGroup.key == AnglesMediaAssetGroup.refMediaAssetGroup "
                   "WHERE AnglesMediaAssetGroup.refMediaAssetGroup = ?"),
      findAnglesOperator(handle, "SELECT refAngles FROM DapOperatorMetadataAngles WHERE refAngles = ?"),
      insertAnglesOperator(handle, InsertInto("DapOperatorMetadataAngles",
                                              "zuServerId, dapIdPage, dapIdBank, dapIdRow, refAngles")),
      updateAnglesOperator(handle, UpdateOf("DapOperatorMetadataAngles",
                                            "zuServerId, dapIdPage, dapIdBank, dapIdRow", "refAngles")),
      selectAnglesOperator(handle,
                           "SELECT refAngles, zuServerId, dapIdPage, dapIdBank, dapIdRow FROM "
                           "DapOperatorMetadataAngles WHERE refAngles = ?"),
      findSequence(handle, "SELECT key FROM Sequence WHERE id = ?"),
      insertSequence(handle, InsertInto("Sequence", sequenceColumns)),
      updateSequence(handle, UpdateOf("Sequence", sequenceColumns, "key")),
      selectSequence(handle, "SELECT key, " + sequenceColumns + " FROM Sequence WHERE Sequence.key = ?"),
      findSequenceOperator(handle,
                           "SELECT refSequence FROM DapOperatorMetadataSequence WHERE refSequence = ?"),
      insertSequenceOperator(
          handle, InsertInto("DapOperatorMetadataSequence", sequenceOperatorColumns + ", refSequence")),
      updateSequenceOperator(handle,
                             UpdateOf("DapOperatorMetadataSequence", sequenceOperatorColumns, "refSequence")),
      selectSequenceOperator(handle, "SELECT refSequence, " + sequenceOperatorColumns +
                                         " FROM DapOperatorMetadataSequence WHERE refSequence = ?") {}

int64_t Rival::Find(Statement& bound) {
  Rows rows(bound);
  return rows.Next() ? rows->Int64(0) : -1;
}

int64_t Rival::Insert(Statement& bound) {
  bound.Run();
  return sqlite3_last_insert_rowid(handle);
}

void Rival::Delete(MediaAsset& asset) {
  deleteAsset.With(asset.ObjectId()).Run();
  deleteUnusedResources.Run();
  deleteUnusedTracks.Run();
  deleteEmptyGroups.Run();
  asset.ObjectId(-1);
}

void Rival::DeleteAbove(int64_t key) {
  deleteAssetsAbove.With(key).Run();
  deleteUnusedResources.Run();
  deleteUnusedTracks.Run();
  deleteEmptyGroups.Run();
}

}  // namespace Oru::Benchmarks
