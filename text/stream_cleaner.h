#pragma once

namespace snipwell {

class TextReader;
class TextWriter;

/// Copies a C or C++ text in one pass without its comments and with every run of white space as one
/// line feed, if the run held one, or else as one space. String and character literals and
/// preprocessor lines are copied byte for byte. A comment leaves nothing behind: words that only a
/// comment separated are joined, and a line comment goes with its line feed.
class StreamCleaner {
 public:
  /// Borrows both texts; the caller opens and closes them.
  StreamCleaner(TextReader& input, TextWriter& output) : in(&input), out(&output) {}

  /// Cleans the whole input; returns true. An input that ends inside a comment, literal or
  /// preprocessor line ends the output there.
  bool Run();

  /// Writes `current` and reads the next character into it.
  void Advance();
  // The handlers: each is entered with `current` holding the character that selected it and leaves
  // in `current` the first character that it has not handled.
  void CollapseBlanks();
  void SkipComment();
  void CopyLiteral(char quote);
  void CopyDirective();

 private:
  bool Read();
  void Write();
  void SkipLineComment();
  void SkipBlockComment();

  TextReader* in;
  TextWriter* out;
  char current = '\0';  // read last and not yet handled; NUL after the end of the input
};

}  // namespace snipwell
