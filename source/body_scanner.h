#pragma once

#include "source/lexical_layer.h"

namespace snipwell {

/// Scans one object of the body of a function, class or struct.
class BodyScanner : private LexicalLayer {
 public:
  using LexicalLayer::LexicalLayer;

  /// Reads on until the object is complete or the input ends.
  void Run();

 private:
  // One step for each class of character, entered with `ch` of that class. A step that can complete
  // the object returns true when it has.
  bool Step();
  bool Word();
  bool Semicolon();
  void OpenBrace();
  bool CloseBrace();
  void OpenParen();
  void CloseParen();
};

}  // namespace snipwell
