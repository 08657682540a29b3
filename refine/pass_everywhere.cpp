// What stands around a name goes wherever the name stands.

#include <cstdint>
#include <utility>
#include <vector>

#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

/// The cuts that take a name and the "::" behind it.
std::vector<Cut> Qualifiers(const Program& program, const Places& places) {
  std::vector<Cut> cuts;
  for (const std::uint32_t place : places) {
    if (place + 1 < program.Size() && program.Text(place + 1) == "::") {
      cuts.push_back({{place, place + 2}});
    }
  }
  return cuts;
}

/// The cuts that take a name and the parentheses behind it; of nested ones only the outer.
std::vector<Cut> Calls(const Program& program, const Tree& tree, const Places& places) {
  std::vector<Cut> cuts;
  for (const std::uint32_t place : places) {
    const std::uint32_t open = place + 1;
    if (!cuts.empty() && place < cuts.back().range.end) continue;
    if (open < program.Size() && tree.Opens(open) && program.Text(open) == "(") {
      cuts.push_back({{place, tree.Next(open)}});
    }
  }
  return cuts;
}

}  // namespace

EditList RemoveEverywhere(const Program& program, const Tree& tree) {
  EditList edits;
  for (const auto& [name, places] : PlacesOfNames(program)) {
    for (std::vector<Cut> cuts : {Qualifiers(program, places), Calls(program, tree, places)}) {
      if (cuts.size() > 1) edits.Add(std::move(cuts));
    }
  }
  return edits;
}

}  // namespace snipwell
