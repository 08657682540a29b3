#include "refine/references.h"

#include <algorithm>
#include <functional>

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
    conditions.push_back(Added(units[unit]));
    if (conditions.back().Size() > 0) continue;
    for (const std::string_view name : DeclaredNames(units[unit], functions.back())) {
      const auto number = static_cast<std::uint32_t>(declarers.size());
      const auto [known, isNew] = numbers.emplace(name, number);
      if (isNew) declarers.emplace_back();
      std::vector<std::uint32_t>& all = declarers[known->second];
      if (all.empty() || all.back() != unit) all.push_back(unit);
    }
  }
  for (std::vector<std::uint32_t>& all : declarers) MakeConditional(all);
}

/// Where functions of a name are many, they declare it no more, but have a condition.
void References::MakeConditional(std::vector<std::uint32_t>& all) {
  constexpr std::ptrdiff_t kMost = 4;
  const auto isFunction = [this](std::uint32_t unit) { return functions[unit]; };
  const auto others = std::stable_partition(all.begin(), all.end(), std::not_fn(isFunction));
  if (all.end() - others <= kMost) {
    std::inplace_merge(all.begin(), others, all.end());
    return;
  }
  for (auto unit = others; unit != all.end(); ++unit) {
    conditions[*unit] = WithParameters(units[*unit]);
  }
  all.erase(others, all.end());
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

/// The names that a unit may be used by; more than it declares do no harm.
std::vector<std::string_view> References::DeclaredNames(Range unit, bool isFunction) const {
  std::vector<std::string_view> names;
  bool isEnum = false;
  for (std::uint32_t at = unit.begin; at < unit.end; at = tree.Next(at)) {
    const std::string_view text = program.Text(at);
    isEnum = isEnum || text == "enum";
    if (isEnum && text == "{" && tree.Opens(at)) AddNames({at, tree.Partner(at)}, names);
    if (IsOneOf(text, {"(", "=", ":"}) && !names.empty()) break;
    if (!Declares(at, unit.end)) continue;
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

/// "A<int>" of "struct A<int> {}", and "A::" of "int A::f() {}"; empty for other units.
Range References::Added(Range unit) const {
  for (std::uint32_t at = unit.begin; at < unit.end; at = tree.Next(at)) {
    if (!Declares(at, unit.end)) continue;
    if (IsSpecialised(at)) return {at, tree.Next(at + 1)};
    return {ClassOf(at), at};
  }
  return {unit.begin, unit.begin};
}

/// The word "a" for "b" of "a::b" and "a<c>::b", unless all in front of it are namespaces; else
/// the word itself.
std::uint32_t References::ClassOf(std::uint32_t word) const {
  std::uint32_t at = word;
  while (at >= 2 && program.Text(at - 1) == "::") {
    at = tree.Previous(at - 1);
    if (at > 0 && program.Text(at) == "<") --at;
    if (program.Words()[at].kind != TokenKind::Name || IsKeyword(program.Text(at))) break;
    if (namespaces.count(program.Text(at)) == 0) return at;
  }
  return word;
}

bool References::IsSpecialised(std::uint32_t at) const {
  return at + 1 < program.Size() && tree.Opens(at + 1) && program.Text(at + 1) == "<";
}

/// "f(A a)" of "int f(A a);".
Range References::WithParameters(Range unit) const {
  std::uint32_t begin = unit.begin;
  while (begin < unit.end && !Declares(begin, unit.end)) begin = tree.Next(begin);
  std::uint32_t end = begin;
  while (end < unit.end && program.Text(end) != "(") end = tree.Next(end);
  return {begin, end < unit.end ? tree.Next(end) : unit.end};
}

void References::AddNames(Range range, std::vector<std::string_view>& names) const {
  for (std::uint32_t at = range.begin; at < range.end; ++at) {
    const bool named = program.Words()[at].kind == TokenKind::Name;
    if (named && !IsKeyword(program.Text(at))) names.push_back(program.Text(at));
  }
}

/// The numbers of the names in a range, unless they are members, once each.
std::vector<std::uint32_t> References::NumbersIn(Range range) const {
  std::vector<std::uint32_t> found;
  for (std::uint32_t at = range.begin; at < range.end; ++at) {
    const auto name = numbers.find(program.Text(at));
    if (name != numbers.end() && !IsMember(at)) found.push_back(name->second);
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

/// True for "b" of "a.b" and "a->b", but not of "f() -> b" and "{ a } -> b", which are types.
bool References::IsMember(std::uint32_t at) const {
  if (at < 2) return false;
  const std::string_view before = program.Text(at - 1);
  return before == "." || (before == "->" && !IsOneOf(program.Text(at - 2), {")", "}"}));
}

void References::FindUses() {
  waitingFor.resize(declarers.size());
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    uses.push_back(NumbersIn(units[unit]));
    conditionNames.push_back(NumbersIn(conditions[unit]));
    for (const std::uint32_t name : conditionNames.back()) waitingFor[name].push_back(unit);
  }
}

/// The units that come in with others: each unit with a mark, and with it all that it uses.
class References::Spread {
 public:
  explicit Spread(const References& all)
      : references(all), staying(all.units.size(), false), seen(all.declarers.size(), false) {
    for (const auto& names : references.conditionNames) missing.push_back(names.size());
  }

  void Keep(std::uint32_t unit) {
    Mark(unit);
    while (!waiting.empty()) {
      const std::uint32_t next = waiting.back();
      waiting.pop_back();
      for (const std::uint32_t name : references.uses[next]) Use(name);
    }
  }

  const std::vector<bool>& Staying() const { return staying; }

 private:
  void Mark(std::uint32_t unit) {
    if (!staying[unit]) waiting.push_back(unit);
    staying[unit] = true;
  }

  void Use(std::uint32_t name) {
    if (seen[name]) return;
    seen[name] = true;
    for (const std::uint32_t unit : references.declarers[name]) Mark(unit);
    for (const std::uint32_t unit : references.waitingFor[name]) {
      if (--missing[unit] == 0) Mark(unit);
    }
  }

  const References& references;
  std::vector<bool> staying;
  std::vector<bool> seen;            // by number of a name
  std::vector<std::size_t> missing;  // names of its condition, by unit
  std::vector<std::uint32_t> waiting;
};

/// The units that no other uses, and where some use only each other, the last of them.
void References::FindRoots() {
  const std::vector<bool> used = UsedUnits();
  Spread spread(*this);
  const auto add = [&](std::uint32_t unit) {
    roots.push_back(unit);
    spread.Keep(unit);
  };
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    if (!used[unit]) add(unit);
  }
  for (auto unit = static_cast<std::uint32_t>(units.size()); unit-- > 0;) {
    if (!spread.Staying()[unit]) add(unit);
  }
  std::sort(roots.begin(), roots.end());
}

/// A unit that declares a name as well does not use the others that do: they stay or go together.
/// Nor does one use what it has a condition for.
std::vector<bool> References::UsedUnits() const {
  std::vector<bool> used;
  for (const auto& names : conditionNames) used.push_back(!names.empty());
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    const std::vector<std::uint32_t>& own = conditionNames[unit];
    for (const std::uint32_t name : uses[unit]) {
      const std::vector<std::uint32_t>& all = declarers[name];
      if (std::binary_search(all.begin(), all.end(), unit)) continue;
      if (std::binary_search(own.begin(), own.end(), name)) continue;
      for (const std::uint32_t declarer : all) used[declarer] = true;
    }
  }
  return used;
}

std::vector<bool> References::UsedWithout(std::size_t first, std::size_t last) const {
  Spread spread(*this);
  for (std::size_t i = 0; i < roots.size(); ++i) {
    if (i < first || i > last) spread.Keep(roots[i]);
  }
  return spread.Staying();
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
