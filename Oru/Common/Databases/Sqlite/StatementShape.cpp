#include "Oru/Common/Databases/Sqlite/StatementShape.h"

#include <array>
#include <limits>

namespace Oru::Common::Databases::Sqlite {

namespace {

enum class CharClass : uint8_t { Other, Space, Word, Digit };

constexpr std::array<CharClass, 256> MakeCharClasses() {
  std::array<CharClass, 256> classes{};
  for (int c = 0; c < 256; ++c) {
    CharClass charClass = CharClass::Other;
    if (c == ' ' || (c >= '\t' && c <= '\r' && c != '\v')) charClass = CharClass::Space;
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 0x80)
      charClass = CharClass::Word;
    if (c >= '0' && c <= '9') charClass = CharClass::Digit;
    classes[static_cast<std::size_t>(c)] = charClass;
  }
  return classes;
}

constexpr std::array<CharClass, 256> CharClasses = MakeCharClasses();

CharClass ClassOf(char c) {
  return CharClasses[static_cast<unsigned char>(c)];
}

bool IsWordChar(char c) {
  return ClassOf(c) == CharClass::Word || ClassOf(c) == CharClass::Digit || c == '$';
}

enum class TokenKind : uint8_t {
  End,
  Word,
  Integer,
  Text,
  Comparison,
  Open,
  Close,
  Semicolon,
  Sign,
  Parameter,
  Other,
  // A character or an unfinished token that SQLite won't take, or whose meaning is left to SQLite.
  Unknown,
};

struct Token {
  TokenKind kind = TokenKind::End;
  std::size_t begin = 0;
  std::size_t end = 0;
};

// SQLite's own division of a text into tokens, as far as it matters here: https://sqlite.org/syntax.html and
// the rules for literals at https://sqlite.org/lang_expr.html.
class Tokens {
 public:
  explicit Tokens(std::string_view text) : mText(text) {}

  // The next token behind blanks and comments.
  Token Next() {
    SkipBlanks();
    Token token;
    token.begin = mAt;
    token.kind = mAt < mText.size() ? Scan() : TokenKind::End;
    token.end = mAt;
    return token;
  }

 private:
  char Peek(std::size_t ahead = 0) const { return mAt + ahead < mText.size() ? mText[mAt + ahead] : '\0'; }

  void SkipBlanks() {
    for (;;) {
      while (mAt < mText.size() && ClassOf(mText[mAt]) == CharClass::Space)
        ++mAt;
      if (Peek() == '-' && Peek(1) == '-') {
        SkipPast("\n");
      } else if (Peek() == '/' && Peek(1) == '*') {
        mAt += 2;
        SkipPast("*/");
      } else {
        return;
      }
    }
  }

  void SkipPast(std::string_view end) {
    const std::size_t found = mText.find(end, mAt);
    mAt = found == std::string_view::npos ? mText.size() : found + end.size();
  }

  TokenKind Scan() {
    const char c = mText[mAt];
    switch (ClassOf(c)) {
      case CharClass::Word:
        return ScanWord(c);
      case CharClass::Digit:
        return ScanNumber();
      default:
        return ScanSymbol(c);
    }
  }

  TokenKind ScanWord(char first) {
    if ((first == 'x' || first == 'X') && Peek(1) == '\'') {
      ++mAt;
      return ScanQuoted('\'') ? TokenKind::Other : TokenKind::Unknown;
    }
    do
      ++mAt;
    while (mAt < mText.size() && IsWordChar(mText[mAt]));
    return TokenKind::Word;
  }

  TokenKind ScanNumber() {
    while (ClassOf(Peek()) == CharClass::Digit)
      ++mAt;
    if (Peek() != '.' && !IsWordChar(Peek())) return TokenKind::Integer;
    // A fraction, an exponent or hexadecimal digits: no whole number in decimal.
    while (mAt < mText.size() &&
           (IsWordChar(Peek()) || Peek() == '.' || ((Peek() == '+' || Peek() == '-') && AfterExponent()))) {
      ++mAt;
    }
    return TokenKind::Other;
  }

  bool AfterExponent() const { return mText[mAt - 1] == 'e' || mText[mAt - 1] == 'E'; }

  // To behind the closing quote, a doubled quote standing for one; false if there is no closing quote.
  bool ScanQuoted(char quote) {
    for (++mAt; mAt < mText.size(); ++mAt) {
      if (mText[mAt] != quote) continue;
      ++mAt;
      if (Peek() != quote) return true;
    }
    return false;
  }

  TokenKind Take(std::size_t length, TokenKind kind) {
    mAt += length;
    return kind;
  }

  TokenKind ScanSymbol(char c) {
    const char next = Peek(1);
    switch (c) {
      case '\'':
        // A digit directly behind would become the number of the parameter.
        return ScanQuoted('\'') && ClassOf(Peek()) != CharClass::Digit ? TokenKind::Text : TokenKind::Unknown;
      case '"':
      case '`':
        return ScanQuoted(c) ? TokenKind::Other : TokenKind::Unknown;
      case '[':
        SkipPast("]");
        return mText[mAt - 1] == ']' ? TokenKind::Other : TokenKind::Unknown;
      case '(':
        return Take(1, TokenKind::Open);
      case ')':
        return Take(1, TokenKind::Close);
      case ';':
        return Take(1, TokenKind::Semicolon);
      case '=':
        return Take(next == '=' ? 2 : 1, TokenKind::Comparison);
      case '!':
        return next == '=' ? Take(2, TokenKind::Comparison) : Take(1, TokenKind::Unknown);
      case '<':
        if (next == '<') return Take(2, TokenKind::Other);
        return Take(next == '=' || next == '>' ? 2 : 1, TokenKind::Comparison);
      case '>':
        if (next == '>') return Take(2, TokenKind::Other);
        return Take(next == '=' ? 2 : 1, TokenKind::Comparison);
      case '-':
        if (next == '>') return Take(Peek(2) == '>' ? 3 : 2, TokenKind::Other);
        return Take(1, TokenKind::Sign);
      case '+':
        return Take(1, TokenKind::Sign);
      case '?':
      case ':':
      case '@':
      case '#':
      case '$':
        return Take(1, TokenKind::Parameter);
      case '.':
        if (ClassOf(next) != CharClass::Digit) return Take(1, TokenKind::Other);
        ++mAt;
        ScanNumber();
        return TokenKind::Other;
      case '*':
      case '/':
      case '%':
      case '|':
      case '&':
      case '~':
      case ',':
        return Take(1, TokenKind::Other);
      default:
        return Take(1, TokenKind::Unknown);
    }
  }

  std::string_view mText;
  std::size_t mAt = 0;
};

// `word` in capitals.
bool IsWord(std::string_view text, std::string_view word) {
  if (text.size() != word.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    const char c = text[i];
    if ((c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c) != word[i]) return false;
  }
  return true;
}

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words) {
  for (const std::string_view word : words) {
    if (IsWord(text, word)) return true;
  }
  return false;
}

// In which clause of which (sub)select the scan stands, as far as lifting goes.
class Clauses {
 public:
  void Enter() {
    ++mDepth;
    if (mDepth < mLifts.size()) mLifts[mDepth] = mLifts[mDepth - 1];
  }

  // False for a parenthesis too many.
  bool Leave() {
    if (mDepth == 0) return false;
    --mDepth;
    return true;
  }

  bool TooDeep() const { return mDepth >= mLifts.size(); }
  bool Lifts() const { return mLifts[mDepth]; }

  void Word(std::string_view word) {
    // Most words are names; those that matter have two to nine letters.
    if (word.size() < 2 || word.size() > 9) return;
    if (IsOneOf(word, {"WHERE", "ON", "HAVING", "SET"})) {
      mLifts[mDepth] = mDepth == 0 || mLifts[mDepth - 1];
    } else if (IsOneOf(word, {"SELECT", "VALUES", "GROUP", "ORDER", "LIMIT", "OFFSET", "RETURNING", "WINDOW",
                              "UNION", "INTERSECT", "EXCEPT", "PARTITION"})) {
      mLifts[mDepth] = false;
    }
  }

 private:
  // Whether literals behind comparisons are lifted, by depth of parentheses.
  std::array<bool, 32> mLifts{};
  std::size_t mDepth = 0;
};

// The number of a sign and decimal digits, if it fits.
bool ToInteger(std::string_view digits, bool isNegative, int64_t& value) {
  const uint64_t limit = static_cast<uint64_t>(std::numeric_limits<int64_t>::max()) + (isNegative ? 1 : 0);
  uint64_t magnitude = 0;
  for (const char c : digits) {
    const auto digit = static_cast<uint64_t>(c - '0');
    if (magnitude > (limit - digit) / 10) return false;
    magnitude = magnitude * 10 + digit;
  }
  value = static_cast<int64_t>(isNegative ? ~magnitude + 1 : magnitude);
  return true;
}

}  // namespace

StatementShape::Kind StatementShape::Analyse(std::string_view text) {
  mText = {};
  mBuffer.clear();
  mLiterals.clear();
  if (text.size() > MaxLength) return Kind::Uncacheable;
  // SQLite reads up to the first NUL byte.
  if (text.find('\0') != std::string_view::npos) return Kind::Uncacheable;

  Tokens tokens(text);
  Clauses clauses;
  std::size_t copied = 0;
  bool keepsLiterals = false;
  const auto lift = [&](std::size_t begin, std::size_t end, const Literal& literal) {
    mLiterals.push_back(literal);
    mBuffer.append(text.substr(copied, begin - copied)).push_back('?');
    copied = end;
  };

  Token token = tokens.Next();
  const std::string_view first = text.substr(token.begin, token.end - token.begin);
  if (!IsOneOf(first, {"SELECT", "INSERT", "UPDATE", "DELETE", "REPLACE", "WITH"})) return Kind::Uncacheable;

  for (token = tokens.Next(); token.kind != TokenKind::End; token = tokens.Next()) {
    const std::string_view word = text.substr(token.begin, token.end - token.begin);
    switch (token.kind) {
      case TokenKind::Unknown:
        return Kind::Uncacheable;
      case TokenKind::Semicolon:
        while (token.kind == TokenKind::Semicolon)
          token = tokens.Next();
        if (token.kind != TokenKind::End) return Kind::Uncacheable;
        break;
      case TokenKind::Parameter:
        keepsLiterals = true;
        break;
      case TokenKind::Open:
        clauses.Enter();
        if (clauses.TooDeep()) return Kind::Uncacheable;
        break;
      case TokenKind::Close:
        if (!clauses.Leave()) return Kind::Uncacheable;
        break;
      case TokenKind::Word:
        // The WHERE of a conflict target must repeat that of an index to the letter.
        if (IsWord(word, "CONFLICT")) keepsLiterals = true;
        clauses.Word(word);
        break;
      case TokenKind::Comparison: {
        if (!clauses.Lifts() || keepsLiterals) break;
        const Tokens behindComparison = tokens;
        Token literal = tokens.Next();
        const std::size_t begin = literal.begin;
        const bool isSigned = literal.kind == TokenKind::Sign;
        const bool isNegative = isSigned && text[literal.begin] == '-';
        if (isSigned) literal = tokens.Next();
        const std::string_view digits = text.substr(literal.begin, literal.end - literal.begin);
        Literal lifted;
        if (literal.kind == TokenKind::Text && !isSigned) {
          lifted.isText = true;
          lifted.text = digits.substr(1, digits.size() - 2);
          lift(begin, literal.end, lifted);
        } else if (literal.kind == TokenKind::Integer && (!isSigned || literal.begin == begin + 1) &&
                   ToInteger(digits, isNegative, lifted.integer)) {
          lift(begin, literal.end, lifted);
        } else {
          tokens = behindComparison;
        }
        break;
      }
      default:
        break;
    }
    if (token.kind == TokenKind::End) break;
  }

  if (keepsLiterals) mLiterals.clear();
  if (mLiterals.size() > MaxLiterals) return Kind::Uncacheable;
  if (mLiterals.empty()) {
    mText = text;
    return Kind::AsItStands;
  }
  mBuffer.append(text.substr(copied));
  mText = mBuffer;
  return Kind::Lifted;
}

void StatementShape::Guess(std::string_view text) {
  mText = text;
  mBuffer.clear();
  mLiterals.clear();
  // A text that carries parameters, or what looks like one, keeps its literals.
  if (text.find('?') != std::string_view::npos) return;

  std::size_t copied = 0;
  for (std::size_t at = text.find('='); at != std::string_view::npos; at = text.find('=', at)) {
    at = text.find_first_not_of(" =", at);
    if (at == std::string_view::npos) break;
    std::size_t end = at;
    Literal literal;
    if (text[at] == '\'') {
      end = text.find('\'', at + 1);
      if (end == std::string_view::npos) break;
      literal.isText = true;
      literal.text = text.substr(at + 1, end - at - 1);
      ++end;
    } else {
      while (end < text.size() && ClassOf(text[end]) == CharClass::Digit)
        ++end;
      if (end == at || !ToInteger(text.substr(at, end - at), false, literal.integer)) continue;
    }
    mLiterals.push_back(literal);
    mBuffer.append(text.data() + copied, at - copied).push_back('?');
    copied = at = end;
  }
  if (mLiterals.empty()) return;
  mBuffer.append(text.data() + copied, text.size() - copied);
  mText = mBuffer;
}

}  // namespace Oru::Common::Databases::Sqlite
