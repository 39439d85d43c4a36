#include "Oru/Common/Databases/Sqlite/TableSqlite.h"

#include "Oru/Common/Databases/Sqlite/PropertiesTableSqlite.h"
#include "Oru/Common/Databases/Sqlite/TableStatementGenerator.h"

#include "support/CapturedLog.h"
#include "support/DescribedTable.h"
#include "support/SqlValues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <random>

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

  TestSupport::CapturedLog log;
  DatabaseSqlite db{":memory:", log.Stream()};
  NoteTable table{db};
};

TEST_F(TableSqliteTest, KeepsWhatAMapKeepsWhateverTriggersInsertBeside) {
  ASSERT_TRUE(
      db.ExecuteStatement("CREATE TABLE History (id integer primary key, what text);"
                          "CREATE VIRTUAL TABLE Search USING fts5(text);"
                          "INSERT INTO History VALUES (500, 'old');"
                          "CREATE TRIGGER Before BEFORE INSERT ON Note BEGIN"
                          " INSERT INTO History (what) VALUES (new.text); END;"
                          "CREATE TRIGGER After AFTER INSERT ON Note BEGIN"
                          " INSERT INTO Search (rowid, text) VALUES (new.key * 1000, new.text);"
                          " INSERT INTO History (what) VALUES (new.text), (new.text); END;"));
  std::mt19937 random(31);
  std::map<int64_t, std::string> model;
  int64_t lastKey = 0;
  const std::string texts[] = {"a", "b", "c", "d", "e", "f", "throw", "keyless"};
  const auto line = [](const Note& note) {
    return note.text + (note.weight ? std::to_string(*note.weight) : "-");
  };
  for (int step = 0; step < 4000; ++step) {
    const int64_t key = lastKey + 1 - static_cast<int64_t>(random() % 12);
    const auto action = random() % 8;
    // A deleted note must be given the key -1.
    Note note{action < 3 ? -1 : key, texts[random() % (action < 6 ? 8 : 6)], {}};
    if (random() % 2 == 0) note.weight = step;
    if (action < 6) {
      const bool isNew = note.key == -1, isStored = isNew || model.count(key) == 1;
      const bool isTaken = isStored && std::any_of(model.begin(), model.end(), [&](const auto& row) {
                             return row.first != note.key && row.second.rfind(note.text, 0) == 0;
                           });
      if (note.text == "throw") {
        ASSERT_THROW(table.Save(note), std::runtime_error);
        continue;
      }
      ASSERT_EQ(table.Save(note, step % 2 == 0), !isTaken && !(isNew && note.text == "keyless"));
      if (isNew && !isTaken) ++lastKey;
      if (isNew) {
        ASSERT_EQ(note.key, isTaken || note.text == "keyless" ? -1 : lastKey);
      }
      if (isStored && !isTaken) model[isNew ? lastKey : key] = line(note);
    } else if (action == 6) {
      ASSERT_TRUE(step % 2 == 0 ? table.Delete(key) : table.Delete(note));
      ASSERT_EQ(note.key, step % 2 == 0 ? key : -1);
      model.erase(key);
    } else if (step % 4 == 0) {
      QuerySqlite query;
      ASSERT_TRUE(table.Delete(query.GreaterThan("text", "a").LessThan("text", "d")));
      for (auto row = model.begin(); row != model.end();)
        row = row->second[0] > 'a' && row->second[0] < 'd' ? model.erase(row) : std::next(row);
    }
    const bool isThere = model.count(key) == 1;
    Note read{-1, "former", {}};
    ASSERT_TRUE(table.Exists(key) == isThere && table.GetObject(key, read) == isThere);
    ASSERT_EQ(line(read), isThere ? model[key] : "former-");
    ASSERT_EQ(table.GetLastObjectId(), model.empty() ? 0 : model.rbegin()->first);
    ASSERT_EQ(Value(db, "SELECT count(*) FROM Note"), std::to_string(model.size()));
  }
}

TEST_F(TableSqliteTest, ADeletionThatFailsLeavesTheObjectAlone) {
  for (const char* text : {"a", "b"})
    Saved(text);
  db.ExecuteStatement("CREATE TRIGGER Keep BEFORE DELETE ON Note BEGIN SELECT RAISE(ABORT, 'kept'); END");
  Note note{1, "a", {}};
  EXPECT_FALSE(table.Delete(note));
  EXPECT_EQ(note.key, 1);
  EXPECT_THAT(log.Lines(), testing::ElementsAre(testing::HasSubstr("kept")));
  db.ExecuteStatement("DROP TRIGGER Keep");
  EXPECT_TRUE(table.DeleteAll());
  EXPECT_EQ(table.GetLastObjectId(), 0);
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

class PropertiesTableSqliteTest : public testing::Test {
 protected:
  PropertiesTableSqliteTest() {
    db.Open();
    table.Create();
  }
  static Property Make(const std::string& name, const std::string& text, int32_t number) {
    Property property;
    property.SetName(name);
    property.SetStringValue(text);
    property.SetIntValue(number);
    return property;
  }

  TestSupport::CapturedLog log;
  DatabaseSqlite db{":memory:", log.Stream()};
  PropertiesTableSqlite table{"Props", db};
};

TEST_F(PropertiesTableSqliteTest, KeepsOneRowPerNameWhateverTheNameHolds) {
  const std::vector<std::string> names = {"version", "it's", "stringValue", "", "100%", {"a\0b", 3}, "a"};
  for (const std::string& name : names) {
    Property first = Make(name, "first", 1), again = Make(name, name + "'s", -5);
    EXPECT_EQ(table.GetObjectIdFromName(name), -1);
    EXPECT_TRUE(table.Save(first) && table.Save(again));
    EXPECT_EQ(first.ObjectId(), again.ObjectId());
  }
  table.Create();
  for (const std::string& name : names) {
    Property read;
    ASSERT_TRUE(table.GetObject(name, read)) << name;
    EXPECT_EQ(read.GetName() + "'s", read.GetStringValue());
    EXPECT_EQ(read.GetName(), name);
    EXPECT_EQ(read.GetIntValue(), -5);
    EXPECT_EQ(table.GetObjectIdFromName(name), read.ObjectId());
  }
  EXPECT_EQ(TestSupport::Value(db, "SELECT count(*) FROM Props"), std::to_string(names.size()));
}

TEST(TableStatementGeneratorTest, TextsAreExactToTheCharacter) {
  const struct {
    const char* table;
    std::vector<std::string> columns;
    bool isAutoIncremented;
    const char *select, *insert, *update;
  } cases[] = {
      {"Track",
       {"key", "id", "name"},
       true,
       "SELECT key, id, name FROM Track",
       "INSERT INTO Track (id, name) VALUES (:id, :name);",
       "UPDATE Track SET id = :id, name = :name WHERE key = :key"},
      {"Link",
       {"refA", "refB"},
       false,
       "SELECT refA, refB FROM Link",
       "INSERT INTO Link (refA, refB) VALUES (:refA, :refB);",
       "UPDATE Link SET refA = :refA, refB = :refB WHERE refA = :refA"},
      {"One",
       {"k"},
       false,
       "SELECT k FROM One",
       "INSERT INTO One (k) VALUES (:k);",
       "UPDATE One SET k = :k WHERE k = :k"},
  };
  for (const auto& [name, columns, isAutoIncremented, select, insert, update] : cases) {
    NoteTable table;
    table.tableName = name;
    table.columns = columns;
    table.Regenerate(isAutoIncremented);
    EXPECT_EQ(table.GetSelectStatement(), select);
    EXPECT_EQ(table.GetInsertStatement(), insert);
    EXPECT_EQ(table.GetUpdateStatement(), update);
    EXPECT_EQ(table.StatementGenerator().GenerateCreateStatement(), "");
  }
}

}  // namespace Oru::Common::Databases::Sqlite
