#pragma once

#include "Oru/Common/Databases/Export.h"

#include <string>

namespace Oru::Common::Databases::Sqlite {

/// Makes expressions for `Query::Match` from what a person has typed.
///
/// A text may hold anything: quotes, operators, wildcards, control characters, NUL bytes and broken UTF-8
/// have no meaning in it, and SQLite accepts every expression made here. A text without a word matches
/// nothing.
///
/// A word runs from blank to blank. The index divides texts into words of its own: by default runs of letters
/// and digits, in either case and without regard to accents. So the word MATCH_CAM-1 finds "match", "cam" and
/// "1" one after the other, with any signs between them.
///
/// Threads: all operations may be called from several threads at once.
class ORU_COMMON_DATABASE_EXPORT FullTextExpression {
 public:
  FullTextExpression() = delete;

  /// Rows that hold every word, each in any of the indexed columns.
  static std::string AllWords(const std::string& text);
  /// The same, with the last word being the start of one: for a search while a person types.
  static std::string AllWordsAsTyped(const std::string& text);
  /// The same, with each word being the start of one.
  static std::string AllWordsBegun(const std::string& text);
  /// Rows that hold at least one of the words.
  static std::string AnyWord(const std::string& text);
  /// Rows that hold the words one after the other in one column.
  static std::string Phrase(const std::string& text);

  /// Looks for what another of these expressions finds in one column only.
  /// @throws ArgumentException for a name that is no plain identifier
  static std::string InColumn(const std::string& column, const std::string& expression);
};

}  // namespace Oru::Common::Databases::Sqlite
