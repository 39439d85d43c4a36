#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;
using TestSupport::Column;
using TestSupport::Value;

namespace {

std::string Bounds(const std::string& owner) {
  return "foreignKey Integer, inBoundary integer, inBoundaryMoving int, outBoundary integer, "
         "outBoundaryMoving "
         "int, unique (foreignKey, inBoundary, inBoundaryMoving, outBoundary, outBoundaryMoving), foreign "
         "key "
         "(foreignKey) references " +
         owner + "(key) on delete cascade";
}

std::string Metadata(const std::string& owner) {
  return "foreignKey Integer, fullyQualifiedName text, name text, value text, primary key (foreignKey, "
         "fullyQualifiedName, name), foreign key (foreignKey) references " +
         owner + "(key) on delete cascade";
}

// What stands between the outer parentheses of each table, with single blanks.
const std::map<std::string, std::string> expectedTables = {
    {"MediaAsset",
     "key integer primary key autoincrement, id text unique, assetType int, ancestor text, parent text, name "
     "text, description text, inBoundary integer, inBoundaryMoving int, outBoundary integer, "
     "outBoundaryMoving int, modificationDate integer, creationDate integer"},
    {"MediaResource",
     "key integer primary key autoincrement, id text unique, name text, generalFormat int, modificationDate "
     "integer, creationDate integer"},
    {"RelationMediaAssetMediaResource",
     "refMediaAsset integer not null, refMediaResource integer not null, foreign key (refMediaAsset) "
     "references MediaAsset(key) on delete cascade, foreign key (refMediaResource) references "
     "MediaResource(key) on delete cascade"},
    {"Stream",
     "key integer primary key autoincrement, id text unique, refMediaResource integer not null, "
     "wrapperFormat "
     "int, unique (key, refMediaResource), foreign key (refMediaResource) references MediaResource(key) on "
     "delete cascade"},
    {"Essence",
     "key integer primary key autoincrement, refStream integer not null, nr int not null, channelCount int "
     "not null check (channelCount>=0), unique (nr, refStream), foreign key (refStream) references "
     "Stream(key) on delete cascade"},
    {"VideoEssence",
     "refEssence integer primary key, videoCodec int not null, bitRate int not null, bitRateMode int not "
     "null, bitDepth int not null, frameRateNum int not null, frameRateDen int not null, height int not "
     "null, "
     "width int not null, chromaSubSampling int not null, colorSpace int not null, scanMode int not null, "
     "fourCC text not null, aspectRatioWidthFactor int not null, aspectRatioHeightFactor int not null, "
     "boxing "
     "int not null, foreign key (refEssence) references Essence(key) on delete cascade"},
    {"AudioEssence",
     "refEssence integer primary key, audioCodec int not null, bitRate int not null, bitRateMode int not "
     "null, bitDepth int not null, sampleRateNum int not null, sampleRateDen int not null, fourCC text not "
     "null, foreign key (refEssence) references Essence(key) on delete cascade"},
    {"DataEssence",
     "refEssence integer primary key, foreign key (refEssence) references Essence(key) on delete cascade"},
    {"MediaAssetGroup", "key integer primary key autoincrement, id varchar(30) unique, type text, name text"},
    {"AnglesMediaAssetGroup",
     "refMediaAssetGroup Integer primary key, foreign key (refMediaAssetGroup) references "
     "MediaAssetGroup(key) on delete cascade"},
    {"MediaAssetGroupItem",
     "key integer primary key autoincrement, refMediaAssetGroup integer not null, refMediaAsset integer not "
     "null, foreign key (refMediaAssetGroup) references MediaAssetGroup(key) on delete cascade, foreign key "
     "(refMediaAsset) references MediaAsset(key) on delete cascade"},
    {"AnglesMediaAssetGroupItem",
     "refMediaAssetGroupItem Integer primary key, angleIndex integer, name text, foreign key "
     "(refMediaAssetGroupItem) references MediaAssetGroupItem(key) on delete cascade"},
    {"DapOperatorMetadataAngles",
     "refAngles Integer primary key, dapIdPage Integer, dapIdBank Integer, dapIdRow Integer, zuServerId "
     "Integer, foreign key (refAngles) references AnglesMediaAssetGroup(refMediaAssetGroup) on delete "
     "cascade"},
    {"Track", "key integer primary key autoincrement, id text unique, name text"},
    {"RelationAssetTrack",
     "refMediaAsset integer not null, refTrack integer not null, foreign key (refMediaAsset) references "
     "MediaAsset(key) on delete cascade, foreign key (refTrack) references Track(key) on delete cascade"},
    {"TrackChannel",
     "refTrack Integer, refEssence Integer, channelNr Integer check (channelNr >= 0), primary key (refTrack, "
     "refEssence, channelNr), foreign key (refTrack) references Track(key) on delete cascade, foreign key "
     "(refEssence) references Essence(key) on delete cascade"},
    {"TimeBoundsMediaAsset", Bounds("MediaAsset")},
    {"TimeBoundsMediaResource", Bounds("MediaResource")},
    {"TimeBoundsStream", Bounds("Stream")},
    {"MetadataMediaAsset", Metadata("MediaAsset")},
    {"MetadataMediaResource", Metadata("MediaResource")},
    {"MetadataStream", Metadata("Stream")},
    {"MetadataEssence", Metadata("Essence")},
    {"MetadataAnnotation", Metadata("Annotation")},
    {"MetadataEdit", Metadata("Edit")},
    {"MetadataSequence", Metadata("Sequence")},
    {"DapOperatorMetadata",
     "refMediaAsset integer primary key, zuServerId Integer, dapIdPage Integer, dapIdBank Integer, dapIdRow "
     "Integer, dapIdCamera Integer check ((dapIdCamera > 64 and dapIdCamera < 77) or dapIdCamera = 0), umId "
     "text, varId text, rating Integer, archiveStatus Integer, userTimecodeType Integer, primaryTimecode "
     "Integer, userTimecode Integer, userTimecodeFormat Integer, todTimecode Integer, todTimecodeFormat "
     "Integer, icon text, color Integer, userProtected Integer, dapUIProtected Integer, fillAndKeyType "
     "Integer, fillAndKeyMediaAssetId text, foreign key (refMediaAsset) references MediaAsset(key) on delete "
     "cascade"},
    {"DapOperatorKeywords",
     "refDapOperatorMetadata integer, nr Integer, keyword text, primary key (refDapOperatorMetadata, nr), "
     "foreign key (refDapOperatorMetadata) references DapOperatorMetadata(refMediaAsset) on delete cascade"},
    {"Annotation",
     "key integer primary key autoincrement, refMediaAsset integer, annotationType integer, data text, "
     "inBoundary integer, inBoundaryMoving int, outBoundary integer, outBoundaryMoving int, foreign key "
     "(refMediaAsset) references MediaAsset(key) on delete cascade"},
    {"Edit",
     "key integer primary key autoincrement, id text unique, name text, creationDate integer, creationOwner "
     "text, modificationDate integer, modificationOwner text"},
    {"Sequence",
     "key integer primary key autoincrement, id text unique, name text, version integer, duration integer, "
     "fixedDuration integer, timepoint integer, creationDate integer, creationOwner text, modificationDate "
     "integer, modificationOwner text, editRef integer, foreign key (editRef) references Edit(key) on delete "
     "cascade"},
    {"DapOperatorMetadataSequence",
     "refSequence Integer primary key, zuServerId Integer, dapIdPage Integer, dapIdBank Integer, dapIdRow "
     "Integer, umId text, varId text, nbVideoElements Integer, archiveStatus Integer, tcRegenOn Integer, "
     "tcRegenContinuity Integer, tcRegenReference Integer, tcRegenTimecodeRef Integer, "
     "tcRegenTimecodeRefFormat Integer, tcRegenOutput Integer, foreign key (refSequence) references "
     "Sequence(key) on delete cascade"},
};

// By the row that goes, the tables whose rows go with it.
const std::map<std::string, std::vector<std::string>> expectedCascades = {
    {"MediaAsset",
     {"RelationMediaAssetMediaResource", "RelationAssetTrack", "MediaAssetGroupItem", "TimeBoundsMediaAsset",
      "MetadataMediaAsset", "DapOperatorMetadata", "Annotation"}},
    {"MediaResource",
     {"RelationMediaAssetMediaResource", "Stream", "TimeBoundsMediaResource", "MetadataMediaResource"}},
    {"Stream", {"Essence", "TimeBoundsStream", "MetadataStream"}},
    {"Essence", {"VideoEssence", "AudioEssence", "DataEssence", "TrackChannel", "MetadataEssence"}},
    {"Track", {"RelationAssetTrack", "TrackChannel"}},
    {"MediaAssetGroup", {"AnglesMediaAssetGroup", "MediaAssetGroupItem"}},
    {"AnglesMediaAssetGroup", {"DapOperatorMetadataAngles"}},
    {"MediaAssetGroupItem", {"AnglesMediaAssetGroupItem"}},
    {"DapOperatorMetadata", {"DapOperatorKeywords"}},
    {"Annotation", {"MetadataAnnotation"}},
    {"Edit", {"MetadataEdit", "Sequence"}},
    {"Sequence", {"MetadataSequence", "DapOperatorMetadataSequence"}},
};

std::string WithSingleBlanks(const std::string& text) {
  std::string result;
  for (const char c : text) {
    const bool isBlank = c == ' ' || c == '\n';
    if (!isBlank) {
      result += c;
    } else if (!result.empty() && result.back() != ' ' && result.back() != '(') {
      result += ' ';
    }
  }
  return result;
}

}  // namespace

class DataModelDatabaseScriptsTest : public testing::Test {
 protected:
  DataModelDatabaseScriptsTest() { database.Open(); }

  // The statement that made a table, an index or a trigger.
  std::string Made(const std::string& name) {
    return WithSingleBlanks(Value(database, "SELECT sql FROM sqlite_master WHERE name = '" + name + "'"));
  }

  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  DataModelDatabase database{directory.File("clips.db"), log.Stream()};
};

TEST_F(DataModelDatabaseScriptsTest, TheFileHoldsTheseTablesWithTheseColumnsAndConstraintsInThisOrder) {
  for (const auto& [table, content] : expectedTables) {
    const std::string sql = Made(table);
    const std::size_t begin = sql.find('(') + 1;
    const std::size_t end = sql.rfind(')');
    ASSERT_NE(end, std::string::npos) << table;
    std::string body = sql.substr(begin, end - begin);
    if (body.back() == ' ') body.pop_back();
    EXPECT_EQ(body, content) << table;
  }
  EXPECT_EQ(expectedTables.size(), 32U);

  std::vector<std::string> names = {"Props", "MediaAssetFts"};
  for (const auto& table : expectedTables)
    names.push_back(table.first);
  // The last two conditions pass over the inner tables of the index and those of SQLite.
  EXPECT_THAT(
      Column(database,
             "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'MediaAssetFts\\_%' "
             "ESCAPE '\\' AND name NOT LIKE 'sqlite%'"),
      UnorderedElementsAreArray(names));
  EXPECT_THAT(Column(database, "SELECT name FROM sqlite_temp_master"), IsEmpty());
}

TEST_F(DataModelDatabaseScriptsTest, EveryForeignKeyCascadesFromAnOwnerToWhatItOwns) {
  std::vector<std::string> expected;
  for (const auto& [owner, tables] : expectedCascades) {
    for (const std::string& table : tables)
      expected.push_back(owner + " > " + table + " CASCADE");
  }
  EXPECT_THAT(Column(database,
                     "SELECT f.\"table\" || ' > ' || m.name || ' ' || f.on_delete FROM sqlite_master m, "
                     "pragma_foreign_key_list(m.name) f WHERE m.type = 'table'"),
              UnorderedElementsAreArray(expected));
  EXPECT_EQ(Value(database, "PRAGMA foreign_keys"), "1");
}

TEST_F(DataModelDatabaseScriptsTest, TheFullTextIndexIsWrittenByTriggersAlone) {
  EXPECT_EQ(Made("MediaAssetFts"),
            "CREATE VIRTUAL TABLE MediaAssetFts USING fts5(name, description, content='MediaAsset', "
            "content_rowid='key')");
  const std::string insert =
      "INSERT INTO MediaAssetFts(rowid, name, description) VALUES (new.key, new.name, new.description); ";
  const std::string remove =
      "INSERT INTO MediaAssetFts(MediaAssetFts, rowid, name, description) VALUES('delete', old.key, "
      "old.name, "
      "old.description); ";
  const auto trigger = [](const std::string& event, const std::string& body) {
    return "CREATE TRIGGER MediaAssetFtsAfter" + event + " ON MediaAsset BEGIN " + body + "END";
  };
  EXPECT_EQ(Made("MediaAssetFtsAfterInsert"), trigger("Insert AFTER INSERT", insert));
  EXPECT_EQ(Made("MediaAssetFtsAfterDelete"), trigger("Delete AFTER DELETE", remove));
  EXPECT_EQ(Made("MediaAssetFtsAfterUpdate"), trigger("Update AFTER UPDATE", remove + insert));
  EXPECT_EQ(Value(database, "SELECT count(*) FROM sqlite_master WHERE type = 'trigger'"), "3");

  const auto found = [&](const std::string& term) {
    return Column(database, "SELECT rowid FROM MediaAssetFts WHERE MediaAssetFts MATCH '" + term + "'");
  };
  ASSERT_TRUE(
      database.ExecuteStatement("INSERT INTO MediaAsset(key, name, description) VALUES"
                                "(7, 'Opening', 'fireworks'), (8, 'Closing', 'fireworks')"));
  EXPECT_THAT(found("fireworks"), ElementsAre("7", "8"));
  ASSERT_TRUE(database.ExecuteStatement("UPDATE MediaAsset SET name = 'Second half' WHERE key = 7"));
  EXPECT_THAT(found("opening"), IsEmpty());
  EXPECT_THAT(found("half"), ElementsAre("7"));
  ASSERT_TRUE(database.ExecuteStatement("DELETE FROM MediaAsset WHERE key = 7"));
  EXPECT_THAT(found("fireworks"), ElementsAre("8"));
}

TEST_F(DataModelDatabaseScriptsTest, EveryReadByOwnerGoesThroughAnIndex) {
  EXPECT_THAT(
      Column(database,
             "SELECT substr(sql, instr(sql, ' ON ') + 4) FROM sqlite_master WHERE name LIKE 'Lookup%'"),
      UnorderedElementsAreArray(
          {"RelationMediaAssetMediaResource(refMediaAsset)",
           "RelationMediaAssetMediaResource(refMediaResource)", "Stream(refMediaResource)",
           "Essence(refStream)", "MediaAssetGroupItem(refMediaAssetGroup)",
           "MediaAssetGroupItem(refMediaAsset)", "RelationAssetTrack(refMediaAsset)",
           "RelationAssetTrack(refTrack)", "TrackChannel(refEssence)", "DapOperatorMetadata(zuServerId)",
           "Annotation(refMediaAsset)", "Sequence(editRef)", "DapOperatorMetadataSequence(zuServerId)"}));
  for (const std::string& key : Column(database,
                                       "SELECT m.name || ' WHERE ' || f.\"from\" FROM sqlite_master m, "
                                       "pragma_foreign_key_list(m.name) f WHERE m.type = 'table'")) {
    Common::Databases::Sqlite::CursorSqlite plan(database,
                                                 "EXPLAIN QUERY PLAN SELECT * FROM " + key + " = 5");
    ASSERT_TRUE(plan.Step()) << key;
    EXPECT_THAT(plan.GetString("detail"), testing::StartsWith("SEARCH")) << key;
  }
}

TEST_F(DataModelDatabaseScriptsTest, ConstraintsHold) {
  ASSERT_TRUE(database.ExecuteStatement(
      "INSERT INTO MediaAsset(key, id) VALUES (1, 'a'); INSERT INTO MediaResource(key, id) VALUES (1, 'r');"
      "INSERT INTO Stream(key, id, refMediaResource) VALUES (1, 's', 1); INSERT INTO Track(key) VALUES (1);"
      "INSERT INTO Essence VALUES (1, 1, 0, 0); INSERT INTO TimeBoundsStream VALUES (1, 2, 0, 3, 1);"));
  const auto camera = [](const std::string& value) {
    return "REPLACE INTO DapOperatorMetadata(refMediaAsset, dapIdCamera) VALUES (1, " + value + ")";
  };
  struct {
    std::string sql;
    bool isAccepted;
  } const cases[] = {
      {camera("64"), false},
      {camera("65"), true},
      {camera("76"), true},
      {camera("77"), false},
      {camera("0"), true},
      {camera("NULL"), true},
      {"INSERT INTO MediaAsset(id) VALUES ('a')", false},
      {"INSERT INTO MediaAsset(id) VALUES ('A')", true},
      {"INSERT INTO Essence VALUES (2, 1, 0, 0)", false},
      {"INSERT INTO Essence VALUES (2, 1, 1, -1)", false},
      {"INSERT INTO Essence VALUES (2, 9, 0, 0)", false},
      {"INSERT INTO TrackChannel VALUES (1, 1, -1)", false},
      {"INSERT INTO TrackChannel VALUES (1, 1, 0)", true},
      {"INSERT INTO TrackChannel VALUES (1, 1, 0)", false},
      {"INSERT INTO TimeBoundsStream VALUES (1, 2, 0, 3, 1)", false},
      {"INSERT INTO TimeBoundsStream VALUES (1, 2, 1, 3, 1)", true},
      {"INSERT INTO MediaAssetGroup(id) VALUES (printf('%.*c', 100, 'x'))", true},
      {"INSERT INTO Sequence(id) VALUES ('without an edit')", true},
  };
  for (const auto& [sql, isAccepted] : cases)
    EXPECT_EQ(database.ExecuteStatement(sql), isAccepted) << sql;
}

// SQLite counts the version up with each change of the schema, and each opening sets it back.
TEST_F(DataModelDatabaseScriptsTest, OpeningAgainChangesNothingButTheSchemaVersion) {
  EXPECT_GT(std::stoi(Value(database, "PRAGMA schema_version")), 2);
  ASSERT_TRUE(database.ExecuteStatement("INSERT INTO MediaAsset(id, name) VALUES ('a', 'kept')"));
  const std::string schema = "SELECT type || name || coalesce(sql, '') FROM sqlite_master ORDER BY rowid";
  const auto before = Column(database, schema);
  for (int i = 0; i < 2; ++i) {
    database.Close();
    database.Open();
    EXPECT_EQ(Value(database, "PRAGMA schema_version"), "2");
    EXPECT_EQ(Column(database, schema), before);
    EXPECT_THAT(Column(database, "SELECT name FROM MediaAsset"), ElementsAre("kept"));
  }
  EXPECT_EQ(Value(database, "PRAGMA integrity_check"), "ok");
  EXPECT_EQ(log.Text(), "");
}

}  // namespace Oru::DataModel::MediaAssets::Database
