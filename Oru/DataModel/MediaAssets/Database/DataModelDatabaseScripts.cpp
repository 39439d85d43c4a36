#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

// The stored file. Every statement may run on a file that has it all already, as it does at every opening.
//
// Each script takes the write lock first and then reads the schema anew. Several processes may open one new
// file at once, and since each sets the schema version back to 2, a schema that was read before the lock can
// be an old one under a version that looks current: what IF NOT EXISTS then makes a second time leaves a file
// that nobody can read.
namespace Oru::DataModel::MediaAssets::Database {

// Columns stand in the tables in this order and with these declared types: both are part of the format of the
// file. Foreign keys are switched on outside the transaction, where alone SQLite heeds it.
const std::string DataModelDatabase::createStatements = R"sql(
PRAGMA schema_version = 2;
PRAGMA foreign_keys = ON;
BEGIN IMMEDIATE TRANSACTION creation;
PRAGMA writable_schema = RESET;

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
BEGIN IMMEDIATE TRANSACTION fts;
PRAGMA writable_schema = RESET;
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

// Without these, every read by owner, every cascade and every clean-up would walk whole tables. Owners that
// lead a primary key or a unique constraint need none.
const std::string DataModelDatabase::lookupIndexStatements = R"sql(
BEGIN IMMEDIATE TRANSACTION lookup;
PRAGMA writable_schema = RESET;
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
CREATE INDEX IF NOT EXISTS LookupAnnotationRefMediaAsset ON Annotation(refMediaAsset);
CREATE INDEX IF NOT EXISTS LookupSequenceEditRef ON Sequence(editRef);
CREATE INDEX IF NOT EXISTS LookupDapOperatorMetadataSequenceZuServerId ON DapOperatorMetadataSequence(zuServerId);
COMMIT TRANSACTION lookup;
)sql";

}  // namespace Oru::DataModel::MediaAssets::Database
