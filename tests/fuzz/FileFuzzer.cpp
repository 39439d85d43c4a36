// A damaged or changed file may be refused, or read and written in part: by exceptions and
// log entries, without a crash, a hang or a look beyond its memory.
//
// The files are in memory, so that hundreds of inputs run in a second.
//
// An input is a list of changes to a sound file, one a line. The bytes of a file would be a poor input: most
// of them are text or blanks, where a change comes to nothing, and SQLite refuses almost every other change
// before a line of the libraries has run. Changes to single values, by a plain connection, get past that: to
// rows that are well-formed and hold what the libraries would never have written.
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/TimePoints/Core/Formatters/ClockTimeCodeFormatter.h"

#include "reliability/Clips.h"

#include <cstring>

using namespace Oru;
using namespace Oru::Common::Databases::Sqlite;
using DataModel::MediaAssets::MediaAsset;
using DataModel::MediaAssets::Database::DataModelDatabase;

namespace {

using Handle = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

void Run(sqlite3* handle, const std::string& sql) {
  sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr);
}

// A file of SQLite's file system in memory, which shares a file by its name while it is open.
class MemoryFile {
 public:
  MemoryFile() : mVfs(sqlite3_vfs_find("memdb")), mFile(sqlite3_malloc(mVfs->szOsFile)) {
    int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MAIN_DB;
    if (mVfs->xOpen(mVfs, "/damaged.db", File(), flags, &flags) != SQLITE_OK) abort();
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() {
    File()->pMethods->xClose(File());
    sqlite3_free(mFile);
  }

  void Content(const std::string& content) {
    File()->pMethods->xTruncate(File(), 0);
    if (File()->pMethods->xWrite(File(), content.data(), static_cast<int>(content.size()), 0) != SQLITE_OK)
      abort();
  }

 private:
  sqlite3_file* File() const { return static_cast<sqlite3_file*>(mFile); }

  sqlite3_vfs* mVfs;
  void* mFile;
};

struct ColumnName {
  std::string table, column;
};

// The sound file: two clips, a group of both, an edit and its sequence, a property.
class SoundFile {
 public:
  SoundFile() {
    const std::string path = mDirectory.File("sound.db");
    DataModelDatabase db(path, nullptr);
    db.Open();
    for (const char* id : {"a", "b"}) {
      MediaAsset clip = Reliability::MakeClip(id, 1);
      db.GetMediaAssetTable().Save(clip);
    }
    auto group = Reliability::MakeGroup("g", 1, {"a", "b"});
    db.GetAnglesMediaAssetGroupTable().Save(group);
    db.ExecuteStatement(
        "INSERT INTO Edit VALUES (1, 'e', 'edit', 1, 'x', 2, 'y');"
        "INSERT INTO MetadataEdit VALUES (1, 'p', 'n', 'v');"
        "INSERT INTO Sequence VALUES (1, 's', 'sequence', 1, 5, 1, 0, 1, 'x', 2, 'y', 1);"
        "INSERT INTO MetadataSequence VALUES (1, 'p', 'n', 'v');"
        "INSERT INTO DapOperatorMetadataSequence VALUES (1, 10, 1, 1, 1, 'u', 'v', 1, 1, 1, 1, 1, 1, 1, 1);"
        "INSERT INTO Props VALUES (1, 'p', 'v', 1);"
        // Others' files may lack what keeps odd values out; small pages make for more structure.
        "PRAGMA writable_schema = ON;"
        "UPDATE sqlite_schema SET sql = replace(sql, ' not null', '') WHERE type = 'table';"
        "PRAGMA writable_schema = RESET; PRAGMA page_size = 1024; VACUUM");
    for (CursorSqlite cursor(
             db,
             "SELECT m.name, c.name FROM sqlite_schema m, pragma_table_info(m.name) c"
             " WHERE m.type = 'table' AND m.sql NOT LIKE 'CREATE VIRTUAL%'"
             " UNION ALL SELECT 'sqlite_schema', name FROM pragma_table_info('sqlite_schema')");
         cursor.Step();) {
      mColumns.push_back({cursor.GetString(0), cursor.GetString(1)});
    }
    // The second opening sets the schema's number, so that all others find nothing to do.
    db.Close();
    db.Open();
    db.Close();
    sqlite3* opened = nullptr;
    if (sqlite3_open(path.c_str(), &opened) != SQLITE_OK || mColumns.size() < 150) abort();
    mHandle.reset(opened);
    Run(opened,
        "PRAGMA ignore_check_constraints = ON; PRAGMA writable_schema = ON;"
        "PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY; PRAGMA locking_mode = EXCLUSIVE");
  }

  const ColumnName& Column(unsigned number) const { return mColumns[number % mColumns.size()]; }

  // The content of the file after changes of its rows and tables. The changes are taken back.
  template <class Change>
  std::string Changed(const Change& change) const {
    Run(mHandle.get(), "BEGIN");
    change(mHandle.get());
    sqlite3_int64 length = 0;
    const std::unique_ptr<unsigned char, void (*)(void*)> image(
        sqlite3_serialize(mHandle.get(), "main", &length, 0), sqlite3_free);
    Run(mHandle.get(), "ROLLBACK");
    return image ? std::string(reinterpret_cast<const char*>(image.get()), static_cast<std::size_t>(length))
                 : "";
  }

 private:
  const TestSupport::TemporaryDirectory mDirectory;
  Handle mHandle{nullptr, sqlite3_close};
  std::vector<ColumnName> mColumns;
};

const SoundFile& Sound() {
  static const SoundFile file;
  return file;
}

// One line of an input: a letter, three numbers and a text, each empty where the line is too short.
struct Change {
  explicit Change(const std::string& line) : text(line.size() > 4 ? line.substr(4) : "") {
    for (std::size_t i = 0; i < 4 && i < line.size(); ++i)
      head[i] = static_cast<unsigned char>(line[i]);
  }
  unsigned head[4] = {};
  std::string text;

  enum Kind { Drop, Cut, Bytes, Value };
  /// By the letters d (drop), c (cut) and b (bytes). All others set a value: that needs no new opening, which would
  /// take most of an input's time.
  Kind WhichKind() const {
    return head[0] == 'd' ? Drop : head[0] == 'c' ? Cut : head[0] == 'b' ? Bytes : Value;
  }
  const ColumnName& Column() const { return Sound().Column(head[1]); }
  /// Whether the tables' definitions may be others now.
  bool IsOfTables() const {
    return WhichKind() == Drop || (WhichKind() == Value && Column().table == "sqlite_schema");
  }
  bool IsOfRows() const { return WhichKind() == Value && !IsOfTables(); }
};

// Gives one column of one row, or of all rows, a value of any type.
void SetValue(sqlite3* handle, const Change& change) {
  const auto& [table, column] = change.Column();
  const std::string sql =
      "UPDATE OR IGNORE \"" + table + "\" SET \"" + column + "\" = ?1" +
      (change.head[2] % 2 ? " WHERE rowid = " + std::to_string(change.head[2] / 2 % 16) : std::string());
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) return;
  const std::string& text = change.text;
  const int size = static_cast<int>(text.size());
  using Whole = std::numeric_limits<int64_t>;
  using Half = std::numeric_limits<int32_t>;
  constexpr int64_t edges[] = {Whole::min(), Whole::max(), Half::min(), Half::max(), 0xFFFFFFFF, -1, 0, 1};
  int64_t number = 0;
  std::memcpy(&number, text.data(), std::min(text.size(), sizeof number));
  switch (const unsigned kind = change.head[3] % 8) {
    case 'n' % 8:
      break;
    case 'r' % 8:
      sqlite3_bind_double(statement, 1, std::atof(text.c_str()));
      break;
    case 't' % 8:
      sqlite3_bind_text(statement, 1, text.c_str(), size, SQLITE_STATIC);
      break;
    case 'x' % 8:
      sqlite3_bind_blob(statement, 1, text.c_str(), size, SQLITE_STATIC);
      break;
    default:
      if (kind == 'i' % 8) number = std::atoll(text.c_str());
      if (kind == 'e' % 8) number = edges[number & 7];
      sqlite3_bind_int64(statement, 1, number);
  }
  sqlite3_step(statement);
  sqlite3_finalize(statement);
}

void ChangeSchema(sqlite3* handle, const Change& change) {
  const auto& [table, column] = change.Column();
  const std::string quoted = '"' + table + '"';
  const std::string changes[] = {"ALTER TABLE " + quoted + " DROP COLUMN \"" + column + '"',
                                 "DROP TABLE " + quoted,
                                 "ALTER TABLE " + quoted + " RENAME TO Other; CREATE VIEW " + quoted +
                                     " AS SELECT * FROM Other UNION ALL SELECT * FROM Other",
                                 "DELETE FROM " + quoted};
  Run(handle, changes[change.head[2] % 4]);
}

void SetBytes(std::string& content, const Change& change) {
  // The structure of a page is at its head.
  constexpr std::size_t pageSize = 1024;
  const std::size_t page = (change.head[1] + 256 * (change.head[2] % 2)) * pageSize,
                    place = change.head[2] % 4 < 2 ? change.head[3] : change.head[3] * 4;
  for (std::size_t i = 0; i < change.text.size() && !content.empty(); ++i)
    content[(page + place + i) % content.size()] = change.text[i];
}

std::vector<Change> ChangesOf(const std::string& input) {
  std::vector<Change> changes;
  std::istringstream lines(input);
  for (std::string line; std::getline(lines, line) && changes.size() < 16;)
    changes.emplace_back(line);
  return changes;
}

std::string Damaged(const std::vector<Change>& changes) {
  // The rows first: after its bytes are damaged SQLite may refuse to change any.
  std::string content = Sound().Changed([&](sqlite3* handle) {
    for (const Change& change : changes) {
      if (change.WhichKind() == Change::Value) SetValue(handle, change);
      if (change.WhichKind() == Change::Drop) ChangeSchema(handle, change);
    }
  });
  for (const Change& change : changes) {
    if (change.WhichKind() == Change::Bytes) SetBytes(content, change);
    if (change.WhichKind() == Change::Cut) content.resize(content.size() * (change.head[1] % 128) / 128);
  }
  return content;
}

template <class Action>
void Try(const Action& action) {
  try {
    action();
  } catch (const std::exception&) {
  }
}

// What a walk gives, up to its end, an exception or enough.
template <class Entity, class Table>
std::vector<std::shared_ptr<Entity>> Walk(Table& table) {
  std::vector<std::shared_ptr<Entity>> found;
  Try([&] {
    QuerySqlite all;
    ObjectCursorSqlite<Entity, Entity> cursor;
    table.OpenObjectCursor(cursor, all);
    for (auto entity = std::make_shared<Entity>(); found.size() < 8 && cursor.Next(*entity);
         entity = std::make_shared<Entity>()) {
      found.push_back(entity);
    }
  });
  return found;
}

void UseClips(DataModelDatabase& db) {
  auto& assets = db.GetMediaAssetTable();
  for (const auto& clip : Walk<MediaAsset>(assets)) {
    Try([&] { assets.ReadTimebounds(*clip); });
    Try([&] { assets.ReadMetadata(*clip); });
    Try([&] { assets.ReadDapOperatorMetadata(*clip); });
    Try([&] { assets.ReadAnnotations(*clip); });
    Try([&] { assets.ReadMediaResources(*clip); });
    Try([&] { assets.ReadTrack(*clip); });
    for (const auto& resource : clip->MediaResources()) {
      for (const auto& stream : resource->Streams()) {
        for (const auto& essence : stream->Essences())
          Try([&] { db.GetEssenceTable().ReadMetadata(*essence); });
      }
    }
    Try([&] { TestSupport::ReadLazy(db, clip->ObjectId()); });
    // Whatever was read is a whole object.
    if (!(*clip == *clip->Clone())) abort();
    Try([&] { clip->DapOperatorMetadata().UserTimecode().ToString(TimePoints::ClockTimeCodeFormatter()); });
    Try([&] { assets.Save(*clip); });
  }
}

void UseGroupsAndEdits(DataModelDatabase& db) {
  using namespace BusinessEntityModel::Edits;
  auto& groups = db.GetMediaAssetGroupTable();
  for (const bool lazy : {true, false}) {
    for (const auto& group :
         Walk<DataModel::MediaAssets::AnglesMediaAssetGroup>(db.GetAnglesMediaAssetGroupTable())) {
      Try([&] { groups.ReadAnglesMediaAssetGroupItems(*group, lazy); });
      Try([&] { db.GetAnglesMediaAssetGroupTable().ReadDapOperatorProfileTable(*group); });
      Try([&] { db.GetAnglesMediaAssetGroupTable().Save(*group); });
    }
  }
  for (const auto& edit : Walk<Edit>(db.GetEditTable())) {
    Try([&] { db.GetEditTable().ReadMetadata(*edit); });
    Try([&] { db.GetEditTable().Save(*edit); });
  }
  auto& sequences = db.GetSequenceTable();
  for (const auto& sequence : Walk<Sequence>(sequences)) {
    Try([&] { sequences.ReadMetadata(*sequence); });
    Try([&] { sequences.ReadDapOperatorProfileTable(*sequence); });
    Try([&] { sequences.Save(*sequence); });
  }
  Walk<Common::Databases::Property>(db.GetProperties());
}

void SearchSaveAndDelete(DataModelDatabase& db) {
  Try([&] { TestSupport::Column(db, "SELECT * FROM MediaAssetFts WHERE MediaAssetFts MATCH 'v1'"); });
  auto& assets = db.GetMediaAssetTable();
  MediaAsset clip = Reliability::MakeClip("b", 2), fresh = Reliability::MakeClip("c", 1);
  Try([&] { assets.Save(clip); });
  Try([&] { assets.Save(fresh); });
  Try([&] { assets.DeleteByServerId(DataModel::MediaAssets::ZuServerId(10)); });
  Try([&] { assets.Delete(clip); });
  Try([&] { assets.CleanUpDependentData(); });
}

// A part of the tables for each input, as its number says.
void Use(DataModelDatabase& db, std::size_t number) {
  if (number % 3 == 0) return UseClips(db);
  if (number % 3 == 1) return UseGroupsAndEdits(db);
  SearchSaveAndDelete(db);
}

}  // namespace

// A long memory of what was allocated would take much of the time.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that AddressSanitizer looks for
extern "C" const char* __asan_default_options() {
  return "quarantine_size_mb=8:malloc_context_size=4:max_malloc_fill_size=0";
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static MemoryFile file;
  static TestSupport::CapturedLog log;
  static DataModelDatabase db("file:/damaged.db?vfs=memdb&_busy_timeout=0&_journal_mode=memory",
                              log.Stream());
  static uint32_t count = 0;
  ++count;
  log.Clear();
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::vector<Change> changes = ChangesOf(input);
  std::string content = Damaged(changes);
  // Most of an input's time would go to the opening and to preparing statements. So most inputs with the usual tables
  // come to an open connection, as if another one had written them. A finding of theirs may need the inputs before it.
  const bool isOpened = !db.IsOpen() || count % 16 == 0 ||
                        std::any_of(changes.begin(), changes.end(), std::mem_fn(&Change::IsOfTables));
  if (isOpened) db.Close();
  for (std::size_t i = 0; i < 4 && content.size() >= 28 && !isOpened; ++i) {
    // The count of changes, by which SQLite notices that its cache is old: https://sqlite.org/fileformat.html
    content[24 + i] = static_cast<char>(count >> (24 - 8 * i));
  }
  file.Content(content);
  if (isOpened) Try([] { db.Open(); });
  if (db.IsOpen()) {
    // Half of the inputs in a transaction, the other half to see what each statement leaves.
    std::optional<TransactionGuard> transaction;
    if (size % 2 == 1) Try([&] { transaction.emplace(db); });
    Use(db, std::hash<std::string>()(input));
    if (transaction) Try([&] { transaction->Commit(); });
  }
  // What it has read of a damaged file isn't for the next one.
  const bool areOfRows = std::all_of(changes.begin(), changes.end(), std::mem_fn(&Change::IsOfRows));
  if ((isOpened && !areOfRows) || db.IsInTransaction()) db.Close();
  return 0;
}
