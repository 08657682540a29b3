// One step for each kind of token, chosen by its first byte. Only two things go beyond one token: a
// "#" starts a directive only as the first token of a line, and within a directive the line feed is
// a token and "<" after "include" opens the name of a header.

#include "refine/tokenizer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace snipwell {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsPrinted(char c) { return c > ' ' && c <= '~'; }

bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c); }

template <std::size_t Count>
bool IsOneOf(std::string_view text, const std::array<std::string_view, Count>& list) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

constexpr std::array<std::string_view, 4> kPrefixes = {"L", "u8", "u", "U"};
constexpr std::array<std::string_view, 5> kRawPrefixes = {"R", "LR", "u8R", "uR", "UR"};
constexpr std::array<std::string_view, 5> kIncludes = {"include", "include_next", "import",
                                                       "__has_include", "embed"};
/// The most frequent punctuators, with which no longer one starts.
constexpr std::string_view kAlone = "(){}[];,";
constexpr std::array<std::string_view, 33> kPunctuators = {
    "%:%:", "...", "->*", "<=>", "<<=", ">>=", "##", "::", ".*", "->", "++",
    "--",   "+=",  "-=",  "*=",  "/=",  "%=",  "^=", "&=", "|=", "<<", ">>",
    "<=",   ">=",  "==",  "!=",  "&&",  "||",  "<:", ":>", "<%", "%>", "%:"};

/// Reads tokens from one text, from left to right.
class Scan {
 public:
  explicit Scan(std::string_view whole) : text(whole) {}

  std::vector<Token> Run() {
    while (at < text.size()) {
      const std::size_t begin = at;
      const TokenKind kind = Next();
      tokens.push_back(
          {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(at - begin), kind});
      Remember(kind, text.substr(begin, at - begin));
    }
    return std::move(tokens);
  }

 private:
  char Peek(std::size_t ahead = 0) const {
    return at + ahead < text.size() ? text[at + ahead] : '\0';
  }

  bool StartsWith(std::string_view start) const {
    return text.compare(at, start.size(), start) == 0;
  }

  /// The length of a line splice at `place`, or 0.
  std::size_t Splice(std::size_t place) const {
    if (place >= text.size() || text[place] != '\\') return 0;
    if (text.compare(place, 2, "\\\n") == 0) return 2;
    return text.compare(place, 3, "\\\r\n") == 0 ? 3 : 0;
  }

  TokenKind Next() {
    const char c = Peek();
    if (inDirective && c == '\n') return End();
    if (IsBlank(c) || Splice(at) != 0) return Blank();
    if (c == '/' && Peek(1) == '/') return LineComment();
    if (c == '/' && Peek(1) == '*') return BlockComment();
    if (c == '"' || c == '\'') return Literal(c);
    if (IsNameStart(c)) return NameOrLiteral();
    if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) return Number();
    if (afterInclude && c == '<') return HeaderName();
    if (atLineStart && (c == '#' || (StartsWith("%:") && !StartsWith("%:%:")))) return Start();
    return Punctuator();
  }

  /// What the next token has to know of the ones before.
  void Remember(TokenKind kind, std::string_view token) {
    if (IsBetweenTokens(kind)) return;
    atLineStart = kind == TokenKind::DirectiveEnd;
    if (kind == TokenKind::DirectiveStart) inDirective = true;
    if (kind == TokenKind::DirectiveEnd) inDirective = false;
    afterInclude = inDirective && (IsOneOf(token, kIncludes) || (afterInclude && token == "("));
  }

  TokenKind End() {
    ++at;
    return TokenKind::DirectiveEnd;
  }

  TokenKind Start() {
    at += Peek() == '#' ? 1 : 2;
    return TokenKind::DirectiveStart;
  }

  TokenKind Blank() {
    for (;;) {
      const char c = Peek();
      if (at >= text.size() || (inDirective && c == '\n')) break;
      const std::size_t splice = Splice(at);
      if (splice == 0 && !IsBlank(c)) break;
      at += splice == 0 ? 1 : splice;
      if (splice == 0 && c == '\n') atLineStart = true;
    }
    return TokenKind::Blank;
  }

  TokenKind LineComment() {
    while (at < text.size() && Peek() != '\n') at += std::max<std::size_t>(1, Splice(at));
    return TokenKind::Comment;
  }

  TokenKind BlockComment() {
    const std::size_t end = text.find("*/", at + 2);
    at = end == std::string_view::npos ? text.size() : end + 2;
    return TokenKind::Comment;
  }

  /// A literal without its prefix: to the quote that closes it, and the suffix behind.
  TokenKind Literal(char quote) {
    ++at;
    while (at < text.size() && Peek() != '\n' && Peek() != quote) {
      const std::size_t splice = Splice(at);
      at += splice != 0 ? splice : Peek() == '\\' && Peek(1) != '\n' ? 2 : 1;
    }
    at = std::min(at, text.size());
    if (Peek() == quote) CloseLiteral();
    return quote == '"' ? TokenKind::String : TokenKind::Character;
  }

  void CloseLiteral() {
    ++at;
    if (IsNameStart(Peek())) PassNameParts();
  }

  TokenKind RawString() {
    constexpr std::size_t kLongestDelimiter = 16;
    const std::size_t open = text.find('(', at);
    if (open == std::string_view::npos || open - at > kLongestDelimiter + 1) return Literal('"');
    std::string closing = ")";
    closing += text.substr(at + 1, open - at - 1);
    const std::size_t close = text.find(closing += '"', open);
    at = close == std::string_view::npos ? text.size() : close + closing.size() - 1;
    if (Peek() == '"') CloseLiteral();
    return TokenKind::String;
  }

  void PassNameParts() {
    for (;;) {
      while (IsNamePart(Peek())) ++at;
      const std::size_t splice = Splice(at);
      if (splice == 0 || !IsNamePart(Peek(splice))) return;
      at += splice;
    }
  }

  TokenKind NameOrLiteral() {
    const std::size_t begin = at;
    PassNameParts();
    const std::string_view name = text.substr(begin, at - begin);
    if (Peek() == '"' && IsOneOf(name, kRawPrefixes)) return RawString();
    const bool quoted = Peek() == '"' || Peek() == '\'';
    return quoted && IsOneOf(name, kPrefixes) ? Literal(Peek()) : TokenKind::Name;
  }

  TokenKind Number() {
    for (;; ++at) {
      const char c = Peek();
      const bool separator = c == '\'' && IsNamePart(Peek(1));
      const char before = text[at - (at > 0 ? 1 : 0)];
      const bool sign = (c == '+' || c == '-') && std::string_view("eEpP").find(before) != npos;
      if (!IsNamePart(c) && c != '.' && !separator && !sign) return TokenKind::Number;
    }
  }

  TokenKind HeaderName() {
    const std::size_t end = text.find_first_of(">\n", at);
    at = std::min(end, text.size());
    if (Peek() == '>') ++at;
    return TokenKind::String;
  }

  /// True for the "<:" of "vector<::name>", which is not read as the digraph.
  bool OpensWithScope(std::string_view punctuator) const {
    return punctuator == "<:" && Peek(2) == ':' && Peek(3) != ':' && Peek(3) != '>';
  }

  TokenKind Punctuator() {
    const char c = Peek();
    at += kAlone.find(c) == npos ? LengthOfPunctuator() : 1;
    return IsPrinted(c) ? TokenKind::Punctuator : TokenKind::Other;
  }

  std::size_t LengthOfPunctuator() const {
    for (const std::string_view punctuator : kPunctuators) {
      if (StartsWith(punctuator) && !OpensWithScope(punctuator)) return punctuator.size();
    }
    return 1;
  }

  static constexpr std::size_t npos = std::string_view::npos;

  std::string_view text;
  std::size_t at = 0;
  bool atLineStart = true;
  bool inDirective = false;
  bool afterInclude = false;
  std::vector<Token> tokens;
};

}  // namespace

std::vector<Token> Tokenize(std::string_view text) { return Scan(text).Run(); }

}  // namespace snipwell
