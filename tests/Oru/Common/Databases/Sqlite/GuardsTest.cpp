#include "support/OpenSqlite.h"

// Transactions, savepoints and readings, with what is reported of them.
namespace Oru::Common::Databases::Sqlite {

using testing::HasSubstr;
using TestSupport::Value;

// Random steps on a connection, beside a model of what is committed, what may be taken back and what is reported.
// Another connection reads and writes between the steps. The parameter is the journal mode.
class GuardsModelTest : public testing::TestWithParam<std::string> {
 protected:
  // BegunByText is a transaction that a statement of the caller's has begun.
  enum class Mode { Free, Begun, BegunByText, Lost, Reading };
  using Row = std::pair<std::string, int64_t>;
  using Rows = std::map<Row, std::string>;
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
    for (DatabaseSqlite* each : {&db, &other, &plain})
      each->Open();
    const std::string tables =
        "PRAGMA foreign_keys = on; CREATE TABLE A (key integer primary key, x unique);"
        "CREATE TABLE Child (key integer primary key, a references A on delete cascade);";
    EXPECT_TRUE(
        plain.ExecuteStatement(tables) &&
        other.ExecuteStatement(tables + "CREATE TABLE Elsewhere (n); INSERT INTO Elsewhere VALUES (0)") &&
        db.HasChanged());
    listener.emplace(db, [this](const ChangeNotice& notice) {
      ASSERT_TRUE(reported.empty());
      for (const auto& table : notice.tables)
        for (const auto& row : table.rows)
          reported[{table.name, row.key}] = "+~-?"[static_cast<int>(row.kind)];
    });
  }

  int Any(std::size_t below) { return static_cast<int>(random() % below); }
  bool IsOpen() const { return mode == Mode::Begun || mode == Mode::BegunByText; }
  bool IsBlocked() const { return !isWal && othersReading; }

  static Rows RowsOf(DatabaseSqlite& of) {
    Rows rows;
    for (const std::string table : {"A", "Child"})
      for (CursorSqlite cursor(of, "SELECT * FROM " + table); cursor.Step();)
        rows[{table, cursor.GetInt64(0)}] = cursor.GetString(1);
    return rows;
  }

  // Does to the model's rows, in a database without any guard, what a statement does.
  bool Apply(const std::string& sql, Work& work) {
    std::string text = "DELETE FROM A; DELETE FROM Child;";
    for (const auto& [row, value] : work.rows)
      text += "INSERT INTO " + row.first + " VALUES (" + std::to_string(row.second) + ", " + value + ");";
    EXPECT_TRUE(plain.ExecuteStatement(text));
    const auto note = [](void* to, int, const char*, const char* table, sqlite3_int64 key) {
      static_cast<Work*>(to)->touched.emplace(table, key);
      ++static_cast<Work*>(to)->changes;
    };
    sqlite3_update_hook(plain.Handle(), note, &work);
    const bool isDone = plain.ExecuteStatement(sql);
    sqlite3_update_hook(plain.Handle(), nullptr, nullptr);
    work.rows = RowsOf(plain);
    return isDone;
  }

  void Write() {
    const std::string k = std::to_string(Any(8)), x = std::to_string(Any(8)), kx = "(" + k + ", " + x + ")";
    const bool rollsBack = Any(24) == 0;
    const std::string statements[] = {
        "INSERT INTO A VALUES " + kx + ", (" + std::to_string(Any(8)) + ", 90)",
        "INSERT INTO Child VALUES " + kx,
        "UPDATE A SET x = x + 100 WHERE key = " + k,
        "DELETE FROM A WHERE key = " + k,
        "DELETE FROM Child WHERE a = " + k,
        "INSERT INTO A VALUES " + kx,
        "INSERT INTO A VALUES " + kx,
    };
    const std::string sql =
        rollsBack ? "INSERT OR ROLLBACK INTO A VALUES " + kx : statements[Any(std::size(statements))];
    Work next = now;
    const bool fits = Apply(sql, next), changes = next.changes != now.changes;
    const bool mayWrite = mode == Mode::Free || IsOpen();
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
      isUncertain = isUncertain || changes;
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
      levels.push_back({nullptr, now});
      levels.back().guard = std::make_unique<SavepointGuard>(db);
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
    for (const auto& [row, kind] : std::map<Row, char>(reported)) {
      if (!isUncertain || kind != '?') continue;
      reported.erase(row);
      difference.erase(row);
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
    for (auto level = levels.begin() + from; level != levels.end(); ++level)
      if (level->guard) endedSavepoints.push_back(std::move(level->guard));
    levels.erase(levels.begin() + from, levels.end());
  }

  void Check() {
    ASSERT_EQ(RowsOf(db), now.rows);
    if (mode != Mode::Reading) seen = stored;
    ASSERT_EQ(Value(db, "SELECT n FROM Elsewhere"), std::to_string(seen));
    ASSERT_EQ(reported.size(), 0U);
    ASSERT_EQ(db.IsInTransaction(), IsOpen() || mode == Mode::Reading);
    ASSERT_EQ(db.HasBegunTransaction(), mode == Mode::Begun || mode == Mode::Lost);
    ASSERT_TRUE(mode != Mode::Begun || guard->IsActive());
    if (guard && mode != Mode::Begun && mode != Mode::Lost) endedGuards.push_back(std::move(guard));
    for (const Level& level : levels)
      ASSERT_TRUE(level.guard->IsActive());
    const auto expectEnded = [](const auto& old) {
      ASSERT_THROW(old->Commit(), InvalidOperationException);
      ASSERT_FALSE(old->IsActive());
    };
    std::for_each(endedGuards.begin(), endedGuards.end(), expectEnded);
    std::for_each(endedSavepoints.begin(), endedSavepoints.end(), expectEnded);
    for (const auto& old : endedSavepoints)
      old->Rollback();
    if (Any(3) == 0) {
      ASSERT_EQ(db.HasChanged(), seen != asked);
      asked = seen;
      endedSavepoints.clear();
      endedGuards.clear();
    }
  }

  const bool isWal = GetParam() == "wal";
  TestSupport::TemporaryDirectory directory;
  const std::string connection =
      "file:" + directory.File("clips.db") + "?_busy_timeout=0&_synchronous=off&_journal_mode=" + GetParam();
  DatabaseSqlite db{connection, nullptr}, other{connection, nullptr}, plain{":memory:", nullptr};
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
  std::vector<Level> levels;
  std::vector<std::unique_ptr<SavepointGuard>> endedSavepoints;
  std::vector<std::unique_ptr<TransactionGuard>> endedGuards;
  std::vector<std::unique_ptr<ReadGuard>> readings;
  const ReadGuard* reading = nullptr;
};

TEST_P(GuardsModelTest, StoreShowAndReportWhatTheModelSays) {
  for (int step = 0; step < 12000; ++step) {
    const int action = Any(128);
    if (action < 32 && !IsOpen())
      mode == Mode::Free ? Begin() : mode == Mode::Reading ? Read() : End();
    else
      action < 56    ? Write()
      : action < 60  ? Begin()
      : action < 64  ? End()
      : action < 108 ? UseSavepoint()
      : action < 116 ? Read()
      : action < 124 ? OtherWorks()
      : action < 125 ? Reopen()
                     : void();
    Check();
    ASSERT_FALSE(HasFailure()) << "step " << step << ", action " << action << ", mode "
                               << static_cast<int>(mode);
  }
}

INSTANTIATE_TEST_SUITE_P(Journals, GuardsModelTest, testing::Values("delete", "wal"));

class GuardsTest : public TestSupport::OpenSqlite {
 protected:
  GuardsTest() { Run("CREATE TABLE A (x); INSERT INTO A VALUES (1)"); }
  // Lets SQLite refuse what a caller's function can forbid.
  template <int Action>
  static void Forbid(DatabaseSqlite& on) {
    const auto refuse = [](void*, int action, const char*, const char*, const char*, const char*) {
      return action == Action ? SQLITE_DENY : SQLITE_OK;
    };
    sqlite3_set_authorizer(on.Handle(), refuse, nullptr);
  }
};

TEST_F(GuardsTest, ASavepointLeavesTheCallersSavepointsAlone) {
  Run("BEGIN; SAVEPOINT s");
  {
    SavepointGuard within(db);
    Run("INSERT INTO A VALUES (2); RELEASE s");
    EXPECT_THROW(within.Commit(), InvalidOperationException);
  }
  CursorSqlite writing(db, "INSERT INTO A VALUES (3), (4) RETURNING x");
  EXPECT_TRUE(writing.Step());
  EXPECT_THROW(SavepointGuard{db}, InvalidOperationException);
  EXPECT_THAT(db.LastFailure(), HasSubstr("SQL statements in progress"));
  writing.Close();
  // Nor does one that can't begin, of whose statements SQLite takes the shortest alone.
  const SavepointGuard around(db);
  sqlite3_limit(db.Handle(), SQLITE_LIMIT_SQL_LENGTH, 22);
  EXPECT_THROW(SavepointGuard{db}, InvalidOperationException);
  EXPECT_THAT(db.LastFailure(), HasSubstr("statement too long"));
  EXPECT_TRUE(around.IsActive());
}

// SQLite can hardly be made to fail at it otherwise.
TEST_F(GuardsTest, ARollbackToASavepointThatFailsLosesTheWholeTransaction) {
  TransactionGuard transaction(db);
  Run("INSERT INTO A VALUES (2)");
  SavepointGuard guard(db);
  // The refusal comes when the kept statement is prepared again, after a change of the schema.
  Run("CREATE TABLE B (x)");
  Forbid<SQLITE_SAVEPOINT>(db);
  EXPECT_THROW(guard.Rollback(), InvalidOperationException);
  sqlite3_set_authorizer(db.Handle(), nullptr, nullptr);
  EXPECT_THAT(db.LastFailure(), HasSubstr("the whole transaction was rolled back: not authorized"));
  EXPECT_FALSE(guard.IsActive() || db.ExecuteStatement("DELETE FROM A"));
  EXPECT_THROW(transaction.Commit(), InvalidOperationException);
  EXPECT_EQ(Value(db, "SELECT count(*) FROM A"), "1");
}

TEST_F(GuardsTest, DestructorsThrowNothingWhenTheirEndIsRefusedAndTheLogThrows) {
  // No file is open for it.
  const auto failing = std::make_shared<std::ofstream>();
  failing->exceptions(std::ios_base::badbit);
  DatabaseSqlite logging("file:" + path + "?_busy_timeout=0", failing);
  logging.Open();
  {
    const TransactionGuard guard(logging);
    EXPECT_TRUE(logging.ExecuteStatement("DELETE FROM A"));
    Forbid<SQLITE_TRANSACTION>(logging);
  }
  EXPECT_TRUE(logging.HasBegunTransaction());
  sqlite3_set_authorizer(logging.Handle(), nullptr, nullptr);
  EXPECT_EQ(logging.EndTransaction(false), 0);
  const ReadGuard blocking(db);
  EXPECT_EQ(Value(db, "SELECT count(*) FROM A"), "1");
  {
    const ReadGuard reading(logging);
    EXPECT_EQ(sqlite3_exec(logging.Handle(), "DELETE FROM A", nullptr, nullptr, nullptr), SQLITE_OK);
  }
  EXPECT_FALSE(logging.IsInTransaction());
  EXPECT_EQ(Value(logging, "SELECT count(*) FROM A"), "1");
  // When its rollback is refused as well, the next statement makes up for it.
  {
    const ReadGuard reading(logging);
    sqlite3_limit(logging.Handle(), SQLITE_LIMIT_SQL_LENGTH, 5);
  }
  sqlite3_limit(logging.Handle(), SQLITE_LIMIT_SQL_LENGTH, 1000);
  EXPECT_TRUE(logging.IsInTransaction());
  EXPECT_EQ(Value(logging, "SELECT count(*) FROM A"), "1");
  EXPECT_FALSE(logging.IsInTransaction());
}

}  // namespace Oru::Common::Databases::Sqlite
