#pragma once

#include "source/lexical_layer.h"

namespace snipwell {

/// Scans one object of a file, or of the body of a namespace or linkage block.
class DeclarationScanner : private LexicalLayer {
 public:
  using LexicalLayer::LexicalLayer;

  /// Reads on until the object is complete or the input ends.
  void Run();

 private:
  // One step for each class of character, entered with `ch` of that class. A step that can complete
  // the object returns true when it has.
  bool Step();
  void Word();
  bool Semicolon();
  void OpenBrace();
  void Equals();
  void Colon();
  bool CloseBrace();
  void OpenParen();
  bool CloseParen();

  void LowerDepth();
  void LowerParens();
  bool AtFunctionHeader() const;
  bool EndPrototype();
  void EnterFunctionBody();
  void SkipTrailerAndEnterBody();
};

}  // namespace snipwell
