// Items of every list, from the outside in, in halves: first all of them, then the later half, then
// what is left of the halves, down to single ones.

#include <algorithm>
#include <cstddef>
#include <vector>

#include "refine/passes.h"

namespace snipwell {

namespace {

/// Lists from the outside in, and of those equally deep the later first: what comes later is used
/// by less.
std::vector<const List*> FromOutsideIn(const Tree& tree) {
  std::vector<const List*> lists;
  for (const List& list : tree.Lists()) {
    if (!list.items.empty()) lists.push_back(&list);
  }
  std::reverse(lists.begin(), lists.end());
  std::stable_sort(lists.begin(), lists.end(),
                   [](const List* a, const List* b) { return a->depth < b->depth; });
  return lists;
}

}  // namespace

EditList RemoveItems(const Program& /*program*/, const Tree& tree) {
  EditList edits;
  for (const List* list : FromOutsideIn(tree)) {
    AddHalved(edits, 0, list->items.size() - 1, [&](std::size_t first, std::size_t last) {
      return std::vector<Cut>{{WithoutItems(*list, first, last)}};
    });
  }
  return edits;
}

}  // namespace snipwell
