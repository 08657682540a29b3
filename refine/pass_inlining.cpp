// What a name stands for comes in the place of the name, and its declaration goes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

/// A name and the words that it stands for.
struct Meaning {
  std::uint32_t name;
  Range words;
};

/// "typedef WORDS NAME;"
std::optional<Meaning> OfTypedef(const Program& program, Range item) {
  if (program.Text(item.begin) != "typedef" || item.Size() < 4) return std::nullopt;
  const std::uint32_t name = item.end - 2;
  return Meaning{name, {item.begin + 1, name}};
}

/// "using NAME = WORDS;" and "TYPE NAME = WORDS;"
std::optional<Meaning> OfInitialiser(const Program& program, const Tree& tree, Range item) {
  for (std::uint32_t at = item.begin; at + 2 < item.end; at = tree.Next(at)) {
    if (at > item.begin && program.Text(at) == "=") return Meaning{at - 1, {at + 1, item.end - 1}};
  }
  return std::nullopt;
}

/// "TYPE NAME{WORDS};" and "TYPE NAME(WORDS);"
std::optional<Meaning> OfBrackets(const Program& program, const Tree& tree, Range item) {
  const std::uint32_t close = item.end - 2;
  if (item.Size() < 5 || !tree.Closes(close) || program.Text(close) == "]") return std::nullopt;
  const std::uint32_t open = tree.Partner(close);
  if (open <= item.begin + 1 || close == open + 1) return std::nullopt;
  return Meaning{open - 1, {open + 1, close}};
}

std::optional<Meaning> MeaningIn(const Program& program, const Tree& tree, Range item) {
  if (program.Text(item.end - 1) != ";") return std::nullopt;
  std::optional<Meaning> meaning = OfTypedef(program, item);
  if (!meaning) meaning = OfInitialiser(program, tree, item);
  if (!meaning) meaning = OfBrackets(program, tree, item);
  if (!meaning || program.Words()[meaning->name].kind != TokenKind::Name) return std::nullopt;
  return meaning;
}

/// A meaning, and where the name has it: behind its statement to the end of the list.
struct Scoped {
  Meaning meaning;
  Range item;
  Range scope;
};

std::vector<Scoped> Meanings(const Program& program, const Tree& tree) {
  std::vector<Scoped> all;
  for (const List& list : tree.Lists()) {
    if (list.commas) continue;
    for (const Range item : list.items) {
      const auto meaning = MeaningIn(program, tree, item);
      if (meaning) all.push_back({*meaning, item, {item.end, list.inside.end}});
    }
  }
  return all;
}

std::vector<Cut> Inlined(const Places& places, const Scoped& one, Range scope, std::uint32_t text) {
  std::vector<Cut> cuts = {{one.item}};
  auto place = std::lower_bound(places.begin(), places.end(), scope.begin);
  for (; place != places.end() && *place < scope.end; ++place) {
    const bool within = one.item.begin <= *place && *place < one.item.end;
    if (!within) cuts.push_back({{*place, *place + 1}, text});
  }
  return cuts;
}

}  // namespace

/// A name with one meaning has it everywhere.
EditList InlineNames(const Program& program, const Tree& tree) {
  EditList edits;
  const auto places = PlacesOfNames(program);
  const std::vector<Scoped> meanings = Meanings(program, tree);
  std::map<std::string_view, std::size_t> count;
  for (const Scoped& one : meanings) ++count[program.Text(one.meaning.name)];
  const Range everywhere = {0, static_cast<std::uint32_t>(program.Size())};
  for (const Scoped& one : meanings) {
    const std::string_view name = program.Text(one.meaning.name);
    const std::uint32_t text = edits.Put(program.Render(one.meaning.words));
    edits.Add(Inlined(places.at(name), one, count[name] == 1 ? everywhere : one.scope, text));
  }
  return edits;
}

}  // namespace snipwell
