#include "Oru/Common/Databases/Sqlite/TableSqlite.h"

#include "support/CapturedLog.h"
#include "support/DescribedTable.h"
#include "support/SqlValues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace Oru::Common::Databases::Sqlite {

using TestSupport::Note;
using TestSupport::NoteTable;
using TestSupport::NoteView;
using TestSupport::Value;

class TableSqliteTest : public testing::Test {
 protected:
  TableSqliteTest() {
    db.Open();
    db.ExecuteStatement(NoteTable::CreateText);
  }

  int64_t Saved(const std::string& text, std::optional<int64_t> weight = {}) {
    Note note{-1, text, weight};
    EXPECT_TRUE(table.Save(note));
    return note.key;
  }
  std::string Weights() {
    return Value(db, "SELECT group_concat(text || coalesce(weight, '-'), ' ') FROM Note");
  }

  TestSupport::CapturedLog log;
  DatabaseSqlite db{":memory:", log.Stream()};
  NoteTable table{db};
};

TEST_F(TableSqliteTest, SavesReadsAndDeletesByTheObjectId) {
  Note note{-1, "a", 5}, read;
  EXPECT_TRUE(table.Save(note));
  EXPECT_EQ(note.key, 1);
  note.weight.reset();
  EXPECT_TRUE(table.Save(note, false));
  EXPECT_EQ(note.key, 1);
  EXPECT_EQ(Saved("b", 7), 2);
  EXPECT_EQ(Weights(), "a- b7");
  EXPECT_TRUE(table.Exists(1) && !table.Exists(3) && !table.Exists(-1));
  EXPECT_TRUE(table.GetObject(2, read) && read.text == "b" && read.weight == 7);
  EXPECT_FALSE(table.GetObject(3, read, false));
  EXPECT_EQ(read.text, "b");
  Note unstored{17, "c", {}};
  EXPECT_TRUE(table.Save(unstored));
  EXPECT_EQ(Weights(), "a- b7");
  EXPECT_TRUE(table.Delete(note));
  EXPECT_EQ(note.key, -1);
  EXPECT_TRUE(table.Delete(17));
  EXPECT_EQ(Weights(), "b7");
  EXPECT_EQ(log.Text(), "");
}

TEST_F(TableSqliteTest, DeletesWhatAQuerySelects) {
  for (const char* text : {"a", "b", "c"})
    Saved(text);
  QuerySqlite query;
  EXPECT_TRUE(table.Delete(query.GreaterThan("text", "a").LessThan("text", "c")));
  EXPECT_EQ(Weights(), "a- c-");
  db.ExecuteStatement("CREATE TRIGGER Keep BEFORE DELETE ON Note BEGIN SELECT RAISE(ABORT, 'kept'); END");
  Note note{1, "a", {}};
  EXPECT_FALSE(table.Delete(note));
  EXPECT_EQ(note.key, 1);
  EXPECT_THAT(log.Lines(), testing::ElementsAre(testing::HasSubstr("kept")));
  db.ExecuteStatement("DROP TRIGGER Keep");
  EXPECT_TRUE(table.DeleteAll());
  EXPECT_EQ(Value(db, "SELECT count(*) FROM Note"), "0");
  EXPECT_EQ(table.GetLastObjectId(), 0);
}

TEST_F(TableSqliteTest, AWriteThatFailsLeavesTheObjectAndTheNextOneAlone) {
  Saved("a");
  Note twin{-1, "a", 5}, thrown{-1, "throw", 6}, keyless{-1, "keyless", 7};
  EXPECT_FALSE(table.Save(twin));
  EXPECT_EQ(twin.key, -1);
  EXPECT_THAT(log.Lines(), testing::ElementsAre(testing::HasSubstr("UNIQUE constraint failed")));
  EXPECT_EQ(Saved("b"), 2);
  EXPECT_THROW(table.Save(thrown), std::runtime_error);
  EXPECT_EQ(Saved("c"), 3);
  EXPECT_FALSE(table.Save(keyless));
  EXPECT_EQ(keyless.key, -1);
  twin.key = 2;
  EXPECT_FALSE(table.Save(twin));
  thrown.key = 2;
  EXPECT_THROW(table.Save(thrown), std::runtime_error);
  Note good{2, "bb", {}};
  EXPECT_TRUE(table.Save(good));
  EXPECT_EQ(Weights(), "a- bb- c- keyless7");
}

TEST_F(TableSqliteTest, TheKeyIsThatOfTheRowWhateverTriggersInsertBeside) {
  ASSERT_TRUE(
      db.ExecuteStatement("CREATE TABLE History (id integer primary key, what text);"
                          "CREATE VIRTUAL TABLE Search USING fts5(text);"
                          "INSERT INTO History VALUES (500, 'old');"
                          "CREATE TRIGGER Before BEFORE INSERT ON Note BEGIN"
                          " INSERT INTO History (what) VALUES (new.text); END;"
                          "CREATE TRIGGER After AFTER INSERT ON Note BEGIN"
                          " INSERT INTO Search (rowid, text) VALUES (new.key * 1000, new.text);"
                          " INSERT INTO History (what) SELECT what FROM History; END;"));
  for (int64_t key = 1; key < 6; ++key) {
    EXPECT_EQ(Saved("note " + std::to_string(key)), key);
    db.ExecuteStatement("INSERT INTO Search (text) VALUES ('between')");
    EXPECT_EQ(table.GetLastObjectId(), key);
  }
  EXPECT_EQ(Value(db, "SELECT count(*) FROM Search WHERE Search MATCH 'note'"), "5");
}

TEST_F(TableSqliteTest, OpensCursorsNewAndAgainOverAllRowsOrTheQuerys) {
  for (int i = 0; i < 10; ++i)
    Saved(std::string(1, static_cast<char>('a' + i)), i);
  QuerySqlite query;
  query.GreaterThan("weight", 3).OrderByDesc("text").Limit(2, 1);
  ObjectCursorSqlite<Note, Note> objects;
  RawCursorSqlite rows;
  const auto texts = [](ObjectCursor<Note, Note>& cursor) {
    std::string all;
    for (Note note; cursor.Next(note);)
      all += note.text;
    return all + std::to_string(cursor.GetTotalItemsCount());
  };
  const auto rawTexts = [](RawCursor& cursor) {
    std::string all;
    for (RawReadSqlite row; cursor.Next(row);)
      all += row.GetString("text");
    return all + std::to_string(cursor.GetTotalItemsCount());
  };
  EXPECT_EQ(texts(*table.OpenObjectCursor()) + rawTexts(*table.OpenRawCursor()), "abcdefghij10abcdefghij10");
  EXPECT_EQ(texts(*table.OpenObjectCursor(query)) + rawTexts(*table.OpenRawCursor(query)), "ih6ih6");
  for (int i = 0; i < 2; ++i) {
    table.OpenObjectCursor(objects);
    table.OpenRawCursor(rows);
    EXPECT_EQ(texts(objects) + rawTexts(rows), "abcdefghij10abcdefghij10");
    table.OpenObjectCursor(objects, query, false);
    EXPECT_TRUE(objects.Next());
    table.OpenObjectCursor(objects, query);
    table.OpenRawCursor(rows, query);
    EXPECT_EQ(texts(objects) + rawTexts(rows), "ih6ih6");
  }
  table.lazyFlags.clear();
  Note note;
  table.OpenObjectCursor(false)->Next(note);
  table.OpenObjectCursor(query, false)->Next(note);
  table.GetObject(1, note, false);
  table.GetObject(1, note);
  EXPECT_EQ(table.lazyFlags, (std::vector<bool>{false, false, false, true}));
}

TEST_F(TableSqliteTest, ConditionsFollowTheViewsOwnClauses) {
  for (const char* text : {"a", "b", "c"})
    Saved(text, *text);
  table.whereClause = "text <> 'b'";
  table.Regenerate();
  Note note;
  EXPECT_TRUE(table.GetObject(1, note) && !table.GetObject(2, note));
  table.whereClause.clear();
  table.groupByClause = "weight > 98";
  table.selectColumns = {"max(key)", "text", "weight"};
  table.aliases = {"key"};
  table.Regenerate();
  QuerySqlite query;
  query.Equals("text", "c");
  EXPECT_EQ(table.OpenObjectCursor()->GetTotalItemsCount(), 2);
  EXPECT_EQ(table.OpenObjectCursor(query)->GetTotalItemsCount(), 1);
  EXPECT_TRUE(table.GetObject(3, note) && !table.GetObject(1, note));
}

TEST_F(TableSqliteTest, AViewIsCreatedReadAndRefusedWithSqlitesText) {
  Saved("a", 1);
  Saved("b", 2);
  NoteView view(db);
  view.tableName = "Heavy";
  view.selectColumns = {"Note.key", "upper(text)", "weight"};
  view.aliases = {"key", "text"};
  view.joinClause = "FROM Note WHERE weight > 1";
  view.SetSelect(view.StatementGenerator().GenerateSelectStatement());
  view.SetCreate(view.StatementGenerator().GenerateCreateStatement());
  view.Create();
  view.Create();
  Note note;
  EXPECT_TRUE(view.GetObject(2, note) && !view.GetObject(1, note) && view.Exists(2) && !view.Exists(1));
  EXPECT_EQ(note.text, "B");
  view.SetCreate("CREATE VIEW Odd AS SELECT * FRM Note");
  EXPECT_THAT([&] { view.Create(); }, testing::ThrowsMessage<NotSupportedException>(
                                          testing::HasSubstr("near \"FRM\": syntax error (in file ")));
}

}  // namespace Oru::Common::Databases::Sqlite
