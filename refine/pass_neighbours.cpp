// One to four neighbours, a group counting as one, from the end of the text to its start.

#include <cstdint>

#include "refine/passes.h"

namespace snipwell {

namespace {

/// The first word of the `count` neighbours that end just before `end`, or kNone when a bracket is
/// in the way.
std::uint32_t StartOfNeighbours(const Tree& tree, std::uint32_t end, int count) {
  std::uint32_t begin = end;
  for (; count > 0; --count) {
    if (begin == 0 || tree.Opens(begin - 1)) return Tree::kNone;
    begin = tree.Previous(begin);
  }
  return begin;
}

}  // namespace

EditList RemoveNeighbours(const Program& program, const Tree& tree) {
  constexpr int kMost = 4;
  EditList edits;
  for (auto end = static_cast<std::uint32_t>(program.Size()); end > 0; --end) {
    for (int count = 1; count <= kMost; ++count) {
      const std::uint32_t begin = StartOfNeighbours(tree, end, count);
      if (begin == Tree::kNone) break;
      edits.Remove({begin, end});
    }
  }
  return edits;
}

}  // namespace snipwell
