#pragma once

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

  PreparedStatement(const PreparedStatement&) = delete;
  PreparedStatement& operator=(const PreparedStatement&) = delete;
  /// Finalises the statement. The connection must still be open.
  ~PreparedStatement();

  sqlite3_stmt* Handle() const { return mStatement; }
  bool IsReadOnly() const { return mIsReadOnly; }

  const std::vector<std::string>& ColumnNames() const { return mColumnNames; }
  /// The position of a result column, -1 for an unknown name; the first of several that share a name. The
  /// search begins at `*next` and leaves there the position behind the one found: columns are mostly read in
  /// their order, and then the first try meets.
  int ColumnIndex(const std::string& name, std::size_t* next) const;
  /// The number of a parameter, from 1, by its name without the prefix character; 0 for an unknown name.
  /// `next` as above.
  int ParameterIndex(const std::string& name, std::size_t* next) const;

  /// Reads the columns again if SQLite has prepared the statement anew, as it does by itself when the schema
  /// has changed. To be called behind the first step of a run.
  void NoticeNewPreparation();

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
  std::vector<std::string> mColumnNames;
  bool mHasRepeatedNames = false;
  std::vector<std::string> mParameterNames;
};

}  // namespace Oru::Common::Databases::Sqlite
