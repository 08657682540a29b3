// Parameters go together with the arguments of every use. A use of a name is any group that stands
// behind it, or behind a name that it declares: "f(1)", "f<int>", "type object(1)", "type{1}".

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
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

/// Adds for each number the edit that takes the items of that number out of all the lists.
void RemoveByNumber(EditList& edits, const ListsByOpening& lists, const Places& groups) {
  std::vector<const List*> uses;
  std::size_t most = 0;
  for (const std::uint32_t group : groups) {
    const List* const list = lists.At(group);
    if (list == nullptr) continue;
    uses.push_back(list);
    most = std::max(most, list->items.size());
  }
  for (std::size_t number = most; uses.size() > 1 && number-- > 0;) {
    std::vector<Cut> cuts;
    for (const List* list : uses) {
      if (number < list->items.size()) cuts.push_back({WithoutItems(*list, number, number)});
    }
    edits.Add(std::move(cuts));
  }
}

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

}  // namespace

EditList RemoveParameters(const Program& program, const Tree& tree) {
  EditList edits;
  const ListsByOpening lists(tree);
  const auto heads = HeadsByName(program, tree);
  for (const auto& [name, places] : PlacesOfNames(program)) {
    if (IsKeyword(name)) continue;
    for (const std::string_view bracket : {"(", "{"}) {
      RemoveByNumber(edits, lists, GroupsBehind(program, tree, places, bracket));
    }
    Places angles = GroupsBehind(program, tree, places, "<");
    const auto head = heads.find(name);
    if (head != heads.end()) angles.insert(angles.end(), head->second.begin(), head->second.end());
    RemoveByNumber(edits, lists, angles);
  }
  return edits;
}

EditList RemoveTemplateHeads(const Program& program, const Tree& tree) {
  EditList edits;
  const auto places = PlacesOfNames(program);
  for (const auto& [name, heads] : HeadsByName(program, tree)) {
    std::vector<Cut> cuts;
    for (const std::uint32_t head : heads) cuts.push_back({{head - 1, tree.Next(head)}});
    for (const std::uint32_t use : GroupsBehind(program, tree, places.at(name), "<")) {
      cuts.push_back({{use, tree.Next(use)}});
    }
    edits.Add(std::move(cuts));
  }
  return edits;
}

}  // namespace snipwell
