#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/Statements/SqlText.h"

namespace Oru::Common::Databases::Sqlite {

namespace {

bool IsBlank(char c) {
  return (c >= '\0' && c <= ' ') || c == '\x7f';
}

// A string of the expression language, in which nothing but the quote has a meaning.
std::string Quoted(const std::string& text, std::size_t begin, std::size_t end) {
  std::string quoted("\"");
  for (std::size_t i = begin; i < end; ++i) {
    // A NUL byte would end the expression.
    quoted += text[i] == '\0' ? ' ' : text[i];
    if (text[i] == '"') quoted += '"';
  }
  return quoted += '"';
}

// The words, each as a string. One that the index finds nothing in drops out of an OR and of words that
// follow on each other without an operator. The explicit AND is no good here: there such a word finds no row.
std::string Words(const std::string& text, const char* separator) {
  std::string words;
  for (std::size_t begin = 0; begin < text.size();) {
    if (IsBlank(text[begin])) {
      ++begin;
      continue;
    }
    std::size_t end = begin;
    while (end < text.size() && !IsBlank(text[end]))
      ++end;
    words.append(words.empty() ? "" : separator).append(Quoted(text, begin, end));
    begin = end;
  }
  // No expression at all would be an error. The string without a word finds nothing.
  return words.empty() ? "\"\"" : words;
}

}  // namespace

std::string FullTextExpression::AllWords(const std::string& text) {
  return Words(text, " ");
}

std::string FullTextExpression::AllWordsAsTyped(const std::string& text) {
  return Words(text, " ") + " *";
}

std::string FullTextExpression::AllWordsBegun(const std::string& text) {
  return Words(text, " * ") + " *";
}

std::string FullTextExpression::AnyWord(const std::string& text) {
  return Words(text, " OR ");
}

std::string FullTextExpression::Phrase(const std::string& text) {
  return Quoted(text, 0, text.size());
}

std::string FullTextExpression::InColumn(const std::string& column, const std::string& expression) {
  if (column.find('.') != std::string::npos) throw ArgumentException();
  return "\"" + SqlText::CheckedName(column) + "\" : (" + expression + ")";
}

}  // namespace Oru::Common::Databases::Sqlite
