#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace snipwell {

/// Lines of text, filled from left to right. One that gets too long is broken where its words are
/// held together least, and goes on four columns further in.
class LineFiller {
 public:
  static constexpr std::size_t kWidth = 80;  ///< columns, a byte each
  static constexpr int kNeverBreak = std::numeric_limits<int>::max();

  /// Ends the line, unless it is empty, and begins one with so many blanks.
  void StartLine(std::size_t newIndent);

  /// Appends a text to the line.
  void Append(std::string_view text);

  /// Appends a blank at which the line may be broken. Of two such places the one with the lower
  /// `bond` is taken, then the later one.
  void AppendBlank(int bond);

  /// Columns up to the end of the line, and those with which it began.
  std::size_t Column() const { return line.size() - lineBegin; }
  std::size_t Indent() const { return indent; }

  /// Begins a block of lines that belong together.
  void StartBlock();

  /// All lines; blocks of several lines stand between empty ones.
  std::string Text();

 private:
  struct Place {
    std::size_t at;
    int bond;
  };

  void BreakLine();
  void EndLine();

  std::vector<std::string> lines;
  std::vector<std::size_t> blocks;  // the lines at which they begin
  std::string line;
  std::size_t lineBegin = 0;  // of the last one, when a token holds line feeds
  std::size_t indent = 0;
  std::vector<Place> places;  // at which this line may be broken, bonds growing from the last one
};

}  // namespace snipwell
