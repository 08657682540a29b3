// Parameters go together with the arguments of every use, and an argument can come in the place of
// the parameter. A use of a name is any group that stands behind it, or behind a name that it
// declares: "f(1)", "f<int>", "type object(1)", "type{1}".

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

/// The comma lists of a program by the words that open them.
class ListsByOpening {
 public:
  explicit ListsByOpening(const Tree& tree) {
    for (const List& list : tree.Lists()) {
      if (list.commas && list.depth > 0) byOpening.emplace(list.inside.begin, &list);
    }
  }

  /// The list in the brackets that open at `index`, or null.
  const List* At(std::uint32_t index) const {
    const auto found = byOpening.find(index + 1);
    return found == byOpening.end() ? nullptr : found->second;
  }

 private:
  std::map<std::uint32_t, const List*> byOpening;
};

/// The groups that open with one kind of bracket behind the uses of a name.
Places GroupsBehind(const Program& program, const Tree& tree, const Places& uses,
                    std::string_view bracket) {
  const auto size = static_cast<std::uint32_t>(program.Size());
  const auto opens = [&](std::uint32_t at) {
    return at < size && tree.Opens(at) && program.Text(at) == bracket;
  };
  Places groups;
  for (const std::uint32_t use : uses) {
    std::uint32_t at = use + 1;
    if (bracket != "<" && at < size && tree.Opens(at) && program.Text(at) == "<") {
      at = tree.Next(at);
    }
    if (opens(at)) {
      groups.push_back(at);
    } else if (at < size && program.Words()[at].kind == TokenKind::Name && opens(at + 1)) {
      groups.push_back(at + 1);
    }
  }
  return groups;
}

using Uses = std::vector<const List*>;

Uses UsesOf(const ListsByOpening& lists, const Places& groups) {
  Uses uses;
  for (const std::uint32_t group : groups) {
    const List* const list = lists.At(group);
    if (list != nullptr) uses.push_back(list);
  }
  return uses;
}

/// The cuts that take the items of a number out of all the lists.
std::vector<Cut> WithoutNumber(const Uses& uses, std::size_t number) {
  std::vector<Cut> cuts;
  for (const List* list : uses) {
    if (number < list->items.size()) cuts.push_back({WithoutItems(*list, number, number)});
  }
  return cuts;
}

void RemoveByNumber(EditList& edits, const Uses& uses) {
  std::size_t most = 0;
  for (const List* list : uses) most = std::max(most, list->items.size());
  if (uses.size() < 2) return;
  while (most > 0) edits.Add(WithoutNumber(uses, --most));
}

/// Puts a text in the places that a range has of a name's.
void ReplaceWithin(std::vector<Cut>& cuts, const Places& places, Range range, std::uint32_t text) {
  auto place = std::lower_bound(places.begin(), places.end(), range.begin);
  for (; place != places.end() && *place < range.end; ++place) {
    cuts.push_back({{*place, *place + 1}, text});
  }
}

/// A definition "f(int a, int b) { ... }".
struct Definition {
  const List* parameters;
  Range body;
};

/// The first of the lists with a body behind it.
std::optional<Definition> FindDefinition(const Program& program, const Tree& tree,
                                         const Uses& uses) {
  for (const List* list : uses) {
    const std::uint32_t behind = list->inside.end + 1;
    const bool body = behind < program.Size() && tree.Opens(behind) && program.Text(behind) == "{";
    if (body) return Definition{list, {behind, tree.Partner(behind)}};
  }
  return std::nullopt;
}

/// The first argument of a number; no words when there is none.
Range ArgumentFor(const Uses& uses, const List* parameters, std::size_t number) {
  for (const List* list : uses) {
    if (list != parameters && number < list->items.size()) return list->items[number];
  }
  return {0, 0};
}

/// Puts what the first call has for a parameter in the parameter's places.
class Arguments {
 public:
  Arguments(EditList& allEdits, const Program& wholeProgram,
            const std::map<std::string_view, Places>& allPlaces)
      : edits(allEdits), program(wholeProgram), places(allPlaces) {}

  void PutIn(const Definition& definition, const Uses& uses) {
    for (std::size_t number = 0; number < definition.parameters->items.size(); ++number) {
      const Range parameter = definition.parameters->items[number];
      const Range argument = ArgumentFor(uses, definition.parameters, number);
      if (parameter.Size() == 0 || argument.Size() == 0) continue;
      std::vector<Cut> cuts = WithoutNumber(uses, number);
      const std::size_t before = cuts.size();
      PutInBody(cuts, program.Text(parameter.end - 1), definition.body, argument);
      if (cuts.size() > before) edits.Add(cuts);
    }
  }

 private:
  void PutInBody(std::vector<Cut>& cuts, std::string_view name, Range body, Range argument) {
    const auto found = places.find(name);
    if (found != places.end()) ReplaceWithin(cuts, found->second, body, edits.Put(argument));
  }

  EditList& edits;
  const Program& program;
  const std::map<std::string_view, Places>& places;
};

/// The name that a template declares: the last one before its parameters, bases, body or end.
std::uint32_t DeclaredName(const Program& program, const Tree& tree, std::uint32_t begin) {
  std::uint32_t name = Tree::kNone;
  for (std::uint32_t at = begin; at < program.Size(); at = tree.Next(at)) {
    const std::string_view text = program.Text(at);
    if (text == "(" || text == "{" || text == ":" || text == ";" || text == "=") break;
    if (program.Words()[at].kind == TokenKind::Name) name = at;
  }
  return name;
}

/// For each name that templates declare, the angles that open their heads.
std::map<std::string_view, Places> HeadsByName(const Program& program, const Tree& tree) {
  std::map<std::string_view, Places> heads;
  for (std::uint32_t i = 0; i + 1 < program.Size(); ++i) {
    if (program.Text(i) != "template" || !tree.Opens(i + 1)) continue;
    const std::uint32_t name = DeclaredName(program, tree, tree.Next(i + 1));
    if (name != Tree::kNone) heads[program.Text(name)].push_back(i + 1);
  }
  return heads;
}

/// Takes template heads away, also with something that stands for their parameters.
class Heads {
 public:
  Heads(EditList& allEdits, const Program& wholeProgram, const Tree& wholeTree)
      : edits(allEdits),
        program(wholeProgram),
        tree(wholeTree),
        lists(wholeTree),
        places(PlacesOfNames(wholeProgram)),
        type(edits.Put("int")),
        value(edits.Put("0")) {}

  void Remove() {
    for (const auto& [name, heads] : HeadsByName(program, tree)) {
      std::vector<Cut> cuts;
      for (const std::uint32_t head : heads) cuts.push_back({{head - 1, tree.Next(head)}});
      for (const std::uint32_t use : GroupsBehind(program, tree, places.at(name), "<")) {
        cuts.push_back({{use, tree.Next(use)}});
      }
      edits.Add(cuts);
      const std::size_t before = cuts.size();
      for (const std::uint32_t head : heads) ReplaceParameters(head, cuts);
      if (cuts.size() > before) edits.Add(cuts);
    }
  }

 private:
  /// A type for types and a value for values, up to the end of what the head stands before.
  void ReplaceParameters(std::uint32_t head, std::vector<Cut>& cuts) const {
    const List* const parameters = lists.At(head);
    if (parameters == nullptr) return;
    const Range scope = {tree.Next(head), EndOfDeclaration(tree.Next(head))};
    for (const Range parameter : parameters->items) {
      const auto named = places.find(NameOf(parameter));
      if (named == places.end()) continue;
      const std::string_view kind = program.Text(parameter.begin);
      const bool isType = kind == "typename" || kind == "class";
      ReplaceWithin(cuts, named->second, scope, isType ? type : value);
    }
  }

  std::uint32_t EndOfDeclaration(std::uint32_t at) const {
    while (at < program.Size() && program.Text(at) != ";" && program.Text(at) != "{") {
      at = tree.Next(at);
    }
    return at < program.Size() ? tree.Next(at) : at;
  }

  /// "T" of "class T" and of "class T = int"; nothing when it has no name.
  std::string_view NameOf(Range parameter) const {
    std::uint32_t end = parameter.begin;
    while (end < parameter.end && program.Text(end) != "=") end = tree.Next(end);
    return end < parameter.begin + 2 ? std::string_view() : program.Text(end - 1);
  }

  EditList& edits;
  const Program& program;
  const Tree& tree;
  const ListsByOpening lists;
  const std::map<std::string_view, Places> places;
  const std::uint32_t type;
  const std::uint32_t value;
};

}  // namespace

EditList RemoveParameters(const Program& program, const Tree& tree) {
  EditList edits;
  const ListsByOpening lists(tree);
  const auto heads = HeadsByName(program, tree);
  for (const auto& [name, places] : PlacesOfNames(program)) {
    if (IsKeyword(name)) continue;
    for (const std::string_view bracket : {"(", "{"}) {
      RemoveByNumber(edits, UsesOf(lists, GroupsBehind(program, tree, places, bracket)));
    }
    Places angles = GroupsBehind(program, tree, places, "<");
    const auto head = heads.find(name);
    if (head != heads.end()) angles.insert(angles.end(), head->second.begin(), head->second.end());
    RemoveByNumber(edits, UsesOf(lists, angles));
  }
  return edits;
}

EditList InlineArguments(const Program& program, const Tree& tree) {
  EditList edits;
  const ListsByOpening lists(tree);
  const auto names = PlacesOfNames(program);
  Arguments arguments(edits, program, names);
  for (const auto& [name, places] : names) {
    if (IsKeyword(name)) continue;
    const Uses uses = UsesOf(lists, GroupsBehind(program, tree, places, "("));
    const auto definition = FindDefinition(program, tree, uses);
    if (definition) arguments.PutIn(*definition, uses);
  }
  return edits;
}

EditList RemoveTemplateHeads(const Program& program, const Tree& tree) {
  EditList edits;
  Heads(edits, program, tree).Remove();
  return edits;
}

}  // namespace snipwell
