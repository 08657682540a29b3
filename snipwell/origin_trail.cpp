#include "snipwell/origin_trail.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace snipwell {

namespace {

using Indexes = std::vector<std::uint32_t>;

constexpr std::uint32_t kNone = UINT32_MAX;

std::vector<std::string> TextsOf(const Program& program) {
  std::vector<std::string> texts;
  texts.reserve(program.Size());
  for (std::size_t i = 0; i < program.Size(); ++i) texts.emplace_back(program.Text(i));
  return texts;
}

/// For each word the first one among `before` that is left for it.
Indexes FirstFits(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  std::unordered_map<std::string_view, Indexes> all;
  for (std::uint32_t i = 0; i < before.size(); ++i) all[before[i]].push_back(i);
  Indexes fits;
  std::uint32_t next = 0;
  for (const std::string& text : after) {
    const Indexes& same = all[text];
    const auto fit = std::lower_bound(same.begin(), same.end(), next);
    fits.push_back(fit == same.end() ? kNone : *fit);
    if (fit != same.end()) next = *fit + 1;
  }
  return fits;
}

/// Where a word could as well stand right before the one behind it, it does, unless it continues
/// the one before.
void PullTogether(const std::vector<std::string>& before, const std::vector<std::string>& after,
                  Indexes& fits) {
  for (std::size_t i = fits.size(); i-- > 0;) {
    if (i + 1 == fits.size() || fits[i] == kNone || fits[i + 1] == kNone) continue;
    const bool continues = i > 0 && fits[i - 1] != kNone && fits[i - 1] + 1 == fits[i];
    const std::uint32_t place = fits[i + 1] - 1;
    if (!continues && place > fits[i] && before[place] == after[i]) fits[i] = place;
  }
}

}  // namespace

void OriginTrail::Start(MappedText text) {
  map = std::move(text.map);
  Follow(Program(std::move(text.text)));
}

void OriginTrail::Follow(const std::string& text) {
  std::vector<std::string> after = TextsOf(Program(text));
  const bool respelt = after.size() == texts.size();
  if (!respelt) {
    Indexes fits = FirstFits(texts, after);
    PullTogether(texts, after, fits);
    Indexes found;
    for (const std::uint32_t fit : fits) {
      const std::uint32_t last = found.empty() ? 0 : found.back();
      found.push_back(fit == kNone ? last : places[fit]);
    }
    places = std::move(found);
  }
  texts = std::move(after);
}

void OriginTrail::Follow(const Program& program) {
  texts = TextsOf(program);
  places.clear();
  for (const Word& word : program.Words()) places.push_back(word.origin);
}

Program OriginTrail::WithPlaces(std::string text, Blanks blanks) const {
  Program program(std::move(text), blanks);
  std::vector<Word> words = program.Words();
  for (std::size_t i = 0; i < words.size() && i < places.size(); ++i) words[i].origin = places[i];
  program.SetWords(std::move(words));
  return program;
}

}  // namespace snipwell
