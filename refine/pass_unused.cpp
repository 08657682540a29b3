// What nothing else uses, each with all that only it uses: the units that no other one uses are
// the roots, and a few groups of neighbouring roots are halved like the items of a list. That a
// failing source of a million bytes needs some thousands of them is found in a dozen tries.

#include <cstddef>
#include <vector>

#include "refine/passes.h"
#include "refine/references.h"

namespace snipwell {

namespace {

// Finer ones are left to the items: each edit takes a walk over all that uses something, and where
// one of a group is needed the others wait for the next round.
constexpr std::size_t kMostGroups = 16;

std::vector<Cut> CutsOf(const std::vector<Range>& ranges) {
  std::vector<Cut> cuts;
  for (const Range range : ranges) cuts.push_back({range});
  return cuts;
}

}  // namespace

EditList RemoveUnused(const Program& program, const Tree& tree) {
  EditList edits;
  const References references(program, tree);
  const auto cutsOf = [&](std::size_t first, std::size_t last) {
    return CutsOf(references.Without(references.UsedWithout(first, last)));
  };
  AddHalvedGroups(edits, references.Roots().size(), kMostGroups, cutsOf);
  return edits;
}

}  // namespace snipwell
