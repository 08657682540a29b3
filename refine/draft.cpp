#include "refine/draft.h"

#include <algorithm>
#include <string_view>

namespace snipwell {

namespace {

// Any name is heavier than "int", any value than "0".
std::size_t WeightOf(const Word& word, std::string_view text) {
  constexpr std::size_t kName = 16;
  if (text == "0" || text == "\"\"") return 1;
  if (text == "int") return kName;
  return word.kind == TokenKind::Name ? kName + text.size() : 1 + text.size();
}

}  // namespace

Size SizeOf(const Program& program, const std::vector<Word>& words) {
  Size size = {words.size(), 0};
  for (const Word& word : words) size.weight += WeightOf(word, program.Text(word));
  return size;
}

Draft::Draft(Program& baseProgram, const EditList& passEdits)
    : program(baseProgram), edits(passEdits), current(baseProgram.Size(), kKept) {}

std::vector<Word> Draft::With(const Edit& edit) {
  States states = current;
  Make(edit, states);
  std::vector<Word> words;
  words.reserve(states.size());
  for (std::size_t i = 0; i < states.size(); ++i) {
    const Word word = program.Words()[i];
    if (states[i] == kKept) {
      words.push_back(word);
    } else if (states[i] != kGone) {
      Put(states[i], word, words);
    }
  }
  return words;
}

void Draft::Apply(const Edit& edit) { Make(edit, current); }

bool Draft::IsChangedBy(const Edit& edit) const {
  return std::any_of(edit.cuts.begin(), edit.cuts.end(),
                     [this](const Cut& cut) { return IsLeft(current, cut.range); });
}

bool Draft::IsLeft(const States& states, Range range) {
  for (std::uint32_t i = range.begin; i < range.end; ++i) {
    if (states[i] != kGone) return true;
  }
  return false;
}

void Draft::Make(const Edit& edit, States& states) {
  for (const Cut& cut : edit.cuts) {
    if (!IsLeft(states, cut.range)) continue;
    std::fill(states.begin() + cut.range.begin, states.begin() + cut.range.end, kGone);
    if (cut.text != 0) states[cut.range.begin] = cut.text;
  }
}

/// Appends the words of a text as if they had always stood at this place.
void Draft::Put(std::uint32_t text, const Word& place, std::vector<Word>& words) {
  if (texts.size() < text) texts.resize(text);
  std::vector<Word>& put = texts[text - 1];
  if (put.empty()) put = program.WordsOf(edits.Text(text));
  const std::size_t first = words.size();
  words.insert(words.end(), put.begin(), put.end());
  for (std::size_t i = first; i < words.size(); ++i) words[i].origin = place.origin;
  if (first < words.size()) words[first].gap = place.gap;
}

}  // namespace snipwell
