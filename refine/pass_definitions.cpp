// Definitions that can be put together: one with its declaration, a body with an empty one, a type
// with another.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "refine/declarations.h"
#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

Range Body(const Tree& tree, const Declaration& declaration) {
  return {declaration.body, tree.Partner(declaration.body) + 1};
}

/// Adds the edit that gives one definition the body of another, which goes.
void MoveBody(EditList& edits, const Tree& tree, const Declaration& from, const Declaration& to) {
  if (Body(tree, from).Size() <= 2 || Overlap(from.item, to.item)) return;
  const std::uint32_t text = edits.Put(Body(tree, from));
  edits.Add({{Body(tree, to), text}, {from.item}});
}

/// Adds the edit that drops all that declares a name and puts a text wherever else the name stands.
void ReplaceDefined(EditList& edits, const std::vector<Range>& items, const Places& places,
                    std::uint32_t text) {
  std::vector<Cut> cuts;
  for (const Range item : items) cuts.push_back({item});
  for (const std::uint32_t place : places) cuts.push_back({{place, place + 1}, text});
  edits.Add(cuts);
}

}  // namespace

EditList MergeDeclarations(const Program& program, const Tree& tree) {
  EditList edits;
  std::map<std::string_view, Range> declared;  // the first declaration of a name
  for (const Declaration& one : Declarations(program, tree)) {
    if (one.name == Tree::kNone) continue;
    const auto [first, isNew] = declared.emplace(program.Text(one.name), one.item);
    if (isNew || one.body == Tree::kNone || Overlap(first->second, one.item)) continue;
    edits.Add({{first->second, edits.Put(one.item)}, {one.item}});
  }
  return edits;
}

EditList MoveBodies(const Program& program, const Tree& tree) {
  constexpr std::size_t kFarthest = 4;
  EditList edits;
  std::vector<Declaration> bodies;
  for (const Declaration& one : Declarations(program, tree)) {
    if (one.body != Tree::kNone) bodies.push_back(one);
  }
  for (std::size_t i = 0; i < bodies.size(); ++i) {
    if (Body(tree, bodies[i]).Size() > 2) continue;
    for (std::size_t distance = 1; distance <= kFarthest; ++distance) {
      if (i + distance < bodies.size()) MoveBody(edits, tree, bodies[i + distance], bodies[i]);
      if (i >= distance) MoveBody(edits, tree, bodies[i - distance], bodies[i]);
    }
  }
  return edits;
}

EditList ReplaceTypes(const Program& program, const Tree& tree) {
  EditList edits;
  const auto places = PlacesOfNames(program);
  const std::uint32_t plain = edits.Put("int");
  std::map<std::string_view, std::vector<Range>> items;
  std::vector<std::string_view> names;  // in the order of their first items
  for (const Declaration& one : Declarations(program, tree)) {
    if (!one.isType || one.name == Tree::kNone) continue;
    std::vector<Range>& all = items[program.Text(one.name)];
    if (all.empty()) names.push_back(program.Text(one.name));
    all.push_back(one.item);
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    ReplaceDefined(edits, items[names[i]], places.at(names[i]), plain);
    if (i == 0) continue;
    const std::uint32_t before = edits.Put(std::string(names[i - 1]));
    ReplaceDefined(edits, items[names[i]], places.at(names[i]), before);
  }
  return edits;
}

}  // namespace snipwell
