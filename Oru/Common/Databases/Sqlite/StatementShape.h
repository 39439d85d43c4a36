#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

/// What statements that differ only in the values they compare with have in common.
///
/// The framework writes values into statement texts as literals. The shape is such a text with each literal
/// that follows a comparison lifted out and a parameter in its place, so that one prepared statement serves
/// them all. A literal is lifted only where a parameter means the same to SQLite:
///   - in a text of one statement that starts with SELECT, INSERT, UPDATE, DELETE, REPLACE or WITH;
///   - a whole integer that fits 64 bits, with its sign, or a text between single quotes;
///   - directly behind =, ==, <>, !=, <, <=, > or >=;
///   - behind the first WHERE, ON, HAVING or SET outside parentheses, and never in result columns, GROUP BY,
///     ORDER BY or LIMIT, at any depth: there a literal names, numbers or types something.
/// Internal to the access layer. Threads: a value belongs to one thread at a time.
class StatementShape {
 public:
  enum class Kind {
    /// Not one statement of those kinds, or not one that this class understands: to be prepared as it stands,
    /// and not worth keeping.
    Uncacheable,
    /// Nothing was lifted: the text is its own shape.
    AsItStands,
    /// `Text()` is the shape and `Literals()` are the values of its parameters, in order.
    Lifted,
  };

  struct Literal {
    bool isText = false;
    int64_t integer = 0;
    /// What stands between the quotes, quotes still doubled; a piece of the analysed text.
    std::string_view text;
  };

  /// More literals than this make a text uncacheable: such texts are seldom run twice.
  static constexpr std::size_t MaxLiterals = 16;
  /// So does a greater length, in bytes: a list of thousands of keys isn't worth its memory.
  static constexpr std::size_t MaxLength = 16384;

  /// Analyses a text, which must stay alive and unchanged while the results are used.
  Kind Analyse(std::string_view text);

  /// Makes the shape that a text has if it is like one analysed before but for its literals, at a fraction of
  /// the cost of an analysis: every integer and text that stands behind a "=" is taken for one to lift. The
  /// guess is right if an analysis has made the same shape by lifting as many literals: all else being the
  /// same, so is what each of them means. Whether there was such a text, the caller knows.
  void Guess(std::string_view text);

  /// The shape of the last analysis or guess, empty if that was uncacheable.
  std::string_view Text() const { return mText; }
  const std::vector<Literal>& Literals() const { return mLiterals; }

 private:
  std::string_view mText;
  // Kept from one analysis to the next for its memory.
  std::string mBuffer;
  std::vector<Literal> mLiterals;
};

}  // namespace Oru::Common::Databases::Sqlite
