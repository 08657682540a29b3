// Values and types become the plainest there are: 0, "" and int, or a class of the program.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "refine/declarations.h"
#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

bool IsName(const Program& program, std::uint32_t at) {
  return at < program.Size() && program.Words()[at].kind == TokenKind::Name;
}

bool Is(const Program& program, std::uint32_t at, std::string_view text) {
  return at < program.Size() && program.Text(at) == text;
}

/// The end of a name with its template arguments and what it qualifies, "typename a<b>::c", from
/// `begin` on.
std::uint32_t EndOfQualifiedName(const Program& program, const Tree& tree, std::uint32_t begin) {
  std::uint32_t end = begin;
  if (Is(program, end, "typename") && IsName(program, end + 1)) ++end;
  while (IsName(program, end)) {
    ++end;
    if (Is(program, end, "<") && tree.Opens(end)) end = tree.Next(end);
    if (!Is(program, end, "::")) break;
    if (Is(program, end + 1, "template")) ++end;
    if (IsName(program, end + 1)) ++end;
  }
  return end;
}

bool StartsQualifiedName(const Program& program, std::uint32_t at) {
  const std::string_view before = at > 0 ? program.Text(at - 1) : "";
  return IsName(program, at) && before != "::" && before != "typename";
}

/// The types of several words, "a::b", "a<b>" and "typename a::b".
std::vector<Range> LongTypes(const Program& program, const Tree& tree) {
  std::vector<Range> types;
  for (std::uint32_t i = 0; i < program.Size(); ++i) {
    if (!StartsQualifiedName(program, i)) continue;
    const std::uint32_t end = EndOfQualifiedName(program, tree, i);
    if (end > i + 1) types.push_back({i, end});
  }
  return types;
}

/// The first few classes that are no templates, in the order of the lists.
std::vector<std::string> FirstClasses(const Program& program, const Tree& tree) {
  constexpr std::size_t kMost = 4;
  std::vector<std::string> names;
  for (const Declaration& one : Declarations(program, tree)) {
    const bool isTemplate = program.Text(one.item.begin) == "template";
    if (!IsDefinedType(one) || isTemplate) continue;
    names.emplace_back(program.Text(one.name));
    if (names.size() == kMost) break;
  }
  return names;
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

/// What commas part, and what is returned or assigned.
std::vector<Range> Values(const Program& program, const Tree& tree) {
  std::vector<Range> values;
  for (const List& list : tree.Lists()) {
    for (const Range item : list.items) {
      values.push_back(list.commas ? item : ValueIn(program, tree, item));
    }
  }
  return values;
}

}  // namespace

EditList PlainValues(const Program& program, const Tree& tree) {
  EditList edits;
  const std::uint32_t zero = edits.Put("0");
  const std::uint32_t empty = edits.Put("\"\"");
  for (const Range value : Values(program, tree)) {
    if (value.Size() > 1) edits.Replace(value, zero);
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
  for (const Range type : LongTypes(program, tree)) edits.Replace(type, plain);
  for (const auto& [name, places] : PlacesOfNames(program)) {
    if (places.size() > 1) edits.Add(EachReplaced(places, plain));
    for (const std::uint32_t place : places) edits.Replace({place, place + 1}, plain);
  }
  return edits;
}

/// Each type is tried as several classes, so only a small program has these edits.
EditList PutInClasses(const Program& program, const Tree& tree) {
  constexpr std::size_t kMostWords = 1000;
  EditList edits;
  if (program.Size() > kMostWords) return edits;
  for (const std::string& name : FirstClasses(program, tree)) {
    const std::uint32_t text = edits.Put(name);
    for (const Range type : LongTypes(program, tree)) edits.Replace(type, text);
    const std::uint32_t object = edits.Put(name + "()");
    for (const Range value : Values(program, tree)) {
      if (value.Size() > 3) edits.Replace(value, object);
    }
  }
  return edits;
}

}  // namespace snipwell
