#include "refine/references.h"

#include <algorithm>

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
  FindUses();
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
  if (body > item.begin) namespaces.insert(program.Text(body - 1));
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
    functions.push_back(IsFunction(units[unit]));
    for (const std::string_view name : DeclaredNames(units[unit], functions.back())) {
      const auto number = static_cast<std::uint32_t>(declarers.size());
      const auto [known, isNew] = numbers.emplace(name, number);
      if (isNew) declarers.emplace_back();
      std::vector<std::uint32_t>& all = declarers[known->second];
      if (all.empty() || all.back() != unit) all.push_back(unit);
    }
  }
  for (std::vector<std::uint32_t>& all : declarers) ForgetCommonFunctions(all);
}

void References::ForgetCommonFunctions(std::vector<std::uint32_t>& all) const {
  constexpr std::ptrdiff_t kMost = 4;
  const auto isFunction = [this](std::uint32_t unit) { return functions[unit]; };
  if (std::count_if(all.begin(), all.end(), isFunction) <= kMost) return;
  all.erase(std::remove_if(all.begin(), all.end(), isFunction), all.end());
}

/// True when a word of the unit's own level has this text.
bool References::Holds(Range unit, std::string_view text) const {
  for (std::uint32_t at = unit.begin; at < unit.end; at = tree.Next(at)) {
    if (program.Text(at) == text) return true;
  }
  return false;
}

/// True when parameters follow a name before anything that only types and values have. What brings
/// a name in from elsewhere ("using a::f;") is taken for a function too.
bool References::IsFunction(Range unit) const {
  if (program.Text(unit.begin) == "using") return !Holds(unit, "=");
  for (std::uint32_t at = unit.begin; at < unit.end; at = tree.Next(at)) {
    const std::string_view text = program.Text(at);
    if (IsOneOf(text,
                {"class", "struct", "union", "enum", "typedef", "using", "concept", "=", "{"})) {
      return false;
    }
    if (text == "operator") return true;
    if (text == "(" && at > unit.begin && !IsKeyword(program.Text(at - 1))) return true;
  }
  return false;
}

/// The names that a unit may be used by; more than it declares do no harm. What only adds to a
/// class, a member that is defined outside or a specialisation, has none.
std::vector<std::string_view> References::DeclaredNames(Range unit, bool isFunction) const {
  std::vector<std::string_view> names;
  bool isEnum = false;
  for (std::uint32_t at = unit.begin; at < unit.end; at = tree.Next(at)) {
    const std::string_view text = program.Text(at);
    isEnum = isEnum || text == "enum";
    if (isEnum && text == "{" && tree.Opens(at)) AddNames({at, tree.Partner(at)}, names);
    if (IsOneOf(text, {"(", "=", ":"}) && !names.empty()) break;
    if (!Declares(at, unit.end)) continue;
    if (IsMember(at) || IsSpecialised(at)) return {};
    names.push_back(text);
    if (isFunction) return names;
  }
  if (names.empty() && !isFunction) AddNames(unit, names);
  return names;
}

bool References::Declares(std::uint32_t at, std::uint32_t end) const {
  if (program.Text(at) == "operator") return true;
  if (program.Words()[at].kind != TokenKind::Name || IsKeyword(program.Text(at))) return false;
  std::uint32_t next = at + 1;
  if (next < end && tree.Opens(next) && program.Text(next) == "<") next = tree.Next(next);
  return next >= end ||
         IsOneOf(program.Text(next), {"(", "{", ";", "=", ":", ",", "[", "final", "__attribute__"});
}

/// True for "b" of "a::b" and "a<b>::b", unless all in front of it are namespaces.
bool References::IsMember(std::uint32_t at) const {
  while (at >= 2 && program.Text(at - 1) == "::") {
    at = tree.Previous(at - 1);
    if (at > 0 && program.Text(at) == "<") --at;
    if (program.Words()[at].kind != TokenKind::Name) break;
    if (namespaces.count(program.Text(at)) == 0) return true;
  }
  return false;
}

bool References::IsSpecialised(std::uint32_t at) const {
  return at + 1 < program.Size() && tree.Opens(at + 1) && program.Text(at + 1) == "<";
}

void References::AddNames(Range range, std::vector<std::string_view>& names) const {
  for (std::uint32_t at = range.begin; at < range.end; ++at) {
    const bool named = program.Words()[at].kind == TokenKind::Name;
    if (named && !IsKeyword(program.Text(at))) names.push_back(program.Text(at));
  }
}

void References::FindUses() {
  uses.resize(units.size());
  std::vector<std::uint32_t> lastUser(declarers.size(), UINT32_MAX);
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    for (std::uint32_t at = units[unit].begin; at < units[unit].end; ++at) {
      if (at > 0 && IsOneOf(program.Text(at - 1), {".", "->"})) continue;
      const auto name = numbers.find(program.Text(at));
      if (name == numbers.end() || lastUser[name->second] == unit) continue;
      lastUser[name->second] = unit;
      uses[unit].push_back(name->second);
    }
  }
}

/// A unit that declares a name as well does not use the others that do: they stay or go together.
void References::FindRoots() {
  std::vector<bool> used(units.size(), false);
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    for (const std::uint32_t name : uses[unit]) {
      const std::vector<std::uint32_t>& all = declarers[name];
      if (std::binary_search(all.begin(), all.end(), unit)) continue;
      for (const std::uint32_t declarer : all) used[declarer] = true;
    }
  }
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    if (!used[unit]) roots.push_back(unit);
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
    for (const std::uint32_t name : uses[unit]) {
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
    if (staying[unit]) continue;
    if (!gone.empty() && gone.back().end == units[unit].begin) {
      gone.back().end = units[unit].end;
    } else {
      gone.push_back(units[unit]);
    }
  }
  for (const Container& container : containers) {
    const auto begin = staying.begin() + container.firstUnit;
    const auto end = staying.begin() + container.endUnit;
    if (begin != end && std::find(begin, end, true) == end) gone.push_back(container.item);
  }
  return gone;
}

}  // namespace snipwell
