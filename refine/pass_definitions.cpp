// Definitions that can be put together: one with its declaration, a body with an empty one, a class
// with its base, or with the object that is made of it, a type with another.

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

/// The ":" in front of a class's bases; the brace of its body when it has none.
std::uint32_t BasesOf(const Program& program, const Tree& tree, const Declaration& type) {
  std::uint32_t at = type.name;
  while (at < type.body && program.Text(at) != ":") at = tree.Next(at);
  return at;
}

/// The last name in a range, "b" of "public a::b<c>"; what template arguments hold does not count.
std::string_view LastName(const Program& program, const Tree& tree, Range range) {
  std::string_view name;
  for (std::uint32_t at = range.begin; at < range.end; at = tree.Next(at)) {
    if (program.Words()[at].kind == TokenKind::Name) name = program.Text(at);
  }
  return name;
}

/// The cuts that take the empty brackets behind a name, "A()" and "A{}".
std::vector<Cut> EmptyBrackets(const Program& program, const Tree& tree, const Places& places) {
  std::vector<Cut> cuts;
  for (const std::uint32_t place : places) {
    const std::uint32_t open = place + 1;
    if (open >= program.Size() || tree.Partner(open) != open + 1) continue;
    if (program.Text(open) == "(" || program.Text(open) == "{") cuts.push_back({{open, open + 2}});
  }
  return cuts;
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

/// A definition comes to the place of the first declaration, or its body to the end of that.
EditList MergeDeclarations(const Program& program, const Tree& tree) {
  EditList edits;
  std::map<std::string_view, Range> declared;  // the first declaration of a name
  for (const Declaration& one : Declarations(program, tree)) {
    if (one.name == Tree::kNone) continue;
    const auto [first, isNew] = declared.emplace(program.Text(one.name), one.item);
    if (isNew || one.body == Tree::kNone || Overlap(first->second, one.item)) continue;
    edits.Add({{first->second, edits.Put(one.item)}, {one.item}});
    const std::uint32_t end = first->second.end;
    if (program.Text(end - 1) != ";") continue;
    edits.Add({{{end - 1, end}, edits.Put(Range{one.body, one.item.end})}, {one.item}});
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

/// Of several definitions of a base's name the last one counts.
EditList PutInBases(const Program& program, const Tree& tree) {
  EditList edits;
  const std::vector<Declaration> all = Declarations(program, tree);
  std::map<std::string_view, Declaration> types;
  for (const Declaration& one : all) {
    if (IsDefinedType(one)) types.insert_or_assign(program.Text(one.name), one);
  }
  for (const Declaration& one : all) {
    if (!IsDefinedType(one)) continue;
    const Range bases = {BasesOf(program, tree, one), one.body};
    const auto base = types.find(LastName(program, tree, bases));
    if (base == types.end() || Overlap(base->second.item, one.item)) continue;
    const std::uint32_t members =
        edits.Put(Range{base->second.body, Body(tree, base->second).end - 1});
    edits.Add({{{bases.begin, one.body + 1}, members}, {base->second.item}});
  }
  return edits;
}

EditList MakeObjects(const Program& program, const Tree& tree) {
  EditList edits;
  const auto places = PlacesOfNames(program);
  for (const Declaration& one : Declarations(program, tree)) {
    const std::uint32_t end = one.item.end - 1;
    if (!IsDefinedType(one) || tree.Partner(one.body) + 1 != end) continue;
    const std::string name(program.Text(one.name));
    std::vector<Cut> cuts = EmptyBrackets(program, tree, places.at(name));
    if (cuts.empty()) continue;
    cuts.push_back({{one.name, one.name + 1}});
    cuts.push_back({{end, end + 1}, edits.Put(name + ";")});
    edits.Add(cuts);
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
  const auto replace = [&](std::string_view name, std::uint32_t text) {
    ReplaceDefined(edits, items[name], places.at(name), text);
  };
  for (std::size_t i = 0; i < names.size(); ++i) {
    replace(names[i], plain);
    if (i > 0) replace(names[i], edits.Put(std::string(names[i - 1])));
    if (i + 1 < names.size()) replace(names[i], edits.Put(std::string(names[i + 1])));
  }
  return edits;
}

}  // namespace snipwell
