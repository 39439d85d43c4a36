CREATE TABLE Props (
  key integer primary key autoincrement,
  name text not null unique,
  stringValue text,
  intValue integer
);

CREATE TABLE MediaAsset (
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

CREATE TABLE MediaResource (
  key integer primary key autoincrement,
  id text unique,
  name text,
  generalFormat int,
  modificationDate integer,
  creationDate integer
);

CREATE TABLE RelationMediaAssetMediaResource (
  refMediaAsset integer not null,
  refMediaResource integer not null,
  foreign key (refMediaAsset) references MediaAsset(key) on delete cascade,
  foreign key (refMediaResource) references MediaResource(key) on delete cascade
);

CREATE TABLE Stream (
  key integer primary key autoincrement,
  id text unique,
  refMediaResource integer not null,
  wrapperFormat int,
  unique (key, refMediaResource),
  foreign key (refMediaResource) references MediaResource(key) on delete cascade
);

CREATE TABLE Essence (
  key integer primary key autoincrement,
  refStream integer not null,
  nr int not null,
  channelCount int not null check (channelCount>=0),
  unique (nr, refStream),
  foreign key (refStream) references Stream(key) on delete cascade
);

CREATE TABLE VideoEssence (
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

CREATE TABLE AudioEssence (
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

CREATE TABLE DataEssence (
  refEssence integer primary key,
  foreign key (refEssence) references Essence(key) on delete cascade
);

CREATE TABLE MediaAssetGroup (
  key integer primary key autoincrement,
  id varchar(30) unique,
  type text,
  name text
);

CREATE TABLE AnglesMediaAssetGroup (
  refMediaAssetGroup Integer primary key,
  foreign key (refMediaAssetGroup) references MediaAssetGroup(key) on delete cascade
);

CREATE TABLE MediaAssetGroupItem (
  key integer primary key autoincrement,
  refMediaAssetGroup integer not null,
  refMediaAsset integer not null,
  foreign key (refMediaAssetGroup) references MediaAssetGroup(key) on delete cascade,
  foreign key (refMediaAsset) references MediaAsset(key) on delete cascade
);

CREATE TABLE AnglesMediaAssetGroupItem (
  refMediaAssetGroupItem Integer primary key,
  angleIndex integer,
  name text,
  foreign key (refMediaAssetGroupItem) references MediaAssetGroupItem(key) on delete cascade
);

CREATE TABLE DapOperatorMetadataAngles (
  refAngles Integer primary key,
  dapIdPage Integer,
  dapIdBank Integer,
  dapIdRow Integer,
  zuServerId Integer,
  foreign key (refAngles) references AnglesMediaAssetGroup(refMediaAssetGroup) on delete cascade
);

CREATE TABLE Track (
  key integer primary key autoincrement,
  id text unique,
  name text
);

CREATE TABLE RelationAssetTrack (
  refMediaAsset integer not null,
  refTrack integer not null,
  foreign key (refMediaAsset) references MediaAsset(key) on delete cascade,
  foreign key (refTrack) references Track(key) on delete cascade
);

CREATE TABLE TrackChannel (
  refTrack Integer,
  refEssence Integer,
  channelNr Integer check (channelNr >= 0),
  primary key (refTrack, refEssence, channelNr),
  foreign key (refTrack) references Track(key) on delete cascade,
  foreign key (refEssence) references Essence(key) on delete cascade
);

CREATE TABLE TimeBoundsMediaAsset (
  foreignKey Integer,
  inBoundary integer,
  inBoundaryMoving int,
  outBoundary integer,
  outBoundaryMoving int,
  unique (foreignKey, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving),
  foreign key (foreignKey) references MediaAsset(key) on delete cascade
);

CREATE TABLE TimeBoundsMediaResource (
  foreignKey Integer,
  inBoundary integer,
  inBoundaryMoving int,
  outBoundary integer,
  outBoundaryMoving int,
  unique (foreignKey, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving),
  foreign key (foreignKey) references MediaResource(key) on delete cascade
);

CREATE TABLE TimeBoundsStream (
  foreignKey Integer,
  inBoundary integer,
  inBoundaryMoving int,
  outBoundary integer,
  outBoundaryMoving int,
  unique (foreignKey, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving),
  foreign key (foreignKey) references Stream(key) on delete cascade
);

CREATE TABLE MetadataMediaAsset (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references MediaAsset(key) on delete cascade
);

CREATE TABLE MetadataMediaResource (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references MediaResource(key) on delete cascade
);

CREATE TABLE MetadataStream (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Stream(key) on delete cascade
);

CREATE TABLE MetadataEssence (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Essence(key) on delete cascade
);

CREATE TABLE MetadataAnnotation (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Annotation(key) on delete cascade
);

CREATE TABLE DapOperatorMetadata (
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

CREATE TABLE DapOperatorKeywords (
  refDapOperatorMetadata integer,
  nr Integer,
  keyword text,
  primary key (refDapOperatorMetadata, nr),
  foreign key (refDapOperatorMetadata) references DapOperatorMetadata(refMediaAsset) on delete cascade
);

CREATE TABLE Annotation (
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

CREATE TABLE Edit (
  key integer primary key autoincrement,
  id text unique,
  name text,
  creationDate integer,
  creationOwner text,
  modificationDate integer,
  modificationOwner text
);

CREATE TABLE MetadataEdit (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Edit(key) on delete cascade
);

CREATE TABLE Sequence (
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

CREATE TABLE MetadataSequence (
  foreignKey Integer,
  fullyQualifiedName text,
  name text,
  value text,
  primary key (foreignKey, fullyQualifiedName, name),
  foreign key (foreignKey) references Sequence(key) on delete cascade
);

CREATE TABLE DapOperatorMetadataSequence (
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

CREATE VIRTUAL TABLE MediaAssetFts USING fts5(name, description, content='MediaAsset', content_rowid='key');

CREATE TRIGGER MediaAssetFtsAfterInsert AFTER INSERT ON MediaAsset BEGIN
  INSERT INTO MediaAssetFts(rowid, name, description) VALUES (new.key, new.name, new.description);
END;

CREATE TRIGGER MediaAssetFtsAfterDelete AFTER DELETE ON MediaAsset BEGIN
  INSERT INTO MediaAssetFts(MediaAssetFts, rowid, name, description) VALUES('delete', old.key, old.name, old.description);
END;

CREATE TRIGGER MediaAssetFtsAfterUpdate AFTER UPDATE ON MediaAsset BEGIN
  INSERT INTO MediaAssetFts(MediaAssetFts, rowid, name, description) VALUES('delete', old.key, old.name, old.description);
  INSERT INTO MediaAssetFts(rowid, name, description) VALUES (new.key, new.name, new.description);
END;

CREATE INDEX LookupMediaAssetName ON MediaAsset(name);
CREATE INDEX LookupMediaAssetCreationDate ON MediaAsset(creationDate);
CREATE INDEX LookupMediaAssetModificationDate ON MediaAsset(modificationDate);
CREATE INDEX LookupRelationMediaAssetMediaResourceRefMediaAsset ON RelationMediaAssetMediaResource(refMediaAsset);
CREATE INDEX LookupRelationMediaAssetMediaResourceRefMediaResource ON RelationMediaAssetMediaResource(refMediaResource);
CREATE INDEX LookupStreamRefMediaResource ON Stream(refMediaResource);
CREATE INDEX LookupEssenceRefStream ON Essence(refStream);
CREATE INDEX LookupMediaAssetGroupItemRefMediaAssetGroup ON MediaAssetGroupItem(refMediaAssetGroup);
CREATE INDEX LookupMediaAssetGroupItemRefMediaAsset ON MediaAssetGroupItem(refMediaAsset);
CREATE INDEX LookupRelationAssetTrackRefMediaAsset ON RelationAssetTrack(refMediaAsset);
CREATE INDEX LookupRelationAssetTrackRefTrack ON RelationAssetTrack(refTrack);
CREATE INDEX LookupTrackChannelRefEssence ON TrackChannel(refEssence);
CREATE INDEX LookupDapOperatorMetadataPlace ON DapOperatorMetadata(zuServerId, dapIdPage, dapIdBank, dapIdRow, dapIdCamera);
CREATE INDEX LookupDapOperatorKeywordsKeyword ON DapOperatorKeywords(keyword COLLATE NOCASE);
CREATE INDEX LookupAnnotationRefMediaAsset ON Annotation(refMediaAsset);
CREATE INDEX LookupSequenceEditRef ON Sequence(editRef);
CREATE INDEX LookupDapOperatorMetadataSequenceZuServerId ON DapOperatorMetadataSequence(zuServerId);
