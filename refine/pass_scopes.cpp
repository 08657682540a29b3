// Scopes go and leave what they hold: a namespace with all its qualifiers, a class with its objects
// too. Neighbours that are opened by the same words become one.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "refine/declarations.h"
#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

bool Follows(const Program& program, std::uint32_t place, std::string_view text) {
  return place + 1 < program.Size() && program.Text(place + 1) == text;
}

/// Adds cuts that take each of the places in a range with the word behind it when this is `text`.
void CutBefore(std::vector<Cut>& cuts, const Program& program, const Places& places, Range range,
               std::string_view text) {
  auto place = std::lower_bound(places.begin(), places.end(), range.begin);
  for (; place != places.end() && *place < range.end; ++place) {
    if (Follows(program, *place, text)) cuts.push_back({{*place, *place + 2}});
  }
}

/// A statement "TYPE OBJECT ...;", and what is behind it in its list.
struct Object {
  Range item;
  Range scope;
};

/// All objects by their types' places.
std::unordered_map<std::uint32_t, Object> Objects(const Program& program, const Tree& tree) {
  std::unordered_map<std::uint32_t, Object> objects;
  for (const List& list : tree.Lists()) {
    for (const Range item : list.items) {
      const bool two = item.Size() > 1 && program.Words()[item.begin].kind == TokenKind::Name &&
                       program.Words()[item.begin + 1].kind == TokenKind::Name;
      const Range scope = {item.end, list.inside.end};
      if (two && !list.commas) objects.emplace(item.begin, Object{item, scope});
    }
  }
  return objects;
}

class Scopes {
 public:
  /// A namespace has no objects.
  Scopes(const Program& wholeProgram, const Tree& wholeTree, bool ofNamespaces)
      : program(wholeProgram), tree(wholeTree), namespaces(ofNamespaces) {
    if (!namespaces) objects = Objects(program, tree);
  }

  EditList Flattening() {
    std::map<std::string_view, std::vector<Declaration>> blocks;
    for (const Declaration& one : Declarations(program, tree)) {
      if (one.name == Tree::kNone || one.body == Tree::kNone) continue;
      if (IsNamespace(one.item) == namespaces) blocks[program.Text(one.name)].push_back(one);
    }
    for (const auto& [name, all] : blocks) {
      Flatten(places.at(name), all);
    }
    return std::move(edits);
  }

 private:
  bool IsNamespace(Range item) const {
    return program.Text(item.begin) == "namespace" || Follows(program, item.begin, "namespace");
  }

  void Flatten(const Places& uses, const std::vector<Declaration>& blocks) {
    std::vector<Cut> cuts;
    for (const Declaration& block : blocks) {
      cuts.push_back({{block.item.begin, block.body + 1}});
      cuts.push_back({{tree.Partner(block.body), block.item.end}});
    }
    CutBefore(cuts, program, uses, {0, static_cast<std::uint32_t>(program.Size())}, "::");
    edits.Add(cuts);
    const std::size_t before = cuts.size();
    for (const std::uint32_t use : uses) RemoveObject(cuts, use);
    if (cuts.size() > before) edits.Add(cuts);
  }

  /// When a type's name begins the declaration of an object, this and its "OBJECT." go.
  void RemoveObject(std::vector<Cut>& cuts, std::uint32_t type) const {
    const auto object = objects.find(type);
    if (object == objects.end()) return;
    const auto& [item, scope] = object->second;
    cuts.push_back({item});
    const Places& uses = places.at(program.Text(type + 1));
    CutBefore(cuts, program, uses, scope, ".");
    CutBefore(cuts, program, uses, scope, "->");
  }

  const Program& program;
  const Tree& tree;
  const bool namespaces;
  const std::map<std::string_view, Places> places = PlacesOfNames(program);
  std::unordered_map<std::uint32_t, Object> objects;
  EditList edits;
};

bool HaveSameHead(const Program& program, const Declaration& one, const Declaration& other) {
  return program.Render({one.item.begin, one.body}) ==
         program.Render({other.item.begin, other.body});
}

}  // namespace

EditList FlattenNamespaces(const Program& program, const Tree& tree) {
  return Scopes(program, tree, true).Flattening();
}

EditList FlattenScopes(const Program& program, const Tree& tree) {
  return Scopes(program, tree, false).Flattening();
}

EditList JoinScopes(const Program& program, const Tree& tree) {
  EditList edits;
  const std::vector<Declaration> all = Declarations(program, tree);
  for (std::size_t i = 0; i + 1 < all.size(); ++i) {
    const Declaration& one = all[i];
    const Declaration& next = all[i + 1];
    if (one.body == Tree::kNone || next.body == Tree::kNone) continue;
    if (one.item.end != next.item.begin || !HaveSameHead(program, one, next)) continue;
    edits.Remove({tree.Partner(one.body), next.body + 1});
  }
  return edits;
}

}  // namespace snipwell
