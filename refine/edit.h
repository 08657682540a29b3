#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "refine/tree.h"

namespace snipwell {

/// A range of words that goes, and the number of the text that comes in its place.
struct Cut {
  Range range;
  std::uint32_t text = 0;  ///< 0 for none
};

/// What comes in the place of words: the words of a text, or words that stand elsewhere.
struct PutIn {
  std::string text;
  Range words;  ///< none when it is the text
};

/// One change to a program: all its cuts together. Of words that two of them name the first one
/// takes.
struct Edit {
  const Cut* first;
  const Cut* last;

  const Cut* begin() const { return first; }
  const Cut* end() const { return last; }
};

/// The edits of one pass in their order. Those between an edit and its `Next` are finer ones, which
/// are there only for when it does not hold. A large program has millions: an edit takes eight
/// bytes, and twelve for each of its cuts.
class EditList {
 public:
  std::size_t Size() const { return places.size(); }
  /// Good until the next one is added.
  Edit operator[](std::size_t index) const {
    const Cut* const all = cuts.data();
    return {all + (index == 0 ? 0 : places[index - 1].endCut), all + places[index].endCut};
  }
  /// The edit to go on with when this one holds; the one behind it otherwise.
  std::size_t Next(std::size_t index) const { return places[index].next; }

  /// The number of a text for cuts: a new one, or that of words of the program.
  std::uint32_t Put(std::string text) { return PutText({std::move(text), {0, 0}}); }
  std::uint32_t Put(Range words) { return PutText({"", words}); }
  const PutIn& Text(std::uint32_t number) const { return texts[number - 1]; }

  /// Adds an edit and returns its index; what is added until `EndFiner` is called with that is
  /// finer.
  std::size_t Add(const std::vector<Cut>& editCuts) {
    cuts.insert(cuts.end(), editCuts.begin(), editCuts.end());
    return AddPlace();
  }
  void EndFiner(std::size_t coarse) {
    places[coarse].next = static_cast<std::uint32_t>(places.size());
  }

  /// For edits that go from the end of the program to its start: those that take less than a part
  /// of the program are left out, unless they are among the last words of it, as it is when their
  /// turn comes.
  void LeaveOutSmall(std::size_t parts, std::size_t lastWords) {
    smallestPart = parts;
    end = lastWords;
  }
  /// True for an edit that is left out of a program of so many words.
  bool IsLeftOut(std::size_t index, std::size_t size) const {
    if (smallestPart == 0) return false;
    const Range range = (*this)[index].begin()->range;
    return range.Size() * smallestPart < size && range.begin + end < size;
  }

  void Remove(Range range) { Replace(range, 0); }
  void Replace(Range range, std::uint32_t text) {
    cuts.push_back({range, text});
    AddPlace();
  }

 private:
  struct Place {
    std::uint32_t endCut;
    std::uint32_t next;
  };

  std::uint32_t PutText(PutIn text) {
    texts.push_back(std::move(text));
    return static_cast<std::uint32_t>(texts.size());
  }

  std::size_t AddPlace() {
    const auto next = static_cast<std::uint32_t>(places.size() + 1);
    places.push_back({static_cast<std::uint32_t>(cuts.size()), next});
    return places.size() - 1;
  }

  std::vector<Place> places;
  std::vector<Cut> cuts;  // of all edits
  std::vector<PutIn> texts;
  std::size_t smallestPart = 0;  // 0 leaves nothing out
  std::size_t end = 0;
};

/// Adds the edit that takes `cutsOf(first, last)` of numbers 0 to `count` - 1, and the halves of
/// it, the later one first, down to single ones.
template <typename CutsOf>
void AddHalved(EditList& edits, std::size_t first, std::size_t last, const CutsOf& cutsOf) {
  const std::size_t whole = edits.Add(cutsOf(first, last));
  if (first < last) {
    const std::size_t middle = first + (last - first + 1) / 2;
    AddHalved(edits, middle, last, cutsOf);
    AddHalved(edits, first, middle - 1, cutsOf);
  }
  edits.EndFiner(whole);
}

/// The same, but where there are many only the last `most` are single ones, and those before are
/// so many groups of neighbours, which are not parted.
template <typename CutsOf>
void AddHalvedGroups(EditList& edits, std::size_t count, std::size_t most, const CutsOf& cutsOf) {
  if (count == 0) return;
  const std::size_t single = std::min(count, most);
  const std::size_t groups = std::min(count - single, most);
  const auto begin = [&](std::size_t group) {
    return group < groups ? group * (count - single) / groups : count - single + group - groups;
  };
  AddHalved(edits, 0, groups + single - 1, [&](std::size_t first, std::size_t last) {
    return cutsOf(begin(first), begin(last + 1) - 1);
  });
}

/// The same for edits that take several of these cuts.
inline void AddHalvedGroups(EditList& edits, const std::vector<Cut>& all, std::size_t most) {
  AddHalvedGroups(edits, all.size(), most, [&](std::size_t first, std::size_t last) {
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first);
    return std::vector<Cut>(begin, begin + static_cast<std::ptrdiff_t>(last - first + 1));
  });
}

}  // namespace snipwell
