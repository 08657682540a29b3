#include "compile/compiler_name.h"

#include <algorithm>
#include <string_view>

#include "text/small_letters.h"

namespace snipwell {

namespace {

bool Contains(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

// The first part that a name contains decides.
constexpr struct {
  std::string_view part;
  CompilerStyle style;
} kStyles[] = {
    {"clang-cl", CompilerStyle::ClangCl}, {"icx-cl", CompilerStyle::ClangCl},
    {"clang", CompilerStyle::Clang},      {"dpcpp", CompilerStyle::Clang},
    {"em++", CompilerStyle::Clang},       {"emcc", CompilerStyle::Clang},
    {"hipcc", CompilerStyle::Clang},      {"icpx", CompilerStyle::Clang},
    {"icx", CompilerStyle::Clang},
};

constexpr std::string_view kCppDrivers[] = {"CC",   "dpcpp", "hipcc", "icpc",
                                            "icpx", "mpiCC", "mpicxx"};

constexpr std::string_view kNoCompilers[] = {
    "ar",      "as",    "bazel", "cd",  "cmake",    "collect2",   "devenv", "gmake",
    "ld",      "lib",   "link",  "lld", "lld-link", "make",       "meson",  "ml64",
    "msbuild", "ninja", "nmake", "rc",  "scons",    "xcodebuild",
};

template <typename Names>
bool IsOneOf(const Names& names, const std::string& name) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

}  // namespace

std::string ProgramName(const std::string& path) {
  std::string name = path.substr(path.find_last_of("/\\") + 1);
  std::string lower = InSmallLetters(name);
  const std::size_t kept = lower.size() - std::min<std::size_t>(lower.size(), 4);
  return lower.substr(kept) == ".exe" ? lower.substr(0, kept) : name;
}

CompilerStyle StyleOf(const std::string& compiler) {
  const std::string name = InSmallLetters(ProgramName(compiler));
  if (name == "cl") return CompilerStyle::Cl;
  for (const auto& row : kStyles) {
    if (Contains(name, row.part)) return row.style;
  }
  return CompilerStyle::Gcc;
}

bool IsCppDriver(const std::string& compiler) {
  const std::string name = ProgramName(compiler);
  return Contains(name, "++") || IsOneOf(kCppDrivers, name);
}

bool IsNoCompiler(const std::string& program) {
  return IsOneOf(kNoCompilers, InSmallLetters(ProgramName(program)));
}

}  // namespace snipwell
