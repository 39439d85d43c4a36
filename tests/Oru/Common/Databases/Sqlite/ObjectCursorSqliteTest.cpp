#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"

#include "Oru/Common/Databases/InvalidOperationException.h"

#include "support/CapturedLog.h"
#include "support/DescribedTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Oru::Common::Databases::Sqlite {

using TestSupport::Note;
using NoteCursor = ObjectCursorSqlite<Note, Note>;
using RowCursor = ObjectCursorSqlite<RawReadSqlite, RawReadSqlite>;

class ObjectCursorSqliteTest : public testing::Test {
 protected:
  ObjectCursorSqliteTest() {
    db.Open();
    db.ExecuteStatement(TestSupport::NoteTable::CreateText);
    db.ExecuteStatement("INSERT INTO Note (text, weight) VALUES ('a', 1), ('b', NULL)");
  }

  TestSupport::CapturedLog log;
  DatabaseSqlite db{":memory:", log.Stream()};
  TestSupport::NoteTable table{db};
};

TEST_F(ObjectCursorSqliteTest, NeedsAViewAndAStatement) {
  NoteCursor withoutStatement, withoutView(db, "SELECT * FROM Note"), closed(table, "SELECT * FROM Note");
  closed.Close();
  closed.Close();
  Note note;
  for (NoteCursor* cursor : {&withoutStatement, &withoutView, &closed}) {
    EXPECT_THROW(cursor->Next(note), ObjectClosedException);
    EXPECT_THROW(cursor->Next(), ObjectClosedException);
    EXPECT_THROW(cursor->Save(note), ObjectClosedException);
  }
  withoutView.AttachToTable(table);
  EXPECT_TRUE(withoutView.Next(note));
  EXPECT_EQ(note.text, "a");
}

TEST_F(ObjectCursorSqliteTest, EachConstructorCarriesItsStatementCountViewAndFlag) {
  const std::string select = "SELECT * FROM Note ORDER BY key DESC", count = "SELECT 42";
  NoteCursor cursors[] = {NoteCursor(table, select), NoteCursor(table, select, count),
                          NoteCursor(table, select, false), NoteCursor(table, select, count, false)};
  for (std::size_t i = 0; i < 4; ++i) {
    Note note;
    EXPECT_TRUE(cursors[i].Next(note) && cursors[i].Next());
    EXPECT_EQ(note.text, "b");
    EXPECT_EQ(cursors[i].GetTotalItemsCount(), i % 2 == 1 ? 42 : -1);
    EXPECT_FALSE(cursors[i].Next(note) || cursors[i].Next());
    EXPECT_EQ(note.text, "b");
  }
  NoteCursor bare(false), onDatabase(db, select, count, false);
  onDatabase.AttachToTable(table);
  bare.AttachToTable(table);
  bare.Reset(db, select, count, true);
  Note note;
  EXPECT_TRUE(onDatabase.Next(note) && bare.Next(note));
  EXPECT_EQ(table.lazyFlags, (std::vector<bool>{true, true, false, false, false, true}));
}

TEST_F(ObjectCursorSqliteTest, ForwardsReadsAndBindsByNameAndIndex) {
  RowCursor cursor(db, "SELECT :a AS a, :b AS b");
  RawReadSqlite row;
  EXPECT_TRUE(cursor.Bind("a", 7) && cursor.Bind(2, "text"));
  EXPECT_TRUE(cursor.Next(row));
  EXPECT_TRUE(cursor.GetInt32("a") == 7 && cursor.GetInt64(0) == 7 && cursor.GetUInt32(0) == 7);
  EXPECT_TRUE(cursor.GetString(1) == "text" && cursor.GetColumnName(1) == "b" &&
              cursor.GetColumnIndex("b") == 1);
  EXPECT_TRUE(row.GetInt64("a") == 7 && row.GetString("b") == "text");
  cursor.Reset();
  EXPECT_TRUE(cursor.Next(row));
  EXPECT_TRUE(row.IsNull("a") && row.IsNull("b") && cursor.IsNull(0) && cursor.IsNull("b"));
}

TEST_F(ObjectCursorSqliteTest, SnapshotsNeedNoViewAndHoldEveryColumnAheadOfARow) {
  RowCursor cursor(db, "SELECT key, weight, x'0102' AS bytes FROM Note WHERE text = 'b'");
  RawReadSqlite row;
  row.Set("stale", 1);
  EXPECT_TRUE(cursor.Next(row));
  EXPECT_EQ(row.GetInt64("key"), 2);
  EXPECT_TRUE(row.IsNull("weight"));
  EXPECT_FALSE(cursor.Next(row));
  EXPECT_TRUE(row.IsNull("key") && row.IsNull("bytes"));
  EXPECT_THROW(row.IsNull("stale"), ArgumentException);
  EXPECT_THROW(cursor.Next(), ObjectClosedException);
  cursor.Close();
  EXPECT_THROW(cursor.Next(row), ObjectClosedException);
}

TEST_F(ObjectCursorSqliteTest, AStepThatFailsIsLoggedAndTheCursorStaysUsable) {
  NoteCursor insert(table, "INSERT INTO Note (text) VALUES (:text)");
  Note note;
  insert.Bind("text", "a");
  EXPECT_THROW(insert.Save(note), InvalidOperationException);
  EXPECT_THAT(log.Lines(), testing::ElementsAre(testing::HasSubstr("UNIQUE constraint failed: Note.text")));
  insert.Reset();
  insert.Bind("text", "c");
  insert.Save(note);
  NoteCursor select(
      table, "SELECT key, text, abs(CASE key WHEN 2 THEN -9223372036854775807 - 1 END) AS weight FROM Note");
  EXPECT_TRUE(select.Next(note));
  EXPECT_THROW(select.Next(note), InvalidOperationException);
  EXPECT_EQ(note.text, "a");
  RowCursor row(db, "SELECT abs(-9223372036854775807 - 1)");
  RawReadSqlite values;
  EXPECT_THROW(row.Next(values), InvalidOperationException);
  EXPECT_TRUE(row.IsOpened() && select.IsOpened());
}

}  // namespace Oru::Common::Databases::Sqlite
