#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ChangeListener.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/PropertiesTableSqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "support/DescribedTable.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <streambuf>
#include <thread>

// Transactions, savepoints and readings, with what is reported of them.
namespace Oru::Common::Databases::Sqlite {

using TestSupport::Note;
using TestSupport::Value;

// Random steps on a connection, beside a model of what is committed, what may be taken back and what is reported.
// Another connection reads and writes between the steps. The parameter is the journal mode.
class GuardsModelTest : public testing::TestWithParam<std::string> {
 protected:
  // BegunByText is a transaction that a statement of the caller's has begun.
  enum class Mode { Free, Begun, BegunByText, Lost, Reading };
  using Row = std::pair<std::string, int>;
  using Rows = std::map<Row, int>;
  struct Work {
    Rows rows;
    std::set<Row> touched;
    int64_t changes = 0;
  };
  struct Level {
    std::unique_ptr<SavepointGuard> guard;
    Work before;
  };

  GuardsModelTest() {
    db.Open();
    other.Open();
    EXPECT_TRUE(
        db.ExecuteStatement("CREATE TABLE A (key integer primary key, x unique);"
                            "CREATE TABLE Child (key integer primary key, a references A on delete cascade);"
                            "CREATE TABLE Elsewhere (n); INSERT INTO Elsewhere VALUES (0)"));
    listener.emplace(db, [this](const ChangeNotice& notice) {
      ASSERT_TRUE(reported.empty());
      for (const auto& table : notice.tables) {
        for (const auto& row : table.rows)
          reported[{table.name, static_cast<int>(row.key)}] = "+~-?"[static_cast<int>(row.kind)];
      }
    });
  }

  int Any(std::size_t below) { return static_cast<int>(random() % below); }
  bool IsOpen() const { return mode == Mode::Begun || mode == Mode::BegunByText; }
  bool IsBlocked() const { return !isWal && othersReading; }

  void Write() {
    const int key = Any(8), x = Any(8), second = Any(8);
    Work next = now;
    bool fits = true, isHalfDone = false, rollsBack = false;
    const auto touch = [&](const Row& row) {
      next.touched.insert(row);
      ++next.changes;
    };
    const auto insert = [&](const char* table, int at, int value) {
      fits = fits && next.rows.emplace(Row(table, at), value).second;
      touch({table, at});
    };
    const auto has = [&](int value) {
      return std::any_of(next.rows.begin(), next.rows.end(),
                         [&](const auto& row) { return row.first.first == "A" && row.second == value; });
    };
    const auto erase = [&](const Row& row) {
      if (next.rows.erase(row) > 0) touch(row);
    };
    const auto eraseChildren = [&](int of) {
      for (int child = 0; child < 8; ++child) {
        const auto found = next.rows.find({"Child", child});
        if (found != next.rows.end() && found->second == of) erase({"Child", child});
      }
    };
    const std::string k = std::to_string(key), v = std::to_string(x);
    std::string sql = "INTO A VALUES (" + k + ", " + v + ")";
    switch (Any(8)) {
      case 0:
        sql = "INSERT INTO A VALUES (" + k + ", " + v + "), (" + std::to_string(second) + ", 90)";
        fits = !has(x);
        insert("A", key, x);
        isHalfDone = fits;
        fits = fits && !has(90);
        insert("A", second, 90);
        break;
      case 1:
        sql = "INSERT INTO Child VALUES (" + k + ", " + v + ")";
        insert("Child", key, x);
        isHalfDone = fits;
        fits = fits && next.rows.count({"A", x}) > 0;
        break;
      case 2:
        sql = "UPDATE A SET x = x + 100 WHERE key = " + k;
        if (next.rows.count({"A", key}) > 0) {
          fits = !has(next.rows[{"A", key}] + 100);
          next.rows[{"A", key}] += 100;
          touch({"A", key});
        }
        break;
      case 3:
        sql = "DELETE FROM A WHERE key = " + k;
        if (next.rows.count({"A", key}) > 0) eraseChildren(key);
        erase({"A", key});
        break;
      case 4:
        sql = "DELETE FROM Child WHERE a = " + k;
        eraseChildren(key);
        break;
      default:
        rollsBack = Any(15) == 0;
        sql.insert(0, rollsBack ? "INSERT OR ROLLBACK " : "INSERT ");
        fits = !has(x);
        insert("A", key, x);
    }
    const bool mayWrite = mode == Mode::Free || IsOpen();
    const bool changes = next.changes != now.changes;
    // SQLite's own affair is what it locks for a statement that finds nothing to change.
    if (!changes) othersReading.reset();
    const bool isDone = mayWrite && fits && !(mode == Mode::Free && IsBlocked());
    if (Any(2) == 0) {
      EXPECT_EQ(db.ExecuteStatement(sql), isDone) << sql << ' ' << db.LastFailure();
    } else if (isDone) {
      CursorSqlite(db, sql).Run();
    } else {
      EXPECT_THROW(CursorSqlite(db, sql).Run(), InvalidOperationException) << sql;
    }
    if (isDone) {
      now = next;
      isDirty = isDirty || changes;
    } else if (IsOpen()) {
      isUncertain = isUncertain || isHalfDone;
      if (rollsBack) TakeBack(mode == Mode::Begun ? Mode::Lost : Mode::Free);
    }
    if (mode == Mode::Free) ExpectCommitted();
  }

  void Begin() {
    if (mode != Mode::Free) {
      EXPECT_THROW(TransactionGuard{db}, InvalidOperationException);
    } else if (Any(4) == 0) {
      EXPECT_TRUE(db.ExecuteStatement("BEGIN IMMEDIATE"));
      mode = Mode::BegunByText;
    } else {
      endedGuards.push_back(std::move(guard));
      guard = std::make_unique<TransactionGuard>(db);
      mode = Mode::Begun;
    }
  }

  void End() {
    const bool commits = Any(3) > 0, byText = Any(4) == 0, isOpen = IsOpen();
    if (!isDirty) othersReading.reset();
    int64_t changes = 0;
    bool isDone = true;
    try {
      if (byText) {
        const char* text = commits ? "COMMIT" : "ROLLBACK";
        Any(2) == 0 ? CursorSqlite(db, text).Run() : static_cast<void>(isDone = db.ExecuteStatement(text));
      } else if ((mode != Mode::Begun && mode != Mode::Lost) || Any(2) == 0) {
        changes = db.EndTransaction(commits);
      } else if (commits) {
        changes = guard->Commit();
      } else {
        Any(2) == 0 ? guard->Rollback() : guard.reset();
      }
    } catch (const InvalidOperationException&) {
      isDone = false;
    }
    const bool isRefused = commits && isOpen && IsBlocked();
    const bool canEnd = byText               ? isOpen || mode == Mode::Reading
                        : mode == Mode::Lost ? !commits
                                             : mode == Mode::Begun;
    ASSERT_EQ(isDone, canEnd && !isRefused) << commits << byText << static_cast<int>(mode);
    EXPECT_EQ(changes, isDone && isOpen && commits && !byText ? now.changes : 0);
    if (isOpen && isDone && commits) ExpectCommitted();
    if (isDone || (mode == Mode::Lost && !byText)) TakeBack(Mode::Free);
  }

  void UseSavepoint() {
    if (!IsOpen()) {
      EXPECT_THROW(SavepointGuard{db}, InvalidOperationException);
    } else if (levels.empty() || Any(2) == 0) {
      levels.push_back({std::make_unique<SavepointGuard>(db), now});
    } else {
      const int place = Any(levels.size());
      Level& level = levels[static_cast<std::size_t>(place)];
      if (Any(3) == 0) {
        level.guard->Commit();
      } else {
        now = level.before;
        Any(2) == 0 ? level.guard->Rollback() : level.guard.reset();
      }
      EndLevels(place);
    }
  }

  void Read() {
    if (readings.size() < 3 && Any(2) == 0) {
      readings.push_back(std::make_unique<ReadGuard>(db));
      if (mode != Mode::Free) return;
      mode = Mode::Reading;
      reading = readings.back().get();
      seen = stored;
      EXPECT_EQ(Value(db, "SELECT n FROM Elsewhere"), std::to_string(seen));
    } else if (!readings.empty()) {
      const auto place = readings.begin() + Any(readings.size());
      if (place->get() == reading) TakeBack(Mode::Free);
      if (Any(2) == 0) (*place)->End();
      readings.erase(place);
    }
  }

  void OtherWorks() {
    if (othersReading) return othersReading.reset();
    if (Any(3) == 0 && !IsOpen()) {
      othersReading.emplace(other);
      EXPECT_EQ(Value(other, "SELECT n FROM Elsewhere"), std::to_string(stored));
      return;
    }
    const bool isDone = other.ExecuteStatement("UPDATE Elsewhere SET n = n + 1");
    EXPECT_EQ(isDone, !IsOpen() && (isWal || mode != Mode::Reading));
    if (isDone) ++stored;
  }

  void Reopen() {
    db.Close();
    EXPECT_THROW(db.HasChanged(), InvalidOperationException);
    EXPECT_THROW(SavepointGuard{db}, InvalidOperationException);
    db.Open();
    TakeBack(Mode::Free);
    asked = stored;
  }

  void ExpectCommitted() {
    std::map<Row, char> difference;
    for (const Row& row : now.touched) {
      const bool wasThere = committed.count(row) > 0, isThere = now.rows.count(row) > 0;
      if (wasThere || isThere) difference[row] = !wasThere ? '+' : isThere ? '~' : '-';
    }
    // It isn't known what a statement that failed half-way has left of the rows.
    for (auto row = reported.begin(); row != reported.end();) {
      const auto known = difference.find(row->first);
      const bool mayDiffer = isUncertain && row->second == '?';
      if (mayDiffer && known != difference.end()) row->second = known->second;
      row = mayDiffer && known == difference.end() ? reported.erase(row) : std::next(row);
    }
    EXPECT_EQ(reported, difference);
    reported.clear();
    committed = now.rows;
    TakeBack(mode);
  }

  // Goes back to what is committed.
  void TakeBack(Mode next) {
    mode = next;
    now = {committed, {}, 0};
    isDirty = isUncertain = false;
    reading = nullptr;
    EndLevels(0);
  }
  void EndLevels(int from) {
    std::move(levels.begin() + from, levels.end(), std::back_inserter(ended));
    levels.erase(levels.begin() + from, levels.end());
  }

  void Check() {
    Rows rows;
    for (const std::string table : {"A", "Child"}) {
      CursorSqlite cursor(db, "SELECT * FROM " + table);
      while (cursor.Step())
        rows[{table, cursor.GetInt32(0)}] = cursor.GetInt32(1);
    }
    if (mode != Mode::Reading) seen = stored;
    ASSERT_EQ(rows, now.rows);
    ASSERT_EQ(Value(db, "SELECT n FROM Elsewhere"), std::to_string(seen));
    ASSERT_EQ(reported.size(), 0U);
    ASSERT_EQ(db.IsInTransaction(), IsOpen() || mode == Mode::Reading);
    ASSERT_EQ(db.HasBegunTransaction(), mode == Mode::Begun || mode == Mode::Lost);
    ASSERT_TRUE(mode != Mode::Begun || guard->IsActive());
    if (mode != Mode::Begun && mode != Mode::Lost) endedGuards.push_back(std::move(guard));
    for (const auto& old : endedGuards) {
      if (!old) continue;
      ASSERT_THROW(old->Commit(), InvalidOperationException);
      ASSERT_FALSE(old->IsActive());
    }
    for (const Level& level : levels)
      ASSERT_TRUE(level.guard->IsActive());
    for (const Level& level : ended) {
      if (!level.guard) continue;
      ASSERT_FALSE(level.guard->IsActive());
      ASSERT_THROW(level.guard->Commit(), InvalidOperationException);
      level.guard->Rollback();
    }
    if (Any(3) == 0) {
      ASSERT_EQ(db.HasChanged(), seen != asked);
      asked = seen;
      ended.clear();
      endedGuards.clear();
    }
  }

  const bool isWal = GetParam() == "wal";
  TestSupport::TemporaryDirectory directory;
  const std::string connection =
      "file:" + directory.File("clips.db") + "?_busy_timeout=0&_synchronous=off&_journal_mode=" + GetParam();
  DatabaseSqlite db{connection, nullptr}, other{connection, nullptr};
  std::optional<ChangeListener> listener;
  std::mt19937 random{20261125};

  Mode mode = Mode::Free;
  Rows committed;
  Work now;
  std::map<Row, char> reported;
  // Whether pages have been changed, and whether a statement has failed half-way in the transaction.
  bool isDirty = false, isUncertain = false;
  // The other connection's number: as it is stored, as this connection sees it, as it was when asked last.
  int stored = 0, seen = 0, asked = 0;
  std::optional<ReadGuard> othersReading;
  std::unique_ptr<TransactionGuard> guard;
  std::vector<Level> levels, ended;
  std::vector<std::unique_ptr<TransactionGuard>> endedGuards;
  std::vector<std::unique_ptr<ReadGuard>> readings;
  const ReadGuard* reading = nullptr;
};

TEST_P(GuardsModelTest, StoreShowAndReportWhatTheModelSays) {
  for (int step = 0; step < 12000; ++step) {
    const int action = Any(32);
    if (action < 8 && !IsOpen()) {
      mode == Mode::Free ? Begin() : mode == Mode::Reading ? Read() : End();
    } else if (action < 14) {
      Write();
    } else if (action < 15) {
      Begin();
    } else if (action < 16) {
      End();
    } else if (action < 27) {
      UseSavepoint();
    } else if (action < 29) {
      Read();
    } else if (action < 31) {
      OtherWorks();
    } else if (Any(4) == 0) {
      Reopen();
    }
    Check();
    ASSERT_FALSE(HasFailure()) << "step " << step << ", action " << action << ", mode "
                               << static_cast<int>(mode);
  }
}

INSTANTIATE_TEST_SUITE_P(Journals, GuardsModelTest, testing::Values("delete", "wal"));

class GuardsTest : public testing::Test {
 protected:
  GuardsTest() {
    db.Open();
    other.Open();
    EXPECT_TRUE(db.ExecuteStatement(TestSupport::NoteTable::CreateText));
    for (const char* text : {"a", "b", "c"})
      EXPECT_TRUE(OtherWrites(text));
  }
  bool OtherWrites(const std::string& text) {
    return other.ExecuteStatement("INSERT INTO Note (text) VALUES ('" + text + "')");
  }
  void Insert(const std::string& text) {
    EXPECT_TRUE(db.ExecuteStatement("INSERT INTO Note (text) VALUES ('" + text + "')"));
  }
  std::string Count() { return Value(db, "SELECT count(*) FROM Note"); }
  // Lets SQLite refuse what a caller's function can forbid.
  template <int Action>
  static void Forbid(DatabaseSqlite& on) {
    const auto refuse = [](void*, int action, const char*, const char*, const char*, const char*) {
      return action == Action ? SQLITE_DENY : SQLITE_OK;
    };
    sqlite3_set_authorizer(on.Handle(), refuse, nullptr);
  }

  TestSupport::TemporaryDirectory directory;
  const std::string connection = "file:" + directory.File("clips.db") + "?_busy_timeout=0";
  DatabaseSqlite db{connection, nullptr};
  DatabaseSqlite other{connection, nullptr};
};

TEST_F(GuardsTest, ASavepointLeavesTheCallersSavepointsAlone) {
  EXPECT_TRUE(db.ExecuteStatement("BEGIN; SAVEPOINT s"));
  {
    SavepointGuard within(db);
    Insert("d");
    EXPECT_TRUE(db.ExecuteStatement("RELEASE s"));
    EXPECT_THROW(within.Commit(), InvalidOperationException);
  }
  CursorSqlite writing(db, "INSERT INTO Note (text) VALUES ('e'), ('f') RETURNING key");
  EXPECT_TRUE(writing.Step());
  EXPECT_THROW(SavepointGuard{db}, InvalidOperationException);
  EXPECT_NE(db.LastFailure().find("SQL statements in progress"), std::string::npos);
}

// SQLite can hardly be made to fail at it otherwise.
TEST_F(GuardsTest, ARollbackToASavepointThatFailsLosesTheWholeTransaction) {
  TransactionGuard transaction(db);
  Insert("d");
  std::optional<SavepointGuard> guard(db);
  // The refusal comes when the kept statement is prepared again, after a change of the schema.
  EXPECT_TRUE(db.ExecuteStatement("CREATE TABLE B (x)"));
  Forbid<SQLITE_SAVEPOINT>(db);
  EXPECT_THROW(guard->Rollback(), InvalidOperationException);
  sqlite3_set_authorizer(db.Handle(), nullptr, nullptr);
  EXPECT_NE(db.LastFailure().find("the whole transaction was rolled back: not authorized"), std::string::npos)
      << db.LastFailure();
  EXPECT_FALSE(guard->IsActive() || db.ExecuteStatement("DELETE FROM Note"));
  EXPECT_THROW(transaction.Commit(), InvalidOperationException);
  EXPECT_EQ(Count(), "3");
}

// A log whose buffer fails in the most awkward way there is.
class ThrowingBuffer : public std::streambuf {
  std::streamsize xsputn(const char*, std::streamsize) override { throw 1; }
};

TEST_F(GuardsTest, DestructorsThrowNothingWhenTheirEndIsRefusedAndTheLogThrows) {
  ThrowingBuffer buffer;
  const auto log = std::make_shared<std::ostream>(&buffer);
  log->exceptions(std::ios_base::badbit);
  DatabaseSqlite logging(connection, log);
  logging.Open();
  {
    const TransactionGuard guard(logging);
    EXPECT_TRUE(logging.ExecuteStatement("DELETE FROM Note"));
    Forbid<SQLITE_TRANSACTION>(logging);
  }
  EXPECT_TRUE(logging.HasBegunTransaction());
  sqlite3_set_authorizer(logging.Handle(), nullptr, nullptr);
  EXPECT_EQ(logging.EndTransaction(false), 0);
  const ReadGuard blocking(other);
  EXPECT_EQ(Value(other, "SELECT count(*) FROM Note"), "3");
  {
    const ReadGuard reading(logging);
    EXPECT_EQ(sqlite3_exec(logging.Handle(), "DELETE FROM Note", nullptr, nullptr, nullptr), SQLITE_OK);
  }
  EXPECT_FALSE(logging.IsInTransaction());
  EXPECT_EQ(Value(logging, "SELECT count(*) FROM Note"), "3");
}

// What was written in a reading would be lost after it was reported, where others keep it from committing.
TEST_F(GuardsTest, NoThreadWritesInAReading) {
  TestSupport::NoteTable notes(db);
  Note note{-1, "lost", 1};
  const ReadGuard guard(db);
  std::thread([&] {
    EXPECT_FALSE(notes.Save(note) || notes.Delete(1));
    EXPECT_NE(db.LastFailure().find("a reading (ReadGuard)"), std::string::npos);
  }).join();
  EXPECT_EQ(Count(), "3");
}

TEST_F(GuardsTest, WithoutAReadingNoReadThatHasReturnedKeepsAnotherFromWriting) {
  TestSupport::NoteTable table(db);
  PropertiesTableSqlite properties("Props", db);
  properties.Create();
  Note note;
  Property property;
  QuerySqlite all;
  all.GreaterThan("key", 0);
  PreparedStatement later(table.GetSelectStatement() + " WHERE key > ?");
  PreparedStatement keyByText("SELECT key FROM Note WHERE text = ?");
  CursorSqlite rewound(db, "SELECT * FROM Note");
  const std::function<void()> reads[] = {
      [&] { EXPECT_TRUE(table.GetObject(1, note)); },
      [&] { EXPECT_TRUE(table.Exists(1)); },
      [&] { EXPECT_GE(table.GetLastObjectId(), 3); },
      [&, cursor = std::shared_ptr<ObjectCursor<Note, Note>>()]() mutable {
        cursor = table.OpenObjectCursor(all);
        while (cursor->Next(note)) {
        }
        EXPECT_GE(cursor->GetTotalItemsCount(), 3);
      },
      [&] {
        const auto cursor = table.OpenRawCursor();
        EXPECT_TRUE(cursor->Next());
        cursor->Close();
      },
      [&] {
        EXPECT_TRUE(rewound.Step());
        rewound.Reset();
      },
      [&] { EXPECT_EQ(keyByText.FindKey(db, "a"), 1); },
      [&] { EXPECT_TRUE(table.ReadFirst(later, note, 1)); },
      [&] {
        const auto refuse = [](const std::unique_ptr<Note>& read) { throw std::runtime_error(read->text); };
        EXPECT_THROW(table.ForEachNew(later, std::make_unique<Note>, refuse, 1), std::runtime_error);
      },
      [&] { EXPECT_FALSE(properties.GetObject("a", property)); },
      [&] { EXPECT_TRUE(db.ExecuteStatement("SELECT * FROM Note WHERE key > 1")); },
  };
  for (int i = 0; i < 22; ++i) {
    reads[i / 2]();
    EXPECT_TRUE(OtherWrites("read " + std::to_string(i)));
  }
}

}  // namespace Oru::Common::Databases::Sqlite
