#include "source/position.h"

#include <ostream>

namespace snipwell {

Position Position::Previous() const {
  return col > 0 ? Position(line, col - 1) : Position(line - 1, prevCol);
}

std::ostream& operator<<(std::ostream& out, const Position& position) {
  return out << "Line: " << position.GetLine() << "   Col: " << position.GetCol() << std::endl;
}

}  // namespace snipwell
