#pragma once

#include <array>
#include <cstddef>

#include "source/obj_org.h"
#include "source/position.h"
#include "text/text_reader.h"

namespace snipwell {

/// Classes of characters that the scanners tell apart.
enum class CharClass : unsigned char {
  Nul = 0,
  Other = 2,
  Hash,
  Slash,
  DoubleQuote,
  SingleQuote,
  Digit,
  WordStart,
  Space,
  LineFeed,
  Semicolon,
  OpenBrace,
  Equals,
  Colon,
  CloseBrace,
  OpenParen,
  CloseParen,
};

/// The class of each character code; those from 128 up are Other.
extern const std::array<CharClass, 256> kCharClasses;

// Inline, since every character of every scan is looked up.
inline CharClass ClassOf(char c) { return kCharClasses[static_cast<unsigned char>(c)]; }

/// The state of one object's scan and the steps that read and skip text, shared by the two
/// scanners. The text is walked one character at a time: `ch` holds the character to be classified,
/// NUL at the end of the input, and the object's reading position stands on it. Every step ends at
/// the end of the input without an error.
class LexicalLayer {
 public:
  /// Borrows the input, the object being scanned and that object's reading position.
  LexicalLayer(TextReader& source, ObjOrg& scanned, Position& current)
      : input(source), object(scanned), position(current) {}

  /// Reads the next character into `ch`.
  void Advance() { ch = position.Get(input); }
  /// Reads the next character and returns it instead of storing it in `ch`; for comments.
  char ReadRaw() { return position.Get(input); }
  /// Reads a word that starts at `ch` into `word`, at most 300 characters of it; the rest is met as
  /// another word. False, with nothing read, when `ch` starts no word.
  bool ReadWord();
  /// Skips the white space, line feeds included, that starts at `ch`. False when there is none.
  bool SkipWhiteSpace();
  /// With `ch` a slash: skips a comment and returns true. A slash that opens no comment takes the
  /// character after it along, unclassified, and gives false.
  bool SkipComment();
  /// With `ch` an opening quote: skips the literal.
  void SkipQuoted();
  /// Skips the rest of the line; `ch` becomes the first character of the next one. A backslash does
  /// not continue the line.
  void SkipLine();
  /// After the word `__declspec`: skips white space and a parenthesised argument, up to its first
  /// closing parenthesis.
  void SkipDeclspec();

  char GetChar() const { return ch; }
  const char* GetWord() const { return word.data(); }
  CharClass Class() const { return ClassOf(ch); }
  /// True while the input has met neither its end nor an error.
  bool IsGood() const { return !input.AtEnd(); }

 protected:
  bool AtTopLevel() const { return depth == 0; }
  bool OutsideParens() const { return parens == 0; }

  // What both scanners do with a "#": only one met before anything was classified makes the object
  // a preprocessor line and completes it.
  bool TakeDirective();

  // Marks set at the reading position or one character before it.
  void MarkEndHeader() { object.SetEndHeader(position.Previous()); }
  void MarkStartBody() { object.SetStartBody(position); }
  void MarkEndBody() { object.SetEndBody(position.Previous()); }

  TextReader& input;
  ObjOrg& object;
  Position& position;
  char ch = '\0';
  int depth = 0;   // of braces
  int parens = 0;  // of parentheses

 private:
  std::size_t WordCharactersAtHand(std::size_t most) const;

  static constexpr std::size_t kMaxWord = 300;
  std::array<char, kMaxWord + 1> word{};
};

}  // namespace snipwell
