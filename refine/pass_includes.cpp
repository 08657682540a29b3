// What a program includes, in a few groups: where a header can go, every later try is quicker.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "refine/passes.h"

namespace snipwell {

namespace {

bool IsInclude(const Program& program, const Tree& tree, std::uint32_t at) {
  if (program.Words()[at].kind != TokenKind::DirectiveStart || !tree.Opens(at)) return false;
  const std::string_view name = program.Text(at + 1);
  return name == "include" || name == "import" || name == "include_next";
}

}  // namespace

EditList RemoveIncludes(const Program& program, const Tree& tree) {
  // One that cannot go costs a long try; the items have it again, later and one by one.
  constexpr std::size_t kMostGroups = 8;
  std::vector<Cut> includes;
  for (std::uint32_t at = 0; at < program.Size(); ++at) {
    if (IsInclude(program, tree, at)) includes.push_back({{at, tree.Next(at)}});
  }
  EditList edits;
  AddHalvedGroups(edits, includes, kMostGroups);
  return edits;
}

}  // namespace snipwell
