// What stands around a name goes wherever the name stands.

#include <cstddef>
#include <cstdint>
#include <string_view>
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

/// The cuts that make a name that points one that holds: "*a", "&a" and "a->" become "a" and "a.".
std::vector<Cut> Pointers(const Program& program, const Places& places, std::uint32_t dot) {
  std::vector<Cut> cuts;
  for (const std::uint32_t place : places) {
    const std::string_view before = place > 0 ? program.Text(place - 1) : "";
    if (before == "*" || before == "&" || before == "&&") cuts.push_back({{place - 1, place}});
    const std::uint32_t behind = place + 1;
    if (behind < program.Size() && program.Text(behind) == "->") {
      cuts.push_back({{behind, behind + 1}, dot});
    }
  }
  return cuts;
}

/// For each word the smallest item that holds it, as the words to take out.
std::vector<Range> SmallestItems(const Program& program, const Tree& tree) {
  std::vector<Range> smallest(program.Size(), {0, 0});
  for (const List& list : tree.Lists()) {
    for (std::size_t i = 0; i < list.items.size(); ++i) {
      const Range item = list.items[i];
      for (std::uint32_t at = item.begin; at < item.end; at = tree.Next(at)) {
        smallest[at] = WithoutItems(list, i, i);
      }
    }
  }
  return smallest;
}

/// The cuts that take the smallest items in which a name stands.
std::vector<Cut> Holders(const std::vector<Range>& smallest, const Places& places) {
  std::vector<Cut> cuts;
  for (const std::uint32_t place : places) {
    const Range range = smallest[place];
    if (range.Size() > 0 && (cuts.empty() || range.begin != cuts.back().range.begin)) {
      cuts.push_back({range});
    }
  }
  return cuts;
}

}  // namespace

EditList RemoveEverywhere(const Program& program, const Tree& tree) {
  EditList edits;
  const std::uint32_t dot = edits.Put(".");
  const std::vector<Range> smallest = SmallestItems(program, tree);
  for (const auto& [name, places] : PlacesOfNames(program)) {
    for (const std::vector<Cut>& cuts :
         {Holders(smallest, places), Qualifiers(program, places), Calls(program, tree, places),
          Pointers(program, places, dot)}) {
      if (cuts.size() > 1) edits.Add(cuts);
    }
  }
  return edits;
}

}  // namespace snipwell
