#include "refine/names.h"

#include <algorithm>
#include <iterator>

namespace snipwell {

namespace {

// In the order of the alphabet, for the binary search.
constexpr std::string_view kKeywords[] = {
    "_Alignas",      "_Alignof",
    "_Atomic",       "_Bool",
    "_Complex",      "_Generic",
    "_Noreturn",     "_Static_assert",
    "_Thread_local", "__attribute",
    "__attribute__", "__extension__",
    "__typeof__",    "alignas",
    "alignof",       "asm",
    "auto",          "bool",
    "break",         "case",
    "catch",         "char",
    "char16_t",      "char32_t",
    "char8_t",       "class",
    "co_await",      "co_return",
    "co_yield",      "concept",
    "const",         "const_cast",
    "consteval",     "constexpr",
    "constinit",     "continue",
    "decltype",      "default",
    "delete",        "do",
    "double",        "dynamic_cast",
    "else",          "enum",
    "explicit",      "export",
    "extern",        "false",
    "final",         "float",
    "for",           "friend",
    "goto",          "if",
    "inline",        "int",
    "long",          "main",
    "mutable",       "namespace",
    "new",           "noexcept",
    "nullptr",       "operator",
    "override",      "private",
    "protected",     "public",
    "register",      "reinterpret_cast",
    "requires",      "restrict",
    "return",        "short",
    "signed",        "sizeof",
    "static",        "static_assert",
    "static_cast",   "std",
    "struct",        "switch",
    "template",      "this",
    "thread_local",  "throw",
    "true",          "try",
    "typedef",       "typeid",
    "typename",      "typeof",
    "union",         "unsigned",
    "using",         "virtual",
    "void",          "volatile",
    "wchar_t",       "while",
};

}  // namespace

std::map<std::string_view, Places> PlacesOfNames(const Program& program) {
  std::map<std::string_view, Places> places;
  for (std::uint32_t i = 0; i < program.Size(); ++i) {
    if (program.Words()[i].kind == TokenKind::Name) places[program.Text(i)].push_back(i);
  }
  return places;
}

std::vector<Cut> EachReplaced(const Places& places, std::uint32_t text, Range spared) {
  std::vector<Cut> cuts;
  for (const std::uint32_t place : places) {
    if (place < spared.begin || place >= spared.end) cuts.push_back({{place, place + 1}, text});
  }
  return cuts;
}

bool IsKeyword(std::string_view name) {
  return std::binary_search(std::begin(kKeywords), std::end(kKeywords), name);
}

}  // namespace snipwell
