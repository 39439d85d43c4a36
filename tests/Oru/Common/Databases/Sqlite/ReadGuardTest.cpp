#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/PropertiesTableSqlite.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "support/DescribedTable.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>

namespace Oru::Common::Databases::Sqlite {

using TestSupport::Note;
using TestSupport::Value;

class ReadGuardTest : public testing::Test {
 protected:
  ReadGuardTest() {
    db.Open();
    other.Open();
    db.ExecuteStatement(TestSupport::NoteTable::CreateText);
    for (const char* text : {"a", "b", "c"})
      EXPECT_TRUE(OtherWrites(text));
  }
  bool OtherWrites(const std::string& text) {
    return other.ExecuteStatement("INSERT INTO Note (text) VALUES ('" + text + "')");
  }
  std::string Count() { return Value(db, "SELECT count(*) FROM Note"); }

  TestSupport::TemporaryDirectory directory;
  const std::string connection = "file:" + directory.File("clips.db") + "?_busy_timeout=0";
  DatabaseSqlite db{connection, nullptr};
  DatabaseSqlite other{connection, nullptr};
};

TEST_F(ReadGuardTest, HoldsOneViewUntilItIsEnded) {
  ReadGuard guard(db);
  EXPECT_EQ(Count(), "3");
  EXPECT_FALSE(OtherWrites("d"));
  guard.End();
  EXPECT_TRUE(OtherWrites("d"));
  EXPECT_EQ(Count(), "4");
  {
    const ReadGuard outer(db);
    {
      const ReadGuard inner(db);
      EXPECT_EQ(Count(), "4");
    }
    EXPECT_FALSE(OtherWrites("e"));
  }
  EXPECT_TRUE(OtherWrites("e"));
}

// Others keep a rollback journal from committing at the end of a reading, and what was written in it would be
// lost after it was reported.
TEST_F(ReadGuardTest, NothingIsWrittenInItWhicheverThreadTries) {
  TestSupport::NoteTable notes(db);
  Note note{-1, "lost", 1};
  const auto writes = [&] {
    EXPECT_FALSE(notes.Save(note));
    EXPECT_FALSE(notes.Delete(1));
    EXPECT_THROW(CursorSqlite(db, "DELETE FROM Note").Run(), InvalidOperationException);
    EXPECT_THROW(db.BeginTransaction(), InvalidOperationException);
    EXPECT_NE(db.LastFailure().find("a reading (ReadGuard)"), std::string::npos);
  };
  {
    const ReadGuard guard(db);
    writes();
    std::thread(writes).join();
    EXPECT_EQ(Count(), "3");
  }
  EXPECT_EQ(Count(), "3");
  const ReadGuard ended(db);
  // A caller's own COMMIT is an end of the reading.
  CursorSqlite(db, "COMMIT").Run();
  CursorSqlite(db, "BEGIN").Run();
  EXPECT_TRUE(notes.Save(note));
  CursorSqlite(db, "COMMIT").Run();
  EXPECT_EQ(Count(), "4");
}

TEST_F(ReadGuardTest, WithoutItNoReadThatHasReturnedKeepsAnotherFromWriting) {
  TestSupport::NoteTable table(db);
  PropertiesTableSqlite properties("Props", db);
  properties.Create();
  Note note;
  Property property;
  QuerySqlite all;
  all.GreaterThan("key", 0);
  PreparedStatement later(table.GetSelectStatement() + " WHERE key > ?");
  PreparedStatement keyByText("SELECT key FROM Note WHERE text = ?");
  const std::pair<const char*, std::function<void()>> reads[] = {
      {"GetObject", [&] { EXPECT_TRUE(table.GetObject(1, note)); }},
      {"Exists", [&] { EXPECT_TRUE(table.Exists(1)); }},
      {"GetLastObjectId", [&] { EXPECT_GE(table.GetLastObjectId(), 3); }},
      {"an object cursor to the end",
       [&, cursor = std::shared_ptr<ObjectCursor<Note, Note>>()]() mutable {
         cursor = table.OpenObjectCursor(all);
         while (cursor->Next(note)) {
         }
         EXPECT_GE(cursor->GetTotalItemsCount(), 3);
       }},
      {"a raw cursor closed half-way",
       [&] {
         const auto cursor = table.OpenRawCursor();
         EXPECT_TRUE(cursor->Next());
         cursor->Close();
       }},
      {"a cursor rewound half-way",
       [&, cursor = std::make_shared<CursorSqlite>(db, "SELECT * FROM Note")] {
         EXPECT_TRUE(cursor->Step());
         cursor->Reset();
       }},
      {"FindKey", [&] { EXPECT_EQ(keyByText.FindKey(db, "a"), 1); }},
      {"ReadFirst", [&] { EXPECT_TRUE(table.ReadFirst(later, note, 1)); }},
      {"ForEachNew",
       [&] {
         const auto refuse = [](const std::unique_ptr<Note>& read) { throw std::runtime_error(read->text); };
         EXPECT_THROW(table.ForEachNew(later, std::make_unique<Note>, refuse, 1), std::runtime_error);
       }},
      {"a property", [&] { EXPECT_FALSE(properties.GetObject("a", property)); }},
      {"a text that selects", [&] { EXPECT_TRUE(db.ExecuteStatement("SELECT * FROM Note WHERE key > 1")); }},
  };
  for (const auto& [name, read] : reads) {
    for (int i = 0; i < 2; ++i) {
      read();
      EXPECT_TRUE(OtherWrites(std::string(name) + std::to_string(i))) << name;
    }
  }
}

}  // namespace Oru::Common::Databases::Sqlite
