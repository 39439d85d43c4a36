#pragma once

#include "Oru/Common/Databases/Sqlite/StatementText.h"
#include "Oru/Common/Databases/Sqlite/Statements/NameIndex.h"

#include <cstddef>
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

  /// Rewinds, and leaves the bindings.
  void Rewind();
  /// Rewinds and clears the bindings, to serve the next user.
  void Clear();

  /// Where the cache holds statements of this text; null for a statement that isn't cached.
  void* slot = nullptr;

 private:
  explicit StatementHandle(sqlite3_stmt* statement);

  void ReadColumns();

  sqlite3_stmt* mStatement;
  bool mIsReadOnly;
  int mPreparations = 0;
  NameIndex mColumns;
  NameIndex mParameters;
  // The texts that are bound, by parameter.
  std::vector<std::string> mTexts;
};

}  // namespace Oru::Common::Databases::Sqlite
