#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"

#include "support/CapturedLog.h"
#include "support/DescribedTable.h"

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

TEST_F(ObjectCursorSqliteTest, ACountGivenAsACStringIsACount) {
  EXPECT_EQ(NoteCursor(db, "SELECT * FROM Note", "SELECT count(*) FROM Note").GetTotalItemsCount(), 2);
  EXPECT_EQ(NoteCursor(table, "SELECT * FROM Note", "SELECT 7").GetTotalItemsCount(), 7);
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

}  // namespace Oru::Common::Databases::Sqlite
