// The tool with the compilers of the machine. A test whose compiler is not there says that it
// skips.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

bool HasProgram(const std::string& name) {
  return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0;
}

/// A program in which only a few lines make the error.
const char kProgram[] =
    "// A program with a fault.\n"
    "struct Point { int x; int y; };\n"
    "struct Line { Point from; Point to; };\n"
    "static int unused(int a) { return a + 1; }\n"
    "static int also_unused = unused(2);\n"
    "enum Colour { red, green };\n"
    "int length(const Line& line) {\n"
    "  int dx = line.to.x - line.from.x;\n"
    "  int dy = line.to.y - line.from.y;\n"
    "  Colour colour = 7;\n"
    "  return dx + dy + also_unused;\n"
    "}\n"
    "int main() { return length(Line()); }\n";

bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

void ExpectIsolated(const Workspace& work, const std::string& needed,
                    const std::vector<std::string>& removed) {
  const std::string isolated = work.Read("x.tsf.cpp");
  EXPECT_TRUE(Holds(isolated, needed)) << isolated;
  for (const std::string& text : removed) EXPECT_FALSE(Holds(isolated, text)) << isolated;
}

TEST(RealCompilers, ClangErrorsWithLinesInParentheses) {
  if (!HasProgram("clang++")) GTEST_SKIP() << "no clang++ here";
  const Workspace work;
  work.Write("x.cpp", kProgram);
  const Outcome outcome = work.Snip(
      {"/COMPILER=clang++", "/LOGFILE=log", "-fsyntax-only", "-fdiagnostics-format=msvc", "x.cpp"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  ExpectIsolated(work, "Colour colour = 7;", {"Point", "unused", "return", "main"});
}

// g++ looks for its parts beside the program that its argument 0 names, which is the tool, so a
// script stands between them.
TEST(RealCompilers, GccErrorsByALineWithoutNumbers) {
  if (!HasProgram("g++")) GTEST_SKIP() << "no g++ here";
  const Workspace work;
  work.Write("gxx", "#!/bin/sh\nexec g++ \"$@\"\n");
  std::filesystem::permissions(work.Folder() / "gxx", std::filesystem::perms::owner_all);
  work.Write("x.cpp", kProgram);
  work.Write("criteria", "\"In function 'int length\"");
  const Outcome outcome = work.Snip(
      {"/COMPILER=./gxx", "/LOGFILE=log", "/ERRORMATCH=criteria", "-fsyntax-only", "x.cpp"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  ExpectIsolated(work, "int length", {"unused(int", "main"});
}

TEST(RealCompilers, ACrashOfClangInOneFunction) {
  if (!HasProgram("clang++")) GTEST_SKIP() << "no clang++ here";
  const Workspace work;
  work.Write("x.cpp", kProgram + std::string("void crash() {\n"
                                             "  int i = 0;\n"
                                             "#pragma clang __debug llvm_fatal_error\n"
                                             "  int j = 1;\n"
                                             "}\n"
                                             "int last;\n"));
  work.Write("criteria", "\"fatal error: error in backend:\"");
  const Outcome outcome = work.Snip({"/COMPILER=clang++", "/LOGFILE=log", "/ERRORMATCH=criteria",
                                     "-fno-crash-diagnostics", "-fsyntax-only", "x.cpp"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(work.Read("x.tsf.cpp"),
            "\nvoid crash() {\n\n#pragma clang __debug llvm_fatal_error\n\n}");
}

}  // namespace
}  // namespace snipwell::testing
