// Values and types become the plainest there are: 0, "" and int.

#include <cstdint>
#include <string_view>

#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

/// The end of a name with its template arguments and what it qualifies, "a<b>::c", from `begin` on.
std::uint32_t EndOfQualifiedName(const Program& program, const Tree& tree, std::uint32_t begin) {
  const auto size = static_cast<std::uint32_t>(program.Size());
  std::uint32_t end = begin;
  while (end < size && program.Words()[end].kind == TokenKind::Name) {
    ++end;
    if (end < size && tree.Opens(end) && program.Text(end) == "<") end = tree.Next(end);
    if (end + 1 >= size || program.Text(end) != "::") break;
    if (program.Words()[end + 1].kind == TokenKind::Name) ++end;
  }
  return end;
}

bool StartsQualifiedName(const Program& program, std::uint32_t at) {
  return program.Words()[at].kind == TokenKind::Name && (at == 0 || program.Text(at - 1) != "::");
}

/// The words between "return" or "=" and the ";" of a statement; none when there is no such.
Range ValueIn(const Program& program, const Tree& tree, Range item) {
  const std::uint32_t end = item.end - 1;
  for (std::uint32_t at = item.begin; at < end; at = tree.Next(at)) {
    const std::string_view text = program.Text(at);
    if ((text == "return" || text == "=") && program.Text(end) == ";") return {at + 1, end};
  }
  return {end, end};
}

}  // namespace

EditList PlainValues(const Program& program, const Tree& tree) {
  EditList edits;
  const std::uint32_t zero = edits.Put("0");
  const std::uint32_t empty = edits.Put("\"\"");
  for (const List& list : tree.Lists()) {
    for (const Range item : list.items) {
      const Range value = list.commas ? item : ValueIn(program, tree, item);
      if (value.Size() > 1) edits.Replace(value, zero);
    }
  }
  for (std::uint32_t i = 0; i < program.Size(); ++i) {
    const TokenKind kind = program.Words()[i].kind;
    const Range word = {i, i + 1};
    if (kind == TokenKind::String) edits.Replace(word, empty);
    if (kind == TokenKind::Number || kind == TokenKind::Character || kind == TokenKind::String ||
        kind == TokenKind::Name) {
      edits.Replace(word, zero);
    }
  }
  return edits;
}

EditList PlainTypes(const Program& program, const Tree& tree) {
  EditList edits;
  const std::uint32_t plain = edits.Put("int");
  for (std::uint32_t i = 0; i < program.Size(); ++i) {
    if (!StartsQualifiedName(program, i)) continue;
    const std::uint32_t end = EndOfQualifiedName(program, tree, i);
    if (end > i + 1) edits.Replace({i, end}, plain);
  }
  for (const auto& [name, places] : PlacesOfNames(program)) {
    if (places.size() > 1) edits.Add(EachReplaced(places, plain));
    for (const std::uint32_t place : places) edits.Replace({place, place + 1}, plain);
  }
  return edits;
}

}  // namespace snipwell
