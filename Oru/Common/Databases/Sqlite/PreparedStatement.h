#pragma once

#include "Oru/Common/Databases/Sqlite/NameIndex.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace Oru::Common::Databases::Sqlite {

/// One statement of SQLite, with what is known of its columns and parameters. Internal to the access layer.
///
/// Threads: a statement belongs to one thread at a time.
class PreparedStatement {
 public:
  /// Prepares the first statement of a text; null when SQLite refuses, its reason then standing in the
  /// handle, or when the text holds none.
  /// @param isKept  whether the statement will be used many times
  static std::unique_ptr<PreparedStatement> Prepare(sqlite3* handle, const char* text, std::size_t length,
                                                    bool isKept);
  /// The same in SQLite's own terms.
  /// @param behind  set to where the next statement begins, unless null
  static int Prepare(sqlite3* handle, const char* text, int length, unsigned int flags,
                     sqlite3_stmt** statement, const char** behind);

  PreparedStatement(const PreparedStatement&) = delete;
  PreparedStatement& operator=(const PreparedStatement&) = delete;
  /// Finalises the statement. The connection must still be open.
  ~PreparedStatement();

  sqlite3_stmt* Handle() const { return mStatement; }
  bool IsReadOnly() const { return mIsReadOnly; }

  /// The names of the result columns.
  NameIndex& Columns() { return mColumns; }
  /// The names of the parameters, without the prefix character; empty for those that have none.
  NameIndex& Parameters() { return mParameters; }

  /// Reads the columns again if SQLite has prepared the statement anew, as it does by itself when the schema
  /// has changed. To be called behind the first step of a run.
  void NoticeNewPreparation();

  /// Binds a text, of which the statement keeps a copy. The copy takes the place of that parameter's last
  /// one, so that a row written again and again needs no new memory. Only for a statement that is rewound and
  /// waits for its values.
  /// @param number  the parameter, from 1
  /// @return SQLite's result code
  int BindText(int number, const std::string& text);

  /// Rewinds; also clears the bindings, unless they are the values of a text whose literals were lifted.
  void Rewind();
  /// Rewinds and clears, to serve the next user.
  void Clear();

  /// Whether parameters stand for literals of the text.
  bool hasLiftedLiterals = false;
  /// Where the statement cache keeps statements of this shape; null for a statement that isn't kept.
  void* slot = nullptr;

 private:
  explicit PreparedStatement(sqlite3_stmt* statement);

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
