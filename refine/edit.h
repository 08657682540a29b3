#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "refine/tree.h"

namespace snipwell {

/// A range of words that goes, and the number of the text that comes in its place.
struct Cut {
  Range range;
  std::uint32_t text = 0;  ///< 0 for none
};

/// One change to a program: all its cuts together. Of words that two of them name the first one
/// takes.
struct Edit {
  std::vector<Cut> cuts;
  std::size_t next;  ///< the edit to go on with when this one holds; the one behind it otherwise
};

/// The edits of one pass in their order. Those between an edit and its `next` are finer ones, which
/// are there only for when it does not hold.
class EditList {
 public:
  std::size_t Size() const { return edits.size(); }
  const Edit& operator[](std::size_t index) const { return edits[index]; }

  /// The number of a text for cuts.
  std::uint32_t Put(std::string text) {
    texts.push_back(std::move(text));
    return static_cast<std::uint32_t>(texts.size());
  }
  const std::string& Text(std::uint32_t number) const { return texts[number - 1]; }

  /// Adds an edit and returns its index; what is added until `EndFiner` is called with that is
  /// finer.
  std::size_t Add(std::vector<Cut> cuts) {
    edits.push_back({std::move(cuts), edits.size() + 1});
    return edits.size() - 1;
  }
  void EndFiner(std::size_t coarse) { edits[coarse].next = edits.size(); }

  void Remove(Range range) { Add({{range}}); }
  void Replace(Range range, std::uint32_t text) { Add({{range, text}}); }

 private:
  std::vector<Edit> edits;
  std::vector<std::string> texts;
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

}  // namespace snipwell
