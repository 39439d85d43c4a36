#include "Oru/Common/Databases/Sqlite/TableSqlite.h"

#include "Oru/Common/Databases/Sqlite/PropertiesTableSqlite.h"
#include "Oru/Common/Databases/Sqlite/TableStatementGenerator.h"

#include "support/DescribedTable.h"
#include "support/OpenSqlite.h"

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

class TableSqliteTest : public TestSupport::OpenSqlite {
 protected:
  TableSqliteTest() { Run(NoteTable::CreateText); }

  NoteTable table{db};
};

TEST_F(TableSqliteTest, KeepsWhatAMapKeepsWhateverTriggersInsertBeside) {
  Run("CREATE TABLE History (id integer primary key, what text);"
      "CREATE VIRTUAL TABLE Search USING fts5(text);"
      "INSERT INTO History VALUES (500, 'old');"
      "CREATE TRIGGER Before BEFORE INSERT ON Note BEGIN"
      " INSERT INTO History (what) VALUES (new.text); END;"
      "CREATE TRIGGER After AFTER INSERT ON Note BEGIN"
      " INSERT INTO Search (rowid, text) VALUES (new.key * 1000, new.text);"
      " INSERT INTO History (what) VALUES (new.text), (new.text); END;"
      "CREATE TRIGGER Keep BEFORE DELETE ON Note WHEN old.text = 'f' BEGIN SELECT RAISE(ABORT, 'kept'); END");
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
      const auto stored = model.find(key);
      const bool isKept = stored != model.end() && stored->second[0] == 'f';
      ASSERT_EQ(step % 2 == 0 ? table.Delete(key) : table.Delete(note), !isKept);
      ASSERT_EQ(note.key, step % 2 == 0 || isKept ? key : -1);
      if (!isKept) model.erase(key);
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
    TestSupport::ExpectNoReadUnderWay(db);
  }
  Run("DROP TRIGGER Keep");
  EXPECT_TRUE(table.DeleteAll());
  EXPECT_EQ(table.GetLastObjectId(), 0);
}

TEST_F(TableSqliteTest, OpensCursorsNewAndAgainOverAllRowsOrTheQuerys) {
  Run("INSERT INTO Note (text, weight) VALUES ('a', 0), ('b', 1), ('c', 2), ('d', 3), ('e', 4), ('f', 5)");
  QuerySqlite query;
  query.GreaterThan("weight", 1).OrderByDesc("text").Limit(2, 1);
  ObjectCursorSqlite<Note, Note> objects;
  RawCursorSqlite rows;
  // What a cursor on objects and one on rows give, and their totals.
  const auto texts = [](ObjectCursor<Note, Note>& cursor, RawCursor& rawCursor) {
    std::string all;
    for (Note note; cursor.Next(note);)
      all += note.text;
    all += std::to_string(cursor.GetTotalItemsCount());
    for (RawReadSqlite row; rawCursor.Next(row);)
      all += row.GetString("text");
    return all + std::to_string(rawCursor.GetTotalItemsCount());
  };
  EXPECT_EQ(texts(*table.OpenObjectCursor(), *table.OpenRawCursor()), "abcdef6abcdef6");
  EXPECT_EQ(texts(*table.OpenObjectCursor(query), *table.OpenRawCursor(query)), "ed4ed4");
  for (int i = 0; i < 2; ++i) {
    table.OpenObjectCursor(objects);
    table.OpenRawCursor(rows);
    EXPECT_EQ(texts(objects, rows), "abcdef6abcdef6");
    table.OpenObjectCursor(objects, query, false);
    EXPECT_TRUE(objects.Next());
    table.OpenObjectCursor(objects, query);
    table.OpenRawCursor(rows, query);
    EXPECT_EQ(texts(objects, rows), "ed4ed4");
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
  Run("INSERT INTO Note (text, weight) VALUES ('a', 97), ('b', 98), ('c', 99)");
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
  Run("INSERT INTO Note (text, weight) VALUES ('a', 1), ('b', 2)");
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

TEST_F(TableSqliteTest, PropertiesHaveOneRowPerNameWhateverTheNameHolds) {
  PropertiesTableSqlite properties("Props", db);
  properties.Create();
  const std::vector<std::string> names = {"version", "it's", "stringValue", "", "100%", {"a\0b", 3}, "a"};
  for (const std::string& name : names) {
    EXPECT_EQ(properties.GetObjectIdFromName(name), -1);
    for (const int number : {1, -5}) {
      Property property;
      property.SetName(name);
      property.SetStringValue(name + std::to_string(number));
      property.SetIntValue(number);
      EXPECT_TRUE(properties.Save(property));
      EXPECT_EQ(property.ObjectId(), properties.GetObjectIdFromName(name));
    }
  }
  properties.Create();
  for (const std::string& name : names) {
    Property read;
    ASSERT_TRUE(properties.GetObject(name, read)) << name;
    EXPECT_EQ(read.GetName() + std::to_string(read.GetIntValue()), name + "-5");
    EXPECT_EQ(read.GetStringValue(), name + "-5");
  }
  EXPECT_EQ(Value(db, "SELECT count(*) FROM Props"), std::to_string(names.size()));
}

TEST(TableStatementGeneratorTest, TextsAreExactToTheCharacter) {
  NoteTable table;
  const auto texts = [&](bool isAutoIncremented) {
    table.Regenerate(isAutoIncremented);
    return table.GetSelectStatement() + '|' + table.GetInsertStatement() + '|' + table.GetUpdateStatement() +
           '|' + table.StatementGenerator().GenerateCreateStatement();
  };
  EXPECT_EQ(texts(true),
            "SELECT key, text, weight FROM Note|INSERT INTO Note (text, weight) VALUES (:text, :weight);|"
            "UPDATE Note SET text = :text, weight = :weight WHERE key = :key|");
  table.columns = {"refA", "refB"};
  EXPECT_EQ(texts(false),
            "SELECT refA, refB FROM Note|INSERT INTO Note (refA, refB) VALUES (:refA, :refB);|"
            "UPDATE Note SET refA = :refA, refB = :refB WHERE refA = :refA|");
}

}  // namespace Oru::Common::Databases::Sqlite
