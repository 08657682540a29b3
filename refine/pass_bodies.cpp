// The bodies of functions in halves, all of them first: few are ever needed, and what they use is
// used no more. A declaration is left, for a function without a value to return can be an error.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

class BodySearch {
 public:
  BodySearch(const Program& wholeProgram, const Tree& wholeTree)
      : program(wholeProgram), tree(wholeTree) {}

  /// Cuts that leave declarations, in the order in which they begin: of a body, with the
  /// initialisers in front of it and the attributes, which a friend may have only with its body, or
  /// of a whole member that is defined outside of its class, where none can be declared. `end` is
  /// the text that ends a declaration. `evaluated` chooses those that compilers may look into for a
  /// constant or a type, or the others.
  std::vector<Cut> Cuts(std::uint32_t end, bool evaluated) const {
    std::vector<Cut> cuts;
    for (const List& list : tree.Lists()) {
      if (list.commas) continue;
      for (const Range item : list.items) {
        if (IsEvaluated(item) == evaluated) AddCut(item, end, cuts);
      }
    }
    std::sort(cuts.begin(), cuts.end(),
              [](const Cut& a, const Cut& b) { return a.range.begin < b.range.begin; });
    return cuts;
  }

 private:
  bool IsEvaluated(Range item) const {
    for (std::uint32_t at = item.begin; at < item.end; at = tree.Next(at)) {
      const std::string_view text = program.Text(at);
      if (text == "constexpr" || text == "consteval" || text == "auto") return true;
    }
    return false;
  }

  void AddCut(Range item, std::uint32_t end, std::vector<Cut>& cuts) const {
    const std::uint32_t parameters = Parameters(item);
    if (parameters == item.end || program.Text(item.end - 1) != "}") return;
    if (IsMember(parameters)) {
      cuts.push_back({item});
      return;
    }
    const std::uint32_t body = Body({parameters, item.end});
    if (body == item.end) return;
    AddAttributes({item.begin, parameters}, cuts);
    cuts.push_back({{body, item.end}, end});
  }

  /// Where a body begins, or its initialisers. Braces before it are those of a requirement.
  std::uint32_t Body(Range range) const {
    for (std::uint32_t at = range.begin; at < range.end; at = tree.Next(at)) {
      const std::string_view text = program.Text(at);
      if (text == "=") break;
      if (text == ":" || text == "try" || (text == "{" && tree.Next(at) == range.end)) return at;
    }
    return range.end;
  }

  void AddAttributes(Range head, std::vector<Cut>& cuts) const {
    for (std::uint32_t at = head.begin; at < head.end; at = tree.Next(at)) {
      const bool opens = program.Text(at) == "[" && tree.Opens(at);
      if (opens && program.Text(at + 1) == "[") cuts.push_back({{at, tree.Next(at)}});
    }
  }

  /// The bracket that opens a function's parameters; the end of an item that is no function.
  std::uint32_t Parameters(Range item) const {
    bool isOperator = false;
    for (std::uint32_t at = item.begin; at < item.end; at = tree.Next(at)) {
      const std::string_view text = program.Text(at);
      const bool named = at > item.begin && IsName(at - 1);
      if (text == "(" && tree.Opens(at) && (named || isOperator)) return at;
      if (text == "{" || (text == "=" && !isOperator)) return item.end;
      isOperator = isOperator || text == "operator";
    }
    return item.end;
  }

  /// True when the function's name has a class in front of it.
  bool IsMember(std::uint32_t parameters) const {
    constexpr std::uint32_t kLongestName = 4;  // "X::operator[]"
    for (std::uint32_t back = 2; back <= kLongestName && back <= parameters; ++back) {
      if (program.Text(parameters - back) == "::") return true;
      if (IsName(parameters - 1) && program.Text(parameters - back) != "~") return false;
    }
    return false;
  }

  bool IsName(std::uint32_t index) const {
    return program.Words()[index].kind == TokenKind::Name && !IsKeyword(program.Text(index));
  }

  const Program& program;
  const Tree& tree;
};

}  // namespace

EditList RemoveBodies(const Program& program, const Tree& tree) {
  // Where one of a group is needed the others wait for their users to go.
  constexpr std::size_t kMostGroups = 16;
  EditList edits;
  const std::uint32_t end = edits.Put(";");
  const BodySearch search(program, tree);
  AddHalvedGroups(edits, search.Cuts(end, false), kMostGroups);
  AddHalvedGroups(edits, search.Cuts(end, true), kMostGroups);
  return edits;
}

}  // namespace snipwell
