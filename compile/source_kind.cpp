#include "compile/source_kind.h"

#include <cstddef>
#include <string_view>

#include "text/small_letters.h"

namespace snipwell {

namespace {

using K = SourceKind;

struct Row {
  std::string_view name;
  SourceType type;
};

constexpr Row kSuffixes[] = {
    {"c", {K::C}},
    {"i", {K::C, true}},
    {"C", {K::Cpp}},
    {"CPP", {K::Cpp}},
    {"c++", {K::Cpp}},
    {"cc", {K::Cpp}},
    {"cp", {K::Cpp}},
    {"cpp", {K::Cpp}},
    {"cxx", {K::Cpp}},
    {"ii", {K::Cpp, true}},
    {"H", {K::Header}},
    {"h", {K::Header}},
    {"h++", {K::Header}},
    {"hh", {K::Header}},
    {"hp", {K::Header}},
    {"hpp", {K::Header}},
    {"hxx", {K::Header}},
    {"tcc", {K::Header}},
    {"gch", {K::PrecompiledHeader}},
    {"pch", {K::PrecompiledHeader}},
    {"c++m", {K::Module}},
    {"ccm", {K::Module}},
    {"cppm", {K::Module}},
    {"cxxm", {K::Module}},
    {"iim", {K::Module}},
    {"ixx", {K::Module}},
    {"mpp", {K::Module}},
    {"pcm", {K::Module}},
};

constexpr Row kLanguages[] = {
    {"c", {K::C}},
    {"cpp-output", {K::C, true}},
    {"c++", {K::Cpp}},
    {"c++-cpp-output", {K::Cpp, true}},
    {"c-header", {K::Header}},
    {"c-header-unit", {K::Module}},
    {"c++-header", {K::Header}},
    {"c++-header-unit", {K::Module}},
    {"c++-module", {K::Module}},
    {"c++-module-cpp-output", {K::Module}},
    {"c++-system-header", {K::Header}},
    {"c++-user-header", {K::Header}},
};

template <std::size_t count>
SourceType Find(const Row (&rows)[count], const std::string& name) {
  for (const Row& row : rows) {
    if (row.name == name) return row.type;
  }
  return SourceType();
}

}  // namespace

SourceType TypeBySuffix(const std::string& fileName, bool anyCase) {
  const std::size_t start = fileName.find_last_of("./\\");
  if (start == std::string::npos || fileName[start] != '.') return SourceType();
  const std::string suffix = fileName.substr(start + 1);
  return Find(kSuffixes, anyCase ? InSmallLetters(suffix) : suffix);
}

SourceType TypeByLanguage(const std::string& language) { return Find(kLanguages, language); }

}  // namespace snipwell
