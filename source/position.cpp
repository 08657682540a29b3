#include "source/position.h"

#include <cstddef>
#include <ostream>

namespace snipwell {

std::string_view Position::GetRun(TextReader& in, const Position& bound) {
  if (!(*this < bound)) return {};
  const std::string_view text = in.AtHand();
  if (text.empty()) {
    Get(in);
    return in.AtEnd() ? std::string_view() : std::string_view(&last, 1);
  }
  std::size_t count = 0;
  while (count < text.size() && *this < bound) {
    if (last == '\n') {
      prevCol = col;
      col = 0;
      ++line;
      last = text[count++];
    } else {
      count += PassWithinLine(text.substr(count), bound);
    }
  }
  in.Skip(count);
  return text.substr(0, count);
}

/// Moves on over the characters of `text` that stand on the line of the last one read, its line
/// feed included, up to `bound`. Returns their number, at least one.
std::size_t Position::PassWithinLine(std::string_view text, const Position& bound) {
  if (line == bound.line) text = text.substr(0, static_cast<std::size_t>(bound.col - col));
  const std::size_t lineFeed = text.find('\n');
  const std::size_t count = lineFeed == std::string_view::npos ? text.size() : lineFeed + 1;
  col += static_cast<int>(count);
  last = text[count - 1];
  return count;
}

std::string_view Position::GetWithinLine(TextReader& in, std::size_t count) {
  const std::string_view run = in.AtHand().substr(0, count);
  col += static_cast<int>(run.size());
  last = run.back();
  in.Skip(run.size());
  return run;
}

Position Position::Previous() const {
  return col > 0 ? Position(line, col - 1) : Position(line - 1, prevCol);
}

std::ostream& operator<<(std::ostream& out, const Position& position) {
  return out << "Line: " << position.GetLine() << "   Col: " << position.GetCol() << std::endl;
}

}  // namespace snipwell
