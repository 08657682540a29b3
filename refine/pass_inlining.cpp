// What a name stands for comes in the place of the name, and its declaration goes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
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

/// "#define NAME WORDS"
std::optional<Meaning> OfMacro(const Program& program, Range item) {
  const std::uint32_t name = item.begin + 2;
  if (item.Size() < 5 || program.Text(name - 1) != "define") return std::nullopt;
  const bool hasParameters =
      program.Text(name + 1) == "(" && program.Words()[name + 1].gap == Gap::None;
  if (hasParameters || program.Words()[name].kind != TokenKind::Name) return std::nullopt;
  return Meaning{name, {name + 1, item.end - 1}};
}

std::optional<Meaning> MeaningIn(const Program& program, const Tree& tree, Range item) {
  if (program.Words()[item.begin].kind == TokenKind::DirectiveStart) return OfMacro(program, item);
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

/// The cuts that put a meaning at the first places of its name in a range.
std::vector<Cut> Inlined(const Places& places, const Scoped& one, Range range, std::size_t most,
                         std::uint32_t text) {
  std::vector<Cut> cuts = {{one.item}};
  auto place = std::lower_bound(places.begin(), places.end(), range.begin);
  for (; place != places.end() && *place < range.end && cuts.size() <= most; ++place) {
    const bool within = one.item.begin <= *place && *place < one.item.end;
    if (!within) cuts.push_back({{*place, *place + 1}, text});
  }
  return cuts;
}

/// The names that one declaration gives a meaning, and nothing else does.
std::set<std::string_view> NamesWithOne(const Program& program, const std::vector<Scoped>& all) {
  std::map<std::string_view, std::size_t> count;
  std::set<std::string_view> names;
  for (const Scoped& one : all) ++count[program.Text(one.meaning.name)];
  for (const Scoped& one : all) {
    const std::string_view name = program.Text(one.meaning.name);
    const bool assigned = one.meaning.name == one.item.begin;
    if (count[name] == 1 && !assigned) names.insert(name);
  }
  return names;
}

}  // namespace

/// A name with one meaning has it everywhere; one of several counts only behind its statement, and
/// not for long, lest the cuts be many times the words.
EditList InlineNames(const Program& program, const Tree& tree) {
  constexpr std::size_t kMost = 50;
  EditList edits;
  const auto places = PlacesOfNames(program);
  const std::vector<Scoped> meanings = Meanings(program, tree);
  const std::set<std::string_view> clear = NamesWithOne(program, meanings);
  const Range everywhere = {0, static_cast<std::uint32_t>(program.Size())};
  for (const Scoped& one : meanings) {
    const std::string_view name = program.Text(one.meaning.name);
    const bool all = clear.count(name) != 0;
    edits.Add(Inlined(places.at(name), one, all ? everywhere : one.scope, all ? SIZE_MAX : kMost,
                      edits.Put(one.meaning.words)));
  }
  return edits;
}

}  // namespace snipwell
