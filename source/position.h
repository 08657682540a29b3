#pragma once

#include <cstddef>
#include <iosfwd>
#include <string_view>

#include "text/text_reader.h"

namespace snipwell {

/// Line and column of the last character read from a text. Every reader that cuts or copies source
/// text by positions counts through this class, so that a boundary found by the scanner names the
/// same character when the candidate is written.
///
/// Counting: from (0, 0) with nothing read, the first character of the text is at column 1 of line
/// 0, and the first character of every later line at column 0. The line feed is one more column of
/// the line that it ends; the line grows only when the character after it is read. The read that
/// meets the end of the text still moves the position on by one, so that a scan that stops there
/// stands one past the last character.
class Position {
 public:
  /// `startPrevCol` is the column of the line feed before `startLine`, or -1 when it is not known.
  explicit Position(int startLine = 0, int startCol = 0, int startPrevCol = -1)
      : line(startLine), col(startCol), prevCol(startPrevCol) {}

  int GetLine() const { return line; }
  int GetCol() const { return col; }
  int GetPrevCol() const { return prevCol; }
  /// The last character read; NUL when nothing has been read.
  char GetLast() const { return last; }

  /// Reads one character and moves on. Returns it, or NUL at the end of the text; a text that has
  /// already reported its end changes nothing.
  char Get(TextReader& in);

  /// Reads the next characters up to `bound`, as many as are at hand; at least one, if there is
  /// one. `Get` for each of them would leave the same position. Returns them, valid until the next
  /// read; nothing at the end of the text, or when `bound` is reached or passed.
  std::string_view GetRun(TextReader& in, const Position& bound);

  /// Reads `count` characters (at least one) that are at hand, of which only the last
  /// may be a line feed, when the one read before is no line feed. Returns them, valid until the
  /// next read.
  std::string_view GetWithinLine(TextReader& in, std::size_t count);

  /// The position one character back, with `prevCol` -1 and nothing read: only one step back over
  /// a line break is possible.
  Position Previous() const;

  /// Replaces line and column only.
  void Set(int newLine, int newCol) {
    line = newLine;
    col = newCol;
  }

  // Order by line, then by column; nothing else takes part.
  bool operator<(const Position& other) const {
    return line != other.line ? line < other.line : col < other.col;
  }
  bool operator>(const Position& other) const { return other < *this; }

 private:
  std::size_t PassWithinLine(std::string_view text, const Position& bound);

  int line;
  int col;
  int prevCol;
  char last = '\0';
};

/// Writes "Line: " line "   Col: " column, a line break and a flush.
std::ostream& operator<<(std::ostream& out, const Position& position);

// Inline, since it is the innermost step of every scan and copy.
inline char Position::Get(TextReader& in) {
  // Counts wrap around instead of overflowing: the reader of the compiler's output counts on
  // through all the compilations of a run.
  const auto next = [](int count) { return static_cast<int>(static_cast<unsigned>(count) + 1U); };
  if (in.AtEnd()) return '\0';
  const bool startsLine = last == '\n';
  if (startsLine) prevCol = col;
  const bool came = in.Read(last);
  line = startsLine ? next(line) : line;
  col = startsLine ? 0 : next(col);
  return came ? last : '\0';
}

}  // namespace snipwell
