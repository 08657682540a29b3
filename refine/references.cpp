#include "refine/references.h"

#include <algorithm>
#include <utility>

#include "refine/names.h"

namespace snipwell {

namespace {

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> list) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

}  // namespace

References::References(const Program& wholeProgram, const Tree& wholeTree)
    : program(wholeProgram), tree(wholeTree) {
  for (const List& list : tree.Lists()) listAt.emplace(list.inside.begin, &list);
  if (!tree.Lists().empty()) AddUnits(tree.Lists().front());
  Declare();
  FindNames();
  FindRoots();
}

void References::AddUnits(const List& list) {
  for (const Range item : list.items) AddItem(item);
}

void References::AddItem(Range item) {
  if (program.Words()[item.begin].kind == TokenKind::DirectiveStart) return;
  const std::uint32_t body = ContainerBody(item);
  if (body == Tree::kNone) {
    units.push_back(item);
    return;
  }
  const auto first = static_cast<std::uint32_t>(units.size());
  const auto list = listAt.find(body + 1);
  if (list != listAt.end()) AddUnits(*list->second);
  // One that says that all namespaces of its name are inline stays.
  if (program.Text(item.begin) == "inline") return;
  containers.push_back({item, first, static_cast<std::uint32_t>(units.size())});
}

/// The brace that opens a namespace or a linkage block; kNone for any other statement.
std::uint32_t References::ContainerBody(Range item) const {
  bool isContainer = false;
  for (std::uint32_t at = item.begin; at < item.end; at = tree.Next(at)) {
    const std::string_view text = program.Text(at);
    if (text == "{" && tree.Opens(at)) return isContainer ? at : Tree::kNone;
    const std::string_view before = at > item.begin ? program.Text(at - 1) : "";
    const bool linkage = before == "extern" && program.Words()[at].kind == TokenKind::String;
    isContainer = isContainer || text == "namespace" || linkage;
    if (text == "=" || (text == "(" && !IsKeyword(before))) return Tree::kNone;
  }
  return Tree::kNone;
}

void References::Declare() {
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    for (const std::string_view name : DeclaredNames(units[unit])) {
      const auto number = static_cast<std::uint32_t>(declarers.size());
      const auto [found, isNew] = numbers.emplace(name, number);
      if (isNew) declarers.emplace_back();
      std::vector<std::uint32_t>& all = declarers[found->second];
      if (all.empty() || all.back() != unit) all.push_back(unit);
    }
  }
}

void References::FindNames() {
  std::vector<std::uint32_t> seenIn(declarers.size(), UINT32_MAX);  // the last unit, by name
  names.resize(units.size());
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    for (std::uint32_t at = units[unit].begin; at < units[unit].end; ++at) {
      const auto found = numbers.find(program.Text(at));
      if (found == numbers.end() || seenIn[found->second] == unit) continue;
      seenIn[found->second] = unit;
      names[unit].push_back(found->second);
    }
  }
}

/// The names that a unit may be used by; more than it declares do no harm. A name at the unit's
/// own level declares when what is behind it begins parameters, a body, a value or the next one.
std::vector<std::string_view> References::DeclaredNames(Range unit) const {
  std::vector<std::string_view> declared;
  bool isEnum = false;
  for (std::uint32_t at = unit.begin; at < unit.end; at = tree.Next(at)) {
    const std::string_view text = program.Text(at);
    if (text == "operator" && at + 1 < unit.end) return {program.Text(at + 1)};
    isEnum = isEnum || text == "enum";
    if (isEnum && text == "{" && tree.Opens(at)) AddNames({at, tree.Partner(at)}, declared);
    if (IsOneOf(text, {"(", "=", ":"}) && !declared.empty()) break;
    if (Declares(at, unit.end)) declared.push_back(NameFor(at));
  }
  if (declared.empty()) AddNames(unit, declared);
  return declared;
}

bool References::Declares(std::uint32_t at, std::uint32_t end) const {
  if (program.Words()[at].kind != TokenKind::Name || IsKeyword(program.Text(at))) return false;
  std::uint32_t next = at + 1;
  if (next < end && tree.Opens(next) && program.Text(next) == "<") next = tree.Next(next);
  return next >= end ||
         IsOneOf(program.Text(next), {"(", "{", ";", "=", ":", ",", "[", "final", "__attribute__"});
}

/// The name itself, or for "a::b" and "a<b>::c", which define members, the "a" before it.
std::string_view References::NameFor(std::uint32_t at) const {
  if (at < 2 || program.Text(at - 1) != "::") return program.Text(at);
  std::uint32_t before = tree.Previous(at - 1);
  if (program.Text(before) == "<" && before > 0) --before;
  return program.Text(before);
}

void References::AddNames(Range range, std::vector<std::string_view>& found) const {
  for (std::uint32_t at = range.begin; at < range.end; ++at) {
    const bool named = program.Words()[at].kind == TokenKind::Name;
    if (named && !IsKeyword(program.Text(at))) found.push_back(program.Text(at));
  }
}

bool References::IsDeclaredBy(std::uint32_t name, std::uint32_t unit) const {
  return std::binary_search(declarers[name].begin(), declarers[name].end(), unit);
}

/// A unit that declares a name as well does not use the others that do: they stay or go together.
void References::FindRoots() {
  std::vector<bool> used(declarers.size(), false);  // by name
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    for (const std::uint32_t name : names[unit]) {
      used[name] = used[name] || !IsDeclaredBy(name, unit);
    }
  }
  std::vector<bool> inUse(units.size(), false);
  for (std::size_t name = 0; name < declarers.size(); ++name) {
    for (const std::uint32_t unit : declarers[name]) inUse[unit] = inUse[unit] || used[name];
  }
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    if (!inUse[unit]) roots.push_back(unit);
  }
}

std::vector<bool> References::UsedWithout(std::size_t first, std::size_t last) const {
  std::vector<bool> staying(units.size(), false);
  std::vector<bool> seen(declarers.size(), false);
  std::vector<std::uint32_t> waiting;
  const auto keep = [&](std::uint32_t unit) {
    if (!staying[unit]) waiting.push_back(unit);
    staying[unit] = true;
  };
  for (std::size_t i = 0; i < roots.size(); ++i) {
    if (i < first || i > last) keep(roots[i]);
  }
  while (!waiting.empty()) {
    const std::uint32_t unit = waiting.back();
    waiting.pop_back();
    for (const std::uint32_t name : names[unit]) {
      if (seen[name]) continue;
      seen[name] = true;
      for (const std::uint32_t declarer : declarers[name]) keep(declarer);
    }
  }
  return staying;
}

std::vector<Range> References::Without(const std::vector<bool>& staying) const {
  std::vector<Range> gone;
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    if (!staying[unit]) gone.push_back(units[unit]);
  }
  for (const Container& container : containers) {
    const auto begin = staying.begin() + container.firstUnit;
    const auto end = staying.begin() + container.endUnit;
    if (begin != end && std::find(begin, end, true) == end) gone.push_back(container.item);
  }
  return gone;
}

}  // namespace snipwell
