// Items of every list in halves: all of them, then the later half, then what is left of the halves,
// down to single ones. An item that has to stay is looked into at once, before those in front of
// it: what comes later uses what comes before, and the less is left of it, the more of that can
// go. In a large program, where each try takes long, small items wait, but not those of its end:
// most of the rest is there because the end includes it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

#include "refine/passes.h"

namespace snipwell {

namespace {

// No compiler follows brackets further.
constexpr std::uint32_t kDeepest = 1000;

class Removal {
 public:
  explicit Removal(const Tree& tree) : lists(tree.Lists()), inner(lists.size()) {
    std::vector<std::size_t> around;
    for (const std::size_t i : InOrder()) {
      while (!around.empty() && lists[around.back()].inside.end < lists[i].inside.end) {
        around.pop_back();
      }
      if (!around.empty()) inner[around.back()].push_back(i);
      if (lists[i].depth < kDeepest) around.push_back(i);
    }
  }

  EditList Edits() {
    if (!lists.empty()) AddList(0);
    return std::move(edits);
  }

 private:
  /// The lists by where they begin, a list before those in it.
  std::vector<std::size_t> InOrder() const {
    std::vector<std::size_t> order(lists.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
      const Range left = lists[a].inside;
      const Range right = lists[b].inside;
      return left.begin != right.begin ? left.begin < right.begin : left.end > right.end;
    });
    return order;
  }

  void AddList(std::size_t list) {
    if (!lists[list].items.empty()) AddItems(list, 0, lists[list].items.size() - 1);
  }

  void AddItems(std::size_t list, std::size_t first, std::size_t last) {
    const std::size_t whole = edits.Add({{WithoutItems(lists[list], first, last)}});
    if (first < last) {
      const std::size_t middle = first + (last - first + 1) / 2;
      AddItems(list, middle, last);
      AddItems(list, first, middle - 1);
    } else {
      AddInside(list, lists[list].items[first]);
    }
    edits.EndFiner(whole);
  }

  /// The lists directly in one item, the later first.
  void AddInside(std::size_t list, Range item) {
    const std::vector<std::size_t>& all = inner[list];
    const auto isBefore = [&](std::size_t index, std::uint32_t place) {
      return lists[index].inside.begin < place;
    };
    const auto begin = std::lower_bound(all.begin(), all.end(), item.begin, isBefore);
    auto end = std::lower_bound(begin, all.end(), item.end, isBefore);
    while (end != begin) AddList(*--end);
  }

  const std::vector<List>& lists;
  std::vector<std::vector<std::size_t>> inner;  // by list, in the order of the text
  EditList edits;
};

}  // namespace

EditList RemoveLargeItems(const Program& program, const Tree& tree) {
  constexpr std::size_t kLargeProgram = 2000;
  if (program.Size() < kLargeProgram) return EditList();
  constexpr std::size_t kParts = 64;
  constexpr std::size_t kEnd = 300;
  EditList edits = Removal(tree).Edits();
  edits.LeaveOutSmall(kParts, kEnd);
  return edits;
}

EditList RemoveItems(const Program& /*program*/, const Tree& tree) { return Removal(tree).Edits(); }

}  // namespace snipwell
