// The bodies of functions in halves, all of them first: few are ever needed, and what they use is
// used no more.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "refine/passes.h"

namespace snipwell {

namespace {

/// True for a brace that follows the head of a function.
bool OpensBody(const Program& program, const Tree& tree, std::uint32_t index) {
  if (index == 0 || !tree.Opens(index) || program.Text(index) != "{") return false;
  const std::string_view before = program.Text(index - 1);
  return before == ")" || before == "const" || before == "noexcept" || before == "override" ||
         before == "final";
}

/// What the outermost of such braces hold.
std::vector<Range> Bodies(const Program& program, const Tree& tree) {
  std::vector<Range> bodies;
  for (std::uint32_t i = 0; i < program.Size(); ++i) {
    if (!OpensBody(program, tree, i)) continue;
    if (tree.Partner(i) > i + 1) bodies.push_back({i + 1, tree.Partner(i)});
    i = tree.Partner(i);
  }
  return bodies;
}

}  // namespace

EditList EmptyBodies(const Program& program, const Tree& tree) {
  EditList edits;
  const std::vector<Range> bodies = Bodies(program, tree);
  if (bodies.empty()) return edits;
  AddHalved(edits, 0, bodies.size() - 1, [&bodies](std::size_t first, std::size_t last) {
    std::vector<Cut> cuts;
    for (std::size_t i = first; i <= last; ++i) cuts.push_back({bodies[i]});
    return cuts;
  });
  return edits;
}

}  // namespace snipwell
