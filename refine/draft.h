#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "refine/edit.h"
#include "refine/program.h"
#include "refine/writer.h"

namespace snipwell {

/// How large a program is: by its tokens, and of programs with as many by how plain they are.
struct Size {
  std::size_t tokens = 0;
  std::size_t weight = 0;

  bool operator<(const Size& other) const {
    return tokens != other.tokens ? tokens < other.tokens : weight < other.weight;
  }
};

/// A program during one pass. Edits are made in it and taken back, and yet every word keeps its
/// number, so that the pass's other edits stay good. What an edit costs grows with its cuts only.
class Draft {
 public:
  /// Borrows both; texts of the edits are put into the program's pool.
  Draft(Program& baseProgram, const EditList& passEdits);

  /// Makes an edit. A cut of which nothing is left does nothing.
  void Make(std::size_t edit);
  /// Takes the edit that was made last back; once.
  void Undo();

  const Size& GetSize() const { return size; }
  std::vector<Word> Words() const;
  /// The program's text. Written over `space`, whose memory is used again.
  std::string Render(std::string space = {}) const;

 private:
  static constexpr std::uint32_t kKept = 0;
  static constexpr std::uint32_t kGone = UINT32_MAX;
  // Anything else is the number of the text that stands in the place of the word.

  struct PutText {
    std::vector<Word> words;
    std::size_t weight = 0;
    bool known = false;
  };

  bool IsLeft(Range range) const;
  void Change(std::uint32_t index, std::uint32_t state);
  void Set(std::uint32_t index, std::uint32_t state);
  Size SizeOf(std::uint32_t index) const;
  void Know(std::uint32_t text);
  std::vector<Word> WordsOf(const PutIn& put);
  template <typename TakeKept, typename TakePut>
  void EachPart(const TakeKept& takeKept, const TakePut& takePut) const;
  template <typename Take>
  void EachPutWord(std::uint32_t index, const Take& take) const;

  Program& program;
  const EditList& edits;
  const Rendering whole;  // before the first edit
  std::vector<std::uint32_t> states;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> before;  // what the last edit has changed
  std::vector<PutText> texts;                                   // by number
  Size size;
};

}  // namespace snipwell
