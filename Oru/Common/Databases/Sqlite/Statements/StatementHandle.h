#pragma once

#include "Oru/Common/Databases/Sqlite/StatementText.h"
#include "Oru/Common/Databases/Sqlite/Statements/NameIndex.h"
#include "Oru/Common/Databases/Sqlite/Statements/OpenCursors.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace Oru::Common::Databases::Sqlite {

/// One statement of SQLite, with what is known of its columns and parameters.
class StatementHandle {
 public:
  /// Prepares the first statement of a text; null when SQLite refuses, its reason then being in the
  /// handle, or when the text holds none.
  /// @param isCached  whether the statement will be used many times
  /// @param rest      set to what follows the statement in the text, unless null
  static std::unique_ptr<StatementHandle> Prepare(sqlite3* handle, std::string_view text, bool isCached,
                                                  std::string_view* rest = nullptr);

  StatementHandle(const StatementHandle&) = delete;
  StatementHandle& operator=(const StatementHandle&) = delete;
  /// Finalises the statement. The connection must still be open.
  ~StatementHandle();

  sqlite3_stmt* Handle() const { return mStatement; }
  bool IsReadOnly() const { return mIsReadOnly; }
  /// Whether the statement does something else than to read or write rows again and again: it may end a
  /// transaction or change tables.
  bool IsCommand() const { return !slot && mColumns.Size() == 0; }

  /// The names of the result columns.
  NameIndex& Columns() { return mColumns; }
  /// The names of the parameters, without the prefix character; empty for those that have none.
  NameIndex& Parameters() { return mParameters; }

  /// Reads the columns again if SQLite has prepared the statement again, as it does by itself when the schema
  /// has changed. To be called after the first step of a run.
  void NoticeNewPreparation();

  /// Binds a copy of a text. It replaces the parameter's last copy, so that the next row needs no new memory.
  /// Only for a statement that is rewound.
  /// @param number  the parameter, from 1
  /// @return SQLite's result code
  int BindText(int number, const std::string& text);

  /// Binds all values in the order of the parameters. They must stay as they are until the bindings are
  /// cleared, since a text or bytes are not copied.
  /// @return SQLite's result code
  int BindAll(const std::vector<StatementValue>& values);

  /// Notes that a parameter has its value for the next run.
  /// @param length  how many bytes the statement holds on to for it
  void NoteBound(int number, std::size_t length = 0) {
    mBound |= BitOf(number);
    if (length > LongestKeptText) mHoldsMuch = true;
  }
  /// Clears what the parameters still hold of a run before and haven't been given for this one. To be called
  /// before the first step of a run.
  void ClearUnbound() {
    if ((mStale & ~mBound) != 0) ClearStale();
    mStale = 0;
  }

  /// Rewinds, and leaves the bindings.
  void Rewind();
  /// Rewinds for the next run. The values of this one count no more, but are cleared only where the next run
  /// gives no others: most statements get all their values each time.
  void Release();
  /// Rewinds and clears the bindings, to serve the next user.
  void Clear();

  /// Where the cache holds statements of this text; null for a statement that isn't cached.
  void* slot = nullptr;
  /// The place of the cursor that runs the statement among the open ones.
  OpenCursors::Entry openCursor;

 private:
  // What a statement may hold on to for each parameter while it waits for its next use.
  static constexpr std::size_t LongestKeptText = 256;
  // How many parameters the sets below have room for. A statement with more clears all of them each time.
  static constexpr std::size_t MostNoted = 64;

  explicit StatementHandle(sqlite3_stmt* statement);

  static uint64_t BitOf(int number) { return uint64_t{1} << (static_cast<unsigned>(number - 1) % MostNoted); }
  void ReadColumns();
  void ClearStale();

  sqlite3_stmt* mStatement;
  bool mIsReadOnly;
  int mPreparations = 0;
  NameIndex mColumns;
  NameIndex mParameters;
  // Sets of parameters: those bound since the statement was rewound, and those bound for the runs before.
  uint64_t mBound = 0;
  uint64_t mStale = 0;
  bool mHoldsMuch = false;
  // Room for the text of each parameter; empty for those that were bound to none.
  std::vector<std::string> mTexts;
};

}  // namespace Oru::Common::Databases::Sqlite
