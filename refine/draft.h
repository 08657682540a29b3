#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "refine/edit.h"
#include "refine/program.h"

namespace snipwell {

/// How large a program is: by its tokens, and of programs with as many by how plain they are.
struct Size {
  std::size_t tokens = 0;
  std::size_t weight = 0;

  bool operator<(const Size& other) const {
    return tokens != other.tokens ? tokens < other.tokens : weight < other.weight;
  }
};

Size SizeOf(const Program& program, const std::vector<Word>& words);

/// A program during one pass. Edits that held have been made in it, and yet every word keeps its
/// number, so that the pass's other edits stay good.
class Draft {
 public:
  /// Borrows both; texts of the edits are put into the program's pool.
  Draft(Program& baseProgram, const EditList& passEdits);

  /// The words after an edit. A cut of which nothing is left does nothing.
  std::vector<Word> With(const Edit& edit);
  /// Makes an edit.
  void Apply(const Edit& edit);
  /// True when an edit still finds a word to take.
  bool IsChangedBy(const Edit& edit) const;

 private:
  static constexpr std::uint32_t kKept = 0;
  static constexpr std::uint32_t kGone = UINT32_MAX;
  // Anything else is the number of the text that stands in the place of the word.
  using States = std::vector<std::uint32_t>;

  static bool IsLeft(const States& states, Range range);
  static void Make(const Edit& edit, States& states);
  void Put(std::uint32_t text, const Word& place, std::vector<Word>& words);

  Program& program;
  const EditList& edits;
  States current;
  std::vector<std::vector<Word>> texts;  // words of the edits' texts, once they were needed
};

}  // namespace snipwell
