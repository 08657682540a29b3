// The scanner of declarations. One pass, one step for each character by its class:
//
//   word          outside braces, a few words set the type of the object
//   "(" ")"       the first list of a header makes a function; what follows it decides which kind
//   "{" "}"       count braces and mark the body; a "}" at the top ends functions and scopes
//   ";"           ends any object at the top
//   "=" ":"       an initialiser makes a declaration; a base list ends a class's header
//   "#"           a line of its own, if nothing came before it
//   quote, "/", white space: a literal, comment or run of blanks is skipped whole
//
// The words, not a grammar, decide: "template <class T> ..." is a class here, "extern int i;" a
// scope. A wrong guess costs a cut that the compiler refuses, never a wrong result.

#include "source/declaration_scanner.h"

#include <string_view>

namespace snipwell {

namespace {

bool EndsAtCloseBrace(int type) {
  return type != ObjType::Struct && type != ObjType::Class && type != ObjType::Declaration &&
         type != ObjType::None;
}

bool OwnsBody(int type) {
  return type == ObjType::Function || type == ObjType::Scope || type == ObjType::Struct ||
         type == ObjType::Class;
}

bool CanBecomeFunction(int type) {
  return type != ObjType::Declaration && type != ObjType::Struct && type != ObjType::Class &&
         type != ObjType::Scope;
}

}  // namespace

void DeclarationScanner::Run() {
  Advance();
  while (IsGood()) {
    if (Step()) return;
  }
}

bool DeclarationScanner::Step() {
  switch (Class()) {
    case CharClass::Hash: return TakeDirective();
    case CharClass::Slash: SkipComment(); return false;
    case CharClass::DoubleQuote:
    case CharClass::SingleQuote: SkipQuoted(); return false;
    case CharClass::WordStart: Word(); return false;
    case CharClass::Space:
    case CharClass::LineFeed: SkipWhiteSpace(); return false;
    case CharClass::Semicolon: return Semicolon();
    case CharClass::OpenBrace: OpenBrace(); return false;
    case CharClass::Equals: Equals(); return false;
    case CharClass::Colon: Colon(); return false;
    case CharClass::CloseBrace: return CloseBrace();
    case CharClass::OpenParen: OpenParen(); return false;
    case CharClass::CloseParen: return CloseParen();
    case CharClass::Digit:
    case CharClass::Other:
    case CharClass::Nul: Advance(); return false;
  }
  return false;
}

void DeclarationScanner::Word() {
  ReadWord();
  if (!AtTopLevel()) return;
  const std::string_view found = GetWord();
  if (found == "namespace" || found == "extern") object.SetType(ObjType::Scope);
  if (found == "struct") object.SetType(ObjType::Struct);
  if (found == "class") object.SetType(ObjType::Class);
  if (found == "operator") object.SetType(ObjType::Function);
  if (found == "__declspec") SkipDeclspec();
}

bool DeclarationScanner::Semicolon() {
  if (!AtTopLevel()) {
    Advance();
    return false;
  }
  if (object.GetType() == ObjType::Function) return EndPrototype();
  if (object.GetType() == ObjType::None) {
    object.SetType(ObjType::Declaration);
  } else if (object.GetType() == ObjType::Class && !object.GetBlock()) {
    object.SetType(ObjType::ClassDeclaration);
  }
  Advance();
  return true;
}

/// With `ch` the ";" of a function that has no body.
bool DeclarationScanner::EndPrototype() {
  object.SetType(ObjType::Prototype);
  MarkEndHeader();
  MarkStartBody();
  Advance();
  return true;
}

void DeclarationScanner::OpenBrace() {
  if (AtTopLevel() && OwnsBody(object.GetType())) {
    object.SetBlock(true);
    // A base list has already ended the header of its class.
    const bool headerEnded =
        object.GetType() == ObjType::Class && object.GetEndHeader() > object.GetStart();
    if (!headerEnded) MarkEndHeader();
  }
  Advance();
  if (AtTopLevel()) MarkStartBody();  // an initialiser's braces are marked too, without a Block
  ++depth;
}

void DeclarationScanner::Equals() {
  if (AtTopLevel() && object.GetType() != ObjType::Function) {
    object.SetType(ObjType::Declaration);
  }
  Advance();
}

void DeclarationScanner::Colon() {
  if (AtTopLevel() && OutsideParens() && object.GetType() == ObjType::Class) MarkEndHeader();
  Advance();
}

bool DeclarationScanner::CloseBrace() {
  LowerDepth();
  if (AtTopLevel()) MarkEndBody();
  Advance();
  return AtTopLevel() && EndsAtCloseBrace(object.GetType());
}

void DeclarationScanner::OpenParen() {
  if (OutsideParens() && AtTopLevel() && CanBecomeFunction(object.GetType())) {
    object.SetType(ObjType::Function);
    object.SetStartParen(position);
  }
  Advance();
  ++parens;
}

bool DeclarationScanner::CloseParen() {
  LowerParens();
  if (AtFunctionHeader()) object.SetEndParen(position);
  Advance();
  SkipWhiteSpace();
  if (!AtFunctionHeader()) return false;
  switch (Class()) {
    case CharClass::Semicolon: return EndPrototype();
    case CharClass::OpenBrace: EnterFunctionBody(); return false;
    case CharClass::WordStart: SkipTrailerAndEnterBody(); return false;
    default: return false;
  }
}

/// A counter of this scanner never goes below 0, so a stray closer only ends the object or is
/// passed over.
void DeclarationScanner::LowerDepth() {
  if (depth > 0) --depth;
}

void DeclarationScanner::LowerParens() {
  if (parens > 0) --parens;
}

bool DeclarationScanner::AtFunctionHeader() const {
  return object.GetType() == ObjType::Function && AtTopLevel() && OutsideParens();
}

void DeclarationScanner::EnterFunctionBody() {
  object.SetBlock(true);
  MarkEndHeader();
  ++depth;
  Advance();
  MarkStartBody();
}

/// The search for the brace passes every ";", so that old-style parameter declarations are part of
/// the header. A prototype with a trailing word therefore takes the next definition along.
void DeclarationScanner::SkipTrailerAndEnterBody() {
  object.SetType(ObjType::FunctionTrailer);
  do {
    Advance();
  } while (ch != '{' && IsGood());
  EnterFunctionBody();
}

}  // namespace snipwell
