#pragma once

#include <iosfwd>

#include "source/position.h"
#include "text/text_reader.h"

namespace snipwell {

/// Kinds of program object. The two scanners share the codes: one with two names means the first in
/// a list of declarations and the second in a body.
namespace ObjType {
constexpr int None = 0;         ///< nothing classified yet, or nothing that decides
constexpr int Scope = 1;        ///< namespace or linkage block
constexpr int Class = 2;        ///< class
constexpr int Struct = 3;       ///< struct
constexpr int DoStatement = 3;  ///< do-statement, to the ";" after its while
constexpr int Declaration = 4;  ///< ends at ";", or held "=", without a parameter list
constexpr int Statement = 4;    ///< ended by ";", or an access label
constexpr int Directive = 5;    ///< preprocessor line
constexpr int Function = 6;
constexpr int BlockStatement = 6;    ///< statement or member that owns a brace block
constexpr int Prototype = 7;         ///< function ended by ";" instead of a body
constexpr int FunctionTrailer = 8;   ///< function whose header goes on after the ")" with a word
constexpr int ClassDeclaration = 9;  ///< class ended by ";" without a body
}  // namespace ObjType

/// What the reduction has decided for an object.
namespace ObjStatus {
constexpr int Keep = 0;    ///< all its characters are copied
constexpr int Remove = 1;  ///< none is
}  // namespace ObjStatus

/// One program object: a piece of a source text, at the top level or in one body, with what the
/// scanner found of it and what the reduction has decided for it. The objects of one level form a
/// list along `Next`; a record does not own the records it points to.
class ObjOrg {
 public:
  ObjOrg(const Position& start, int id);

  /// Scan this object from the character after `position` and set its boundaries; `position`
  /// becomes the place from which the next object is scanned, one character beyond this object's
  /// last. `language` (0 C, 1 C++) makes no difference. `ScanDeclarations` is for a file and the
  /// body of a Scope, `ScanBody` for every other body.
  void ScanDeclarations(int language, TextReader& input, Position& position);
  void ScanBody(int language, TextReader& input, Position& position);

  /// Writes the record, a line per field; `Current` is left out.
  void Dump(std::ostream& out) const;

  int GetID() const { return ID; }
  Position GetStart() const { return Start; }
  Position GetEnd() const { return End; }
  Position GetEndHeader() const { return EndHeader; }
  Position GetStartBody() const { return StartBody; }
  Position GetEndBody() const { return EndBody; }
  Position GetStartParen() const { return StartParen; }
  Position GetEndParen() const { return EndParen; }
  Position GetCurrent() const { return Current; }
  int GetType() const { return Type; }
  int GetStatus() const { return Status; }
  bool GetBlock() const { return Block; }
  bool GetError() const { return Error; }
  bool GetIsUsed() const { return IsUsed; }
  ObjOrg* GetNext() const { return Next; }
  ObjOrg* GetChild() const { return Child; }

  void SetID(int value) { ID = value; }
  void SetStart(const Position& value) { Start = value; }
  void SetEnd(const Position& value) { End = value; }
  void SetEndHeader(const Position& value) { EndHeader = value; }
  void SetStartBody(const Position& value) { StartBody = value; }
  void SetEndBody(const Position& value) { EndBody = value; }
  void SetStartParen(const Position& value) { StartParen = value; }
  void SetEndParen(const Position& value) { EndParen = value; }
  void SetCurrent(const Position& value) { Current = value; }
  void SetType(int value) { Type = value; }
  void SetStatus(int value) { Status = value; }
  void SetBlock(bool value) { Block = value; }
  void SetError(bool value) { Error = value; }
  void SetIsUsed(bool value) { IsUsed = value; }
  void SetNext(ObjOrg* value) { Next = value; }
  void SetChild(ObjOrg* value) { Child = value; }
  void ClearNext() { Next = nullptr; }
  void ClearChild() { Child = nullptr; }

 private:
  template <typename Scanner>
  void ScanWith(TextReader& input, Position& position);

  int ID;               // place in the list of its level
  Position Start;       // the object's first character, which the scan before this one read
  Position End;         // last character
  Position EndHeader;   // last character before the body, a prototype's ";" or a base list's ":"
  Position StartBody;   // first character after the opening brace, or a prototype's ";"
  Position EndBody;     // last character before the closing brace
  Position StartParen;  // "(" and ")" of a function's parameter list
  Position EndParen;
  Position Current;  // the scanner's reading position
  int Type = ObjType::None;
  int Status = ObjStatus::Keep;
  bool Block = false;  // a body in braces was found
  bool Error = false;  // holds the failing construct, so it is never removed
  ObjOrg* Next = nullptr;
  ObjOrg* Child = nullptr;
  bool IsUsed = false;
};

}  // namespace snipwell
