#include "Oru/DataModel/MediaAssets/Database/Columns/MediaAssetSearchColumns.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

// The stored file. Every statement may run on a file that has it all already. Several processes may open one
// new file at once: see DataModelDatabase::Create for the lock.
namespace Oru::DataModel::MediaAssets::Database {

namespace {

// For what searches compute: SQLite takes it where a statement has the same expression.
std::string LookupIndex(const std::string& name, const std::string& indexed) {
  return "CREATE INDEX IF NOT EXISTS Lookup" + name + " ON " + indexed + ";\n";
}

}  // namespace

// The tables have their columns in this order and with these declared types: both are part of the format of the
// file. Foreign keys are switched on outside the transaction, where alone SQLite heeds it.
const std::string DataModelDatabase::createStatements = R"sql(
PRAGMA schema_version = 2;
PRAGMA foreign_keys = ON;
BEGIN TRANSACTION creation;

CREATE TABLE IF NOT EXISTS MediaAsset (
  key integer primary key autoincrement,
  id text unique,
  assetType int,
  ancestor text,
  parent text,
  name text,
  description text,
  inBoundary integer,
  inBoundaryMoving int,
  outBoundary integer,
  outBoundaryMoving int,
  modificationDate integer,
  creationDate integer
);

CREATE TABLE IF NOT EXISTS MediaResource (
  key integer primary key autoincrement,
  id text unique,
  name text,
  generalFormat int,
  modificationDate integer,
  creationDate integer
);

CREATE TABLE IF NOT EXISTS RelationMediaAssetMediaResource (
  refMediaAsset integer not null,
  refMediaResource integer not null,
  foreign key (refMediaAsset) references MediaAsset(key) on delete cascade,
  foreign key (refMediaResource) references MediaResource(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS Stream (
  key integer primary key autoincrement,
  id text unique,
  refMediaResource integer not null,
  wrapperFormat int,
  unique (key, refMediaResource),
  foreign key (refMediaResource) references MediaResource(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS Essence (
  key integer primary key autoincrement,
  refStream integer not null,
  nr int not null,
  channelCount int not null check (channelCount>=0),
  unique (nr, refStream),
  foreign key (refStream) references Stream(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS VideoEssence (
  refEssence integer primary key,
  videoCodec int not null,
  bitRate int not null,
  bitRateMode int not null,
  bitDepth int not null,
  frameRateNum int not null,
  frameRateDen int not null,
  height int not null,
  width int not null,
  chromaSubSampling int not null,
  colorSpace int not null,
  scanMode int not null,
  fourCC text not null,
  aspectRatioWidthFactor int not null,
  aspectRatioHeightFactor int not null,
  boxing int not null,
  foreign key (refEssence) references Essence(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS AudioEssence (
  refEssence integer primary key,
  audioCodec int not null,
  bitRate int not null,
  bitRateMode int not null,
  bitDepth int not null,
  sampleRateNum int not null,
  sampleRateDen int not null,
  fourCC text not null,
  foreign key (refEssence) references Essence(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS DataEssence (
  refEssence integer primary key,
  foreign key (refEssence) references Essence(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS MediaAssetGroup (
  key integer primary key autoincrement,
  id varchar(30) unique,
  type text,
  name text
);

CREATE TABLE IF NOT EXISTS AnglesMediaAssetGroup (
  refMediaAssetGroup Integer primary key,
  foreign key (refMediaAssetGroup) references MediaAssetGroup(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS MediaAssetGroupItem (
  key integer primary key autoincrement,
  refMediaAssetGroup integer not null,
  refMediaAsset integer not null,
  foreign key (refMediaAssetGroup) references MediaAssetGroup(key) on delete cascade,
  foreign key (refMediaAsset) references MediaAsset(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS AnglesMediaAssetGroupItem (
  refMediaAssetGroupItem Integer primary key,
  angleIndex integer,
  name text,
  foreign key (refMediaAssetGroupItem) references MediaAssetGroupItem(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS DapOperatorMetadataAngles (
  refAngles Integer primary key,
  dapIdPage Integer,
  dapIdBank Integer,
  dapIdRow Integer,
  zuServerId Integer,
  foreign key (refAngles) references AnglesMediaAssetGroup(refMediaAssetGroup) on delete cascade
);

CREATE TABLE IF NOT EXISTS Track (
  key integer primary key autoincrement,
  id text unique,
  name text
);

CREATE TABLE IF NOT EXISTS RelationAssetTrack (
  refMediaAsset integer not null,
  refTrack integer not null,
  foreign key (refMediaAsset) references MediaAsset(key) on delete cascade,
  foreign key (refTrack) references Track(key) on delete cascade
);

/*
CREATE TABLE IF NOT EXISTS TrackLayout (
  key integer primary key autoincrement,
  id text unique,
  name text,
  refMediaAsset integer not null
);
CREATE TABLE IF NOT EXISTS TrackLayoutItem (
  key integer primary key autoincrement,
  id text unique,
  name text,
  refTrackLayout integer not null
);
CREATE TABLE IF NOT EXISTS RelationTrackLayoutItemTrack (
  refTrackLayoutItem integer not null,
  refTrack integer not null,
  primary key (refTrackLayoutItem, refTrack)
);
*/

CREATE TABLE IF NOT EXISTS TrackChannel (
  refTrack Integer,
  refEssence Integer,
  channelNr Integer check (channelNr >= 0),
  primary key (refTrack, refEssence, channelNr),
  foreign key (refTrack) references Track(key) on delete cascade,
  foreign key (refEssence) references Essence(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS TimeBoundsMediaAsset (
  foreignKey Integer,
  inBoundary integer,
  inBoundaryMoving int,
  outBoundary integer,
  outBoundaryMoving int,
  unique (foreignKey, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving),
  foreign key (foreignKey) references MediaAsset(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS TimeBoundsMediaResource (
  foreignKey Integer,
  inBoundary integer,
  inBoundaryMoving int,
  outBoundary integer,
  outBoundaryMoving int,
  unique (foreignKey, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving),
  foreign key (foreignKey) references MediaResource(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS TimeBoundsStream (
  foreignKey Integer,
  inBoundary integer,
  inBoundaryMoving int,
  outBoundary integer,
  outBoundaryMoving int,
  unique (foreignKey, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving),
  foreign key (foreignKey) references Stream(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS MetadataMediaAsset (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references MediaAsset(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS MetadataMediaResource (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references MediaResource(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS MetadataStream (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Stream(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS MetadataEssence (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Essence(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS MetadataAnnotation (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Annotation(key) on delete cascade
);

-- An operatorId text is to come.
CREATE TABLE IF NOT EXISTS DapOperatorMetadata (
  refMediaAsset integer primary key,
  zuServerId Integer,
  dapIdPage Integer,
  dapIdBank Integer,
  dapIdRow Integer,
  dapIdCamera Integer check ((dapIdCamera > 64 and dapIdCamera < 77) or dapIdCamera = 0),
  umId text,
  varId text,
  rating Integer,
  archiveStatus Integer,
  userTimecodeType Integer,
  primaryTimecode Integer,
  userTimecode Integer,
  userTimecodeFormat Integer,
  todTimecode Integer,
  todTimecodeFormat Integer,
  icon text,
  color Integer,
  userProtected Integer,
  dapUIProtected Integer,
  fillAndKeyType Integer,
  fillAndKeyMediaAssetId text,
  foreign key (refMediaAsset) references MediaAsset(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS DapOperatorKeywords (
  refDapOperatorMetadata integer,
  nr Integer,
  keyword text,
  primary key (refDapOperatorMetadata, nr),
  foreign key (refDapOperatorMetadata) references DapOperatorMetadata(refMediaAsset) on delete cascade
);

CREATE TABLE IF NOT EXISTS Annotation (
  key integer primary key autoincrement,
  refMediaAsset integer,
  annotationType integer,
  data text,
  inBoundary integer,
  inBoundaryMoving int,
  outBoundary integer,
  outBoundaryMoving int,
  foreign key (refMediaAsset) references MediaAsset(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS Edit (
  key integer primary key autoincrement,
  id text unique,
  name text,
  creationDate integer,
  creationOwner text,
  modificationDate integer,
  modificationOwner text
);

CREATE TABLE IF NOT EXISTS MetadataEdit (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Edit(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS Sequence (
  key integer primary key autoincrement,
  id text unique,
  name text,
  version integer,
  duration integer,
  fixedDuration integer,
  timepoint integer,
  creationDate integer,
  creationOwner text,
  modificationDate integer,
  modificationOwner text,
  editRef integer,
  foreign key (editRef) references Edit(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS MetadataSequence (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Sequence(key) on delete cascade
);

CREATE TABLE IF NOT EXISTS DapOperatorMetadataSequence (
  refSequence Integer primary key,
  zuServerId Integer,
  dapIdPage Integer,
  dapIdBank Integer,
  dapIdRow Integer,
  umId text,
  varId text,
  nbVideoElements Integer,
  archiveStatus Integer,
  tcRegenOn Integer,
  tcRegenContinuity Integer,
  tcRegenReference Integer,
  tcRegenTimecodeRef Integer,
  tcRegenTimecodeRefFormat Integer,
  tcRegenOutput Integer,
  foreign key (refSequence) references Sequence(key) on delete cascade
);

COMMIT TRANSACTION creation;
)sql";

// The full-text index over name and description of assets. It holds no text of its own and is written by the
// triggers alone: https://sqlite.org/fts5.html#external_content_tables
const std::string DataModelDatabase::indexStatements = R"sql(
BEGIN TRANSACTION fts;
CREATE VIRTUAL TABLE IF NOT EXISTS MediaAssetFts USING fts5(name, description, content='MediaAsset', content_rowid='key');
CREATE TRIGGER IF NOT EXISTS MediaAssetFtsAfterInsert AFTER INSERT ON MediaAsset BEGIN
  INSERT INTO MediaAssetFts(rowid, name, description) VALUES (new.key, new.name, new.description);
END;
CREATE TRIGGER IF NOT EXISTS MediaAssetFtsAfterDelete AFTER DELETE ON MediaAsset BEGIN
  INSERT INTO MediaAssetFts(MediaAssetFts, rowid, name, description) VALUES('delete', old.key, old.name, old.description);
END;
CREATE TRIGGER IF NOT EXISTS MediaAssetFtsAfterUpdate AFTER UPDATE ON MediaAsset BEGIN
  INSERT INTO MediaAssetFts(MediaAssetFts, rowid, name, description) VALUES('delete', old.key, old.name, old.description);
  INSERT INTO MediaAssetFts(rowid, name, description) VALUES (new.key, new.name, new.description);
END;
COMMIT TRANSACTION fts;
)sql";

const std::string DataModelDatabase::populateStatements = "\n\n";

const std::string DataModelDatabase::viewStatements = "\n\n";

// Without these, every read by owner, every cascade and every clean-up would walk whole tables, and every
// page of a list would sort them. Owners that lead a primary key or a unique constraint need none.
const std::string DataModelDatabase::lookupIndexStatements =
    R"sql(
CREATE INDEX IF NOT EXISTS LookupMediaAssetName ON MediaAsset(name);
CREATE INDEX IF NOT EXISTS LookupMediaAssetCreationDate ON MediaAsset(creationDate);
CREATE INDEX IF NOT EXISTS LookupMediaAssetModificationDate ON MediaAsset(modificationDate);
CREATE INDEX IF NOT EXISTS LookupRelationMediaAssetMediaResourceRefMediaAsset ON RelationMediaAssetMediaResource(refMediaAsset);
CREATE INDEX IF NOT EXISTS LookupRelationMediaAssetMediaResourceRefMediaResource ON RelationMediaAssetMediaResource(refMediaResource);
CREATE INDEX IF NOT EXISTS LookupStreamRefMediaResource ON Stream(refMediaResource);
CREATE INDEX IF NOT EXISTS LookupEssenceRefStream ON Essence(refStream);
CREATE INDEX IF NOT EXISTS LookupMediaAssetGroupItemRefMediaAssetGroup ON MediaAssetGroupItem(refMediaAssetGroup);
CREATE INDEX IF NOT EXISTS LookupMediaAssetGroupItemRefMediaAsset ON MediaAssetGroupItem(refMediaAsset);
CREATE INDEX IF NOT EXISTS LookupRelationAssetTrackRefMediaAsset ON RelationAssetTrack(refMediaAsset);
CREATE INDEX IF NOT EXISTS LookupRelationAssetTrackRefTrack ON RelationAssetTrack(refTrack);
CREATE INDEX IF NOT EXISTS LookupTrackChannelRefEssence ON TrackChannel(refEssence);
CREATE INDEX IF NOT EXISTS LookupDapOperatorMetadataZuServerId ON DapOperatorMetadata(zuServerId);
CREATE INDEX IF NOT EXISTS LookupDapOperatorMetadataPlace ON DapOperatorMetadata(zuServerId, dapIdPage, dapIdBank, dapIdRow, dapIdCamera);
DROP INDEX IF EXISTS LookupDapOperatorKeywordsKeyword;
CREATE INDEX IF NOT EXISTS LookupDapOperatorKeywordsKeywordAndOwner ON DapOperatorKeywords(keyword COLLATE NOCASE, refDapOperatorMetadata);
CREATE INDEX IF NOT EXISTS LookupAnnotationRefMediaAsset ON Annotation(refMediaAsset);
CREATE INDEX IF NOT EXISTS LookupSequenceEditRef ON Sequence(editRef);
CREATE INDEX IF NOT EXISTS LookupDapOperatorMetadataSequenceZuServerId ON DapOperatorMetadataSequence(zuServerId);
)sql" +
    LookupIndex("MediaAssetDuration", "MediaAsset(" + SearchColumns::DurationOfMarks() + ")") +
    LookupIndex("DapOperatorMetadataPlaceOrder",
                "DapOperatorMetadata(" + SearchColumns::PlaceOfProfile() + ")") +
    LookupIndex("DapOperatorMetadataProtected",
                "DapOperatorMetadata(refMediaAsset) WHERE " + SearchColumns::Protected());

// SQLite plans by these numbers what it joins. They call MediaAsset small, whatever it holds: a list then
// follows an index of that table and asks the full-text index for one row at a time, instead of walking the
// full-text index and sorting. True numbers don't do that, since SQLite takes a full-text index for a million
// rows. https://sqlite.org/fileformat2.html#the_sqlite_stat1_table
const std::string DataModelDatabase::statisticsStatements = R"sql(
ANALYZE main.sqlite_schema;
DELETE FROM main.sqlite_stat1 WHERE tbl = 'MediaAsset';
INSERT INTO main.sqlite_stat1(tbl, idx, stat) SELECT 'MediaAsset', name, '1000 1' FROM pragma_index_list('MediaAsset', 'main');
ANALYZE main.sqlite_schema;
)sql";
// The indexes that lack theirs.
const std::string DataModelDatabase::lackingStatistics =
    "SELECT name FROM pragma_index_list('MediaAsset', 'main') WHERE NOT EXISTS"
    " (SELECT 1 FROM main.sqlite_stat1 WHERE tbl = 'MediaAsset' AND idx = name AND stat = '1000 1')";

}  // namespace Oru::DataModel::MediaAssets::Database
