#include "source/lexical_layer.h"

#include <algorithm>
#include <string_view>

namespace snipwell {

namespace {

using ClassTable = std::array<CharClass, 256>;

constexpr void Fill(ClassTable& table, const char* characters, CharClass charClass) {
  for (; *characters != '\0'; ++characters) {
    table[static_cast<unsigned char>(*characters)] = charClass;
  }
}

constexpr ClassTable MakeClassTable() {
  ClassTable table{};
  for (CharClass& charClass : table) charClass = CharClass::Other;
  table[0] = CharClass::Nul;
  Fill(table, "#", CharClass::Hash);
  Fill(table, "/", CharClass::Slash);
  Fill(table, "\"", CharClass::DoubleQuote);
  Fill(table, "'", CharClass::SingleQuote);
  Fill(table, "0123456789", CharClass::Digit);
  Fill(table, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$", CharClass::WordStart);
  Fill(table, " \t\v\f\r", CharClass::Space);
  Fill(table, "\n", CharClass::LineFeed);
  Fill(table, ";", CharClass::Semicolon);
  Fill(table, "{", CharClass::OpenBrace);
  Fill(table, "=", CharClass::Equals);
  Fill(table, ":", CharClass::Colon);
  Fill(table, "}", CharClass::CloseBrace);
  Fill(table, "(", CharClass::OpenParen);
  Fill(table, ")", CharClass::CloseParen);
  return table;
}

bool IsWordCharacter(char c) {
  const CharClass charClass = ClassOf(c);
  return charClass == CharClass::WordStart || charClass == CharClass::Digit;
}

bool IsWhiteSpace(char c) {
  const CharClass charClass = ClassOf(c);
  return charClass == CharClass::Space || charClass == CharClass::LineFeed;
}

}  // namespace

// A constant of the compilation, so it is there before anything scans.
constexpr ClassTable kCharClasses = MakeClassTable();

bool LexicalLayer::ReadWord() {
  if (!IsWordCharacter(ch)) return false;
  std::size_t length = 0;
  do {
    word[length++] = ch;
    // What is at hand of the word is read in one go: most of a source is words.
    const std::size_t count = WordCharactersAtHand(kMaxWord - length);
    if (count > 0) length += position.GetWithinLine(input, count).copy(&word[length], count);
    Advance();
  } while (IsWordCharacter(ch) && IsGood() && length < kMaxWord);
  word[length] = '\0';
  return true;
}

std::size_t LexicalLayer::WordCharactersAtHand(std::size_t most) const {
  const std::string_view text = input.AtHand().substr(0, most);
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsWordCharacter) -
                                  text.begin());
}

bool LexicalLayer::SkipWhiteSpace() {
  if (!IsWhiteSpace(ch)) return false;
  do {
    Advance();
  } while (IsWhiteSpace(ch) && IsGood());
  return true;
}

bool LexicalLayer::SkipComment() {
  char c = ReadRaw();
  if (c == '/') {
    while (IsGood() && c != '\n') c = ReadRaw();
    Advance();
    return true;
  }
  if (c == '*') {
    char previous = '\0';
    c = ReadRaw();
    do {
      previous = c;
      c = ReadRaw();
    } while (!(previous == '*' && c == '/') && IsGood());
    Advance();
    return true;
  }
  // The character after the slash is never classified: a parenthesis, brace or quote there does
  // not count. Mostly it is a blank or an operand, and the compiler judges the cuts all the same.
  Advance();
  return false;
}

void LexicalLayer::SkipQuoted() {
  const char quote = ch;
  do {
    if (ch == '\\') Advance();  // the escaped character is passed over
    Advance();
  } while (ch != quote && IsGood());
  Advance();
}

void LexicalLayer::SkipLine() {
  do {
    Advance();
  } while (ch != '\n' && IsGood());
  Advance();
}

void LexicalLayer::SkipDeclspec() {
  SkipWhiteSpace();
  if (ch != '(') return;
  while (ch != ')' && IsGood()) Advance();
  Advance();
}

bool LexicalLayer::TakeDirective() {
  if (object.GetType() != ObjType::None) {
    Advance();
    return false;
  }
  SkipLine();
  object.SetType(ObjType::Directive);
  return true;
}

}  // namespace snipwell
