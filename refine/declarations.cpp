#include "refine/declarations.h"

#include <string_view>

#include "refine/names.h"

namespace snipwell {

namespace {

bool OpensType(std::string_view word) {
  return word == "struct" || word == "class" || word == "union" || word == "enum";
}

bool Opens(const Program& program, const Tree& tree, std::uint32_t at, std::string_view bracket) {
  return at < program.Size() && tree.Opens(at) && program.Text(at) == bracket;
}

/// The word behind "requires requires(T t) { t + 1; }" when this begins here.
std::uint32_t BehindRequirement(const Program& program, const Tree& tree, std::uint32_t at) {
  if (program.Text(at) != "requires" || at + 1 == program.Size()) return at;
  if (program.Text(at + 1) != "requires") return at;
  at += 2;
  if (Opens(program, tree, at, "(")) at = tree.Next(at);
  return Opens(program, tree, at, "{") ? tree.Next(at) : at;
}

Declaration Read(const Program& program, const Tree& tree, Range item) {
  Declaration read = {item, Tree::kNone, Tree::kNone, false};
  bool named = false;
  for (std::uint32_t at = item.begin; at < item.end; at = tree.Next(at)) {
    at = BehindRequirement(program, tree, at);
    if (at >= item.end) break;
    const std::string_view text = program.Text(at);
    if (text == "{" && tree.Opens(at)) read.body = at;
    named = named || text == "(" || text == "{" || text == ":" || text == ";" || text == "=";
    if (named || program.Words()[at].kind != TokenKind::Name) continue;
    read.isType = read.isType || OpensType(text);
    if (!IsKeyword(text) || text == "std") read.name = at;
  }
  return read;
}

}  // namespace

std::vector<Declaration> Declarations(const Program& program, const Tree& tree) {
  std::vector<Declaration> all;
  for (const List& list : tree.Lists()) {
    if (list.commas) continue;
    for (const Range item : list.items) all.push_back(Read(program, tree, item));
  }
  return all;
}

}  // namespace snipwell
