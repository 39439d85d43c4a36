#include "Oru/Common/Databases/Sqlite/TableSqlite.h"

#include "Oru/Common/Databases/Sqlite/PropertiesTableSqlite.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"

#include "support/OpenSqlite.h"

namespace Oru::Common::Databases::Sqlite {

using TestSupport::Value;

// A small entity for tests of the framework.
struct Note {
  int64_t key = -1;
  std::string text;
  // Stored as NULL, by leaving the parameter unbound, when absent.
  std::optional<int64_t> weight;
};

// A view or table of notes whose names and clauses a test sets as it likes.
template <class Base>
class Described : public Base {
 public:
  using Base::Base;
  using Base::createStatement;
  using Base::ReadFromCursor;
  using Base::selectStatement;

  std::string tableName = "Note";
  std::vector<std::string> columns = {"key", "text", "weight"};
  // As many as `columns`; empty for the same.
  std::vector<std::string> selectColumns;
  // By the index of the select column; empty or too short for none.
  std::vector<std::string> aliases;
  std::string whereClause, groupByClause, joinClause;
  // The flag of each row that was read.
  std::vector<bool> lazyFlags;

  const std::string& GetTableName() const override { return tableName; }
  const std::string& GetColumnName(int32_t index) const override { return columns.at(AsIndex(index)); }
  int32_t GetColumnsCount() const override { return static_cast<int32_t>(columns.size()); }
  const std::string& GetObjectIdColumnName() const override { return columns.front(); }
  const std::string& GetSelectColumnName(int32_t index) const override {
    return selectColumns.empty() ? GetColumnName(index) : selectColumns.at(AsIndex(index));
  }
  const std::string& GetSelectColumnAlias(int32_t index) const override {
    return AsIndex(index) < aliases.size() ? aliases[AsIndex(index)] : this->EmptyText();
  }
  const std::string& GetWhereClause() const override { return whereClause; }
  const std::string& GetGroupByClause() const override { return groupByClause; }
  const std::string& GetJoinClause() const override { return joinClause; }

  void ReadFromCursor(const Cursor& cursor, Note& note, bool lazy) override {
    lazyFlags.push_back(lazy);
    note.key = cursor.GetInt64("key");
    note.text = cursor.GetString("text");
    note.weight = cursor.IsNull("weight") ? std::optional<int64_t>() : cursor.GetInt64("weight");
  }

 private:
  static std::size_t AsIndex(int32_t index) { return static_cast<std::size_t>(index); }
};

// A table of notes, ready for use with its default names.
class NoteTable : public Described<TableSqlite<Note, Note>> {
 public:
  explicit NoteTable(DatabaseSqlite& db) : Described(db) { GenerateStatements(); }

  // Takes names and clauses that were changed into the statements.
  void Regenerate(bool isAutoIncremented = true) {
    mAutoIncrementedId = isAutoIncremented;
    GenerateStatements();
  }

  bool BindToCursor(Cursor& cursor, Note& note) override {
    if (note.weight && !cursor.Bind("weight", *note.weight)) return false;
    if (note.text == "throw") throw std::runtime_error("a note that can't be bound");
    return cursor.Bind("text", note.text);
  }
  void SetObjectId(Note& note, int64_t key) override {
    if (note.text == "keyless") throw std::runtime_error("a note that takes no key");
    note.key = key;
  }
  int64_t GetObjectId(Note& note) const override { return note.key; }
};

class TableSqliteTest : public TestSupport::OpenSqlite {
 protected:
  TableSqliteTest() {
    Run("CREATE TABLE Note (key integer primary key autoincrement, text text not null unique, weight integer)");
  }

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
  Described<ViewSqlite<Note>> view(db);
  view.tableName = "Heavy";
  view.selectColumns = {"Note.key", "upper(text)", "weight"};
  view.aliases = {"key", "text"};
  view.joinClause = "FROM Note WHERE weight > 1";
  view.selectStatement = view.StatementGenerator().GenerateSelectStatement();
  view.createStatement = view.StatementGenerator().GenerateCreateStatement();
  view.Create();
  view.Create();
  Note note;
  EXPECT_TRUE(view.GetObject(2, note) && !view.GetObject(1, note) && view.Exists(2) && !view.Exists(1));
  EXPECT_EQ(note.text, "B");
  view.createStatement = "CREATE VIEW Odd AS SELECT * FRM Note";
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

TEST_F(TableSqliteTest, StatementsAreExactToTheCharacter) {
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
