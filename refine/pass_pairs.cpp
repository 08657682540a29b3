// Two small edits that each lose the failure may hold together: "struct a *b; b->c;" becomes
// "struct a b; b.c;". When few words are left every two of them are tried, the closest first; of
// more words only so many. Where a pair holds, the cheaper passes have their turn before the next.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "refine/passes.h"

namespace snipwell {

namespace {

constexpr std::size_t kMostWords = 100;
constexpr std::size_t kMostPairs = 250;

using Cuts = std::vector<Cut>;

/// The small edits at one word: it, or the group that it opens, what the group holds, its brackets.
void AddSingles(std::vector<Cuts>& singles, const Program& program, const Tree& tree,
                std::uint32_t at, std::uint32_t dot) {
  const std::uint32_t next = tree.Next(at);
  if (tree.Closes(at) && tree.Partner(at) != Tree::kNone) return;
  singles.push_back({{{at, next}}});
  if (program.Text(at) == "->") singles.push_back({{{at, next}, dot}});
  if (!tree.Opens(at)) return;
  if (next > at + 2) singles.push_back({{{at + 1, next - 1}}});
  singles.push_back({{{at, at + 1}}, {{next - 1, next}}});
}

bool AnyOverlap(const Cuts& left, const Cuts& right) {
  return std::any_of(left.begin(), left.end(), [&](const Cut& a) {
    return std::any_of(right.begin(), right.end(),
                       [&](const Cut& b) { return Overlap(a.range, b.range); });
  });
}

}  // namespace

EditList RemovePairs(const Program& program, const Tree& tree) {
  EditList edits;
  if (program.Size() > kMostWords) return edits;
  const std::uint32_t dot = edits.Put(".");
  std::vector<Cuts> singles;
  for (std::uint32_t i = 0; i < program.Size(); ++i) AddSingles(singles, program, tree, i, dot);
  for (std::size_t distance = 1; distance < singles.size(); ++distance) {
    for (std::size_t i = singles.size(); i-- > distance && edits.Size() < kMostPairs;) {
      Cuts cuts = singles[i - distance];
      if (AnyOverlap(cuts, singles[i])) continue;
      cuts.insert(cuts.end(), singles[i].begin(), singles[i].end());
      edits.Add(cuts);
    }
  }
  for (std::size_t i = 0; i < edits.Size(); ++i) edits.EndFiner(i);
  return edits;
}

}  // namespace snipwell
