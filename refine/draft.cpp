#include "refine/draft.h"

#include <optional>
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

Draft::Draft(Program& baseProgram, const EditList& passEdits)
    : program(baseProgram),
      edits(passEdits),
      whole(Writer::WriteWhole(program)),
      states(baseProgram.Size(), kKept) {
  for (std::uint32_t i = 0; i < states.size(); ++i) size.weight += SizeOf(i).weight;
  size.tokens = states.size();
}

void Draft::Make(std::size_t edit) {
  before.clear();
  for (const Cut& cut : edits[edit]) {
    if (!IsLeft(cut.range)) continue;
    for (std::uint32_t i = cut.range.begin; i < cut.range.end; ++i) Change(i, kGone);
    if (cut.text == 0) continue;
    Know(cut.text);
    Change(cut.range.begin, cut.text);
  }
}

void Draft::Undo() {
  for (auto change = before.rbegin(); change != before.rend(); ++change) {
    Set(change->first, change->second);
  }
  before.clear();
}

bool Draft::IsLeft(Range range) const {
  for (std::uint32_t i = range.begin; i < range.end; ++i) {
    if (states[i] != kGone) return true;
  }
  return false;
}

/// Sets a word's state so that it can be taken back.
void Draft::Change(std::uint32_t index, std::uint32_t state) {
  if (states[index] == state) return;
  before.emplace_back(index, states[index]);
  Set(index, state);
}

void Draft::Set(std::uint32_t index, std::uint32_t state) {
  const Size old = SizeOf(index);
  states[index] = state;
  const Size now = SizeOf(index);
  size = {size.tokens - old.tokens + now.tokens, size.weight - old.weight + now.weight};
}

/// Of what stands in the place of a word.
Size Draft::SizeOf(std::uint32_t index) const {
  const std::uint32_t state = states[index];
  if (state == kGone) return {};
  const Word& word = program.Words()[index];
  if (state == kKept) return {1, WeightOf(word, program.Text(word))};
  return {texts[state].words.size(), texts[state].weight};
}

/// Takes a text apart when it is put in for the first time.
void Draft::Know(std::uint32_t text) {
  if (texts.size() <= text) texts.resize(text + std::size_t{1});
  PutText& put = texts[text];
  if (put.known) return;
  put.words = WordsOf(edits.Text(text));
  for (const Word& word : put.words) put.weight += WeightOf(word, program.Text(word));
  put.known = true;
}

std::vector<Word> Draft::WordsOf(const PutIn& put) {
  if (put.words.Size() == 0) return program.WordsOf(put.text);
  const auto first = program.Words().begin();
  return {first + put.words.begin, first + put.words.end};
}

/// Takes the ranges of words that are kept, and the words of the texts between them.
template <typename TakeKept, typename TakePut>
void Draft::EachPart(const TakeKept& takeKept, const TakePut& takePut) const {
  for (std::uint32_t i = 0; i < states.size(); ++i) {
    const std::uint32_t begin = i;
    while (i < states.size() && states[i] == kKept) ++i;
    if (begin < i) takeKept(Range{begin, i});
    if (i < states.size() && states[i] != kGone) EachPutWord(i, takePut);
  }
}

/// Words of texts are as if they had always stood at their place.
template <typename Take>
void Draft::EachPutWord(std::uint32_t index, const Take& take) const {
  const Word& place = program.Words()[index];
  std::optional<Gap> gap = place.gap;  // of the first one
  for (Word word : texts[states[index]].words) {
    word.origin = place.origin;
    word.gap = gap.value_or(word.gap);
    gap.reset();
    take(word);
  }
}

std::vector<Word> Draft::Words() const {
  std::vector<Word> words;
  words.reserve(size.tokens);
  const auto first = program.Words().begin();
  EachPart([&](Range kept) { words.insert(words.end(), first + kept.begin, first + kept.end); },
           [&](const Word& word) { words.push_back(word); });
  return words;
}

std::string Draft::Render(std::string space) const {
  Writer writer(program, std::move(space));
  writer.Reserve(whole.text.size());
  EachPart([&](Range kept) { writer.Append(kept, whole); },
           [&](const Word& word) { writer.Append(word); });
  return writer.Take();
}

}  // namespace snipwell
