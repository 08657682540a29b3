// What nothing else uses, each with all that only it uses: the units that no other one uses are
// the roots, and a few groups of neighbouring roots are halved like the items of a list. That a
// failing source of a million bytes needs some thousands of them is found in a dozen tries.

#include <algorithm>
#include <cstddef>
#include <vector>

#include "refine/passes.h"
#include "refine/references.h"

namespace snipwell {

namespace {

// Each edit takes a walk over all that uses something.
constexpr std::size_t kMostGroups = 256;

std::vector<Cut> CutsOf(const std::vector<Range>& ranges) {
  std::vector<Cut> cuts;
  for (const Range range : ranges) cuts.push_back({range});
  return cuts;
}

}  // namespace

EditList RemoveUnused(const Program& program, const Tree& tree) {
  EditList edits;
  const References references(program, tree);
  const std::size_t roots = references.Roots().size();
  if (roots == 0) return edits;
  const std::size_t groups = std::min(kMostGroups, roots);
  AddHalved(edits, 0, groups - 1, [&](std::size_t first, std::size_t last) {
    const std::size_t begin = first * roots / groups;
    const std::size_t end = (last + 1) * roots / groups;
    return CutsOf(references.Without(references.UsedWithout(begin, end - 1)));
  });
  return edits;
}

}  // namespace snipwell
