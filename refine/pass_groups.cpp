// What a pair of brackets holds, and what stands around it.

#include <cstdint>
#include <string_view>
#include <vector>

#include "refine/passes.h"

namespace snipwell {

namespace {

/// The words that open a group, but for directives.
std::vector<std::uint32_t> Openings(const Program& program, const Tree& tree) {
  std::vector<std::uint32_t> openings;
  for (std::uint32_t i = 0; i < program.Size(); ++i) {
    if (tree.Opens(i) && program.Words()[i].kind == TokenKind::Punctuator) openings.push_back(i);
  }
  return openings;
}

/// Adds the edits that leave of an item only what one of its groups holds, or only that group and
/// what is behind it.
void UnwrapItem(EditList& edits, const Program& program, const Tree& tree, Range item) {
  for (std::uint32_t at = item.begin; at < item.end; at = tree.Next(at)) {
    if (!tree.Opens(at) || program.Words()[at].kind == TokenKind::DirectiveStart) continue;
    const std::uint32_t close = tree.Partner(at);
    const std::uint32_t end = program.Text(item.end - 1) == ";" ? item.end - 1 : item.end;
    edits.Add({{{item.begin, at + 1}}, {{close, item.end}}});
    if (end < item.end && close < end) edits.Add({{{item.begin, at + 1}}, {{close, end}}});
    if (at > item.begin) edits.Remove({item.begin, at});
  }
}

}  // namespace

EditList EmptyGroups(const Program& program, const Tree& tree) {
  EditList edits;
  const std::uint32_t semicolon = edits.Put(";");
  for (const std::uint32_t open : Openings(program, tree)) {
    const std::uint32_t close = tree.Partner(open);
    if (program.Text(open) == "{") edits.Replace({open, close + 1}, semicolon);
    edits.Remove({open, close + 1});
    if (close > open + 1) edits.Remove({open + 1, close});
  }
  return edits;
}

EditList UnwrapGroups(const Program& program, const Tree& tree) {
  EditList edits;
  for (const List& list : tree.Lists()) {
    for (const Range item : list.items) UnwrapItem(edits, program, tree, item);
  }
  return edits;
}

EditList RemoveBrackets(const Program& program, const Tree& tree) {
  EditList edits;
  for (std::uint32_t i = 0; i < program.Size(); ++i) {
    if (!tree.Opens(i)) continue;
    const Cut close = {{tree.Partner(i), tree.Partner(i) + 1}};
    const bool named = i > 0 && program.Words()[i - 1].kind == TokenKind::Name;
    if (named) edits.Add({{{i - 1, i + 1}}, close});
    edits.Add({{{i, i + 1}}, close});
  }
  return edits;
}

}  // namespace snipwell
