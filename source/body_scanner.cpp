// The scanner of statements and members. One pass, one step for each character by its class:
//
//   ";"           ends the object outside braces and parentheses
//   "{" "}"       count braces and mark the body; the "}" ends all but a do-statement
//   "(" ")"       count parentheses
//   word          "do" lets the object run on after its "}"; an access label is an object that must
//                 stay
//   "#"           a line of its own, if nothing came before it
//   quote, "/", white space: a literal, comment or run of blanks is skipped whole
//
// The counters have no lower limit. The "}" that closes the enclosing body, met after trailing
// blanks or a comment, takes the depth to -1, and the object then runs on until a later "{" and a
// terminator, or the end of the input; the compiler refuses the cuts that this spoils.

#include "source/body_scanner.h"

#include <string_view>

namespace snipwell {

void BodyScanner::Run() {
  Advance();
  while (IsGood()) {
    if (Step()) return;
  }
}

bool BodyScanner::Step() {
  switch (Class()) {
    case CharClass::Hash: return TakeDirective();
    case CharClass::Slash: SkipComment(); return false;
    case CharClass::DoubleQuote:
    case CharClass::SingleQuote: SkipQuoted(); return false;
    case CharClass::WordStart: return Word();
    case CharClass::Space:
    case CharClass::LineFeed: SkipWhiteSpace(); return false;
    case CharClass::Semicolon: return Semicolon();
    case CharClass::OpenBrace: OpenBrace(); return false;
    case CharClass::CloseBrace: return CloseBrace();
    case CharClass::OpenParen: OpenParen(); return false;
    case CharClass::CloseParen: CloseParen(); return false;
    case CharClass::Digit:
    case CharClass::Equals:
    case CharClass::Colon:
    case CharClass::Other:
    case CharClass::Nul: Advance(); return false;
  }
  return false;
}

bool BodyScanner::Word() {
  ReadWord();
  if (!AtTopLevel()) return false;
  const std::string_view found = GetWord();
  if (found == "do") object.SetType(ObjType::DoStatement);
  if (found != "public" && found != "private") return false;  // "protected" changes nothing
  object.SetError(true);
  object.SetType(ObjType::Statement);
  Advance();
  return true;
}

bool BodyScanner::Semicolon() {
  const bool complete = AtTopLevel() && OutsideParens();
  if (complete && object.GetType() == ObjType::None) object.SetType(ObjType::Statement);
  Advance();
  return complete;
}

void BodyScanner::OpenBrace() {
  if (AtTopLevel()) {
    if (object.GetType() != ObjType::DoStatement) object.SetType(ObjType::BlockStatement);
    object.SetBlock(true);
    MarkEndHeader();
  }
  Advance();
  if (AtTopLevel()) MarkStartBody();
  ++depth;
}

bool BodyScanner::CloseBrace() {
  --depth;
  if (AtTopLevel()) MarkEndBody();
  Advance();
  return AtTopLevel() && object.GetType() != ObjType::DoStatement;
}

void BodyScanner::OpenParen() {
  Advance();
  ++parens;
}

void BodyScanner::CloseParen() {
  --parens;
  Advance();
}

}  // namespace snipwell
