// The ways in which a failing command is given, and compilers as they are.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>
#include <sstream>

#include "tests/end_to_end/project.h"

namespace snipwell::testing {
namespace {

const char kSource[] =
    "#include \"pool.h\"\n"
    "int unused;\n"
    "int take(Pool& pool) {\n"
    "  return pool.size + 7;\n"
    "}\n";

const char kBugReport[] =
    "// Target: fake-linux\n"
    "// Configured with: ../configure\n"
    "// gcc version 99.1 (Fake)\n"
    "//\n"
    "// /usr/lib/gcc/cc1plus -quiet -imultiarch x86 pool.cpp -quiet -O2 -o x.s\n"
    "\n"
    "# 1 \"pool.cpp\"\n"
    "int unused;\nint take(int size) { return size + 7; }\n";

const char kDatabase[] =
    "[{\"directory\": \"FOLDER/build\", \"file\": \"other.cpp\", \"command\": \"false\"},\n"
    " {\"directory\": \"FOLDER/build\", \"file\": \"../my src/a pool.cpp\",\n"
    "  \"command\": \"ccache fake_g++ -O2 -I../include -o a.o -c \\\"../my src/a "
    "pool.cpp\\\"\"}]\n";

const char kTest[] =
    "#!/bin/sh\n"
    "PATH=/usr/bin:/bin\n"
    "[ $# -eq 0 ] && [ \"$(ls -A)\" = pool.cpp ] || exit 1\n"
    "tr -d '\\n' <pool.cpp | grep -q 'int take(.*) *{ *return.*7; *}' || exit 1\n"
    "touch left-behind\n";

// The compiler fails, in a folder that holds the program alone.
const char kBatchTest[] =
    "@for %%f in (*) do @if not %%f==pool.cpp exit 1\r\n"
    "@if not \"%1\"==\"\" exit 1\r\n"
    "@fake_g++ -iquote \"FOLDER/include\" pool.cpp >NUL 2>NUL\r\n"
    "@if not errorlevel 1 exit 1\r\n"
    "@echo >left-behind\r\n"
    "@exit 0\r\n";

std::string With(std::string text, const std::string& mark, const std::string& value) {
  for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark)) {
    text.replace(at, mark.size(), value);
  }
  return text;
}

/// A project with everything in it that a command may name.
void Fill(Project& project) {
  project.Write("pool.cpp", kSource);
  project.Write("my src/a pool.cpp", kSource);
  project.Write("my src/near.cpp", kSource);
  project.Write("my src/pool.h", "struct Pool { int size; };\n");
  project.Write("include/pool.h", "struct Pool { int size; };\n");
  project.Write("build/compile_commands.json",
                With(kDatabase, "FOLDER", project.Folder().generic_string()));
  project.Write("args", "-O2 -Iinclude '-DA=b c' \"my src/a pool.cpp\" -c");
  project.Write("ccX1.out", kBugReport);
  project.Write("pool-1.cpp", "int unused;\nint take(int size) { return size + 7; }\n");
  project.Write("pool-1.sh",
                "# Crash reproducer for Fake\n# Driver args: \"-c\"\n \"clang\" \"-cc1\""
                " \"-O2\" \"-main-file-name\" \"pool.cpp\" \"-x\" \"c++\" \"pool-1.cpp\"\n");
  project.WriteScript("test_script", kTest,
                      With(kBatchTest, "FOLDER", project.Folder().generic_string()));
  project.AddCompiler("clang");
  project.AddCompiler("g++");
}

TEST(SnipwellWaysIn, LeadToTheSameResult) {
  using Words = std::vector<std::string>;
  const struct {
    const char* folder;
    Words arguments;
    const char* result;
    const char* report;
    const char* reduced;  // command in the report
  } rows[] = {
      {".",
       {"-p", "build", "my src/a pool.cpp"},
       "my src/a pool.min.cpp",
       "my src/a pool.report.md",
       "fake_g++ -c 'a pool.min.cpp'"},
      {"build",
       {"-p", ".", "../my src/a pool.cpp"},
       "my src/a pool.min.cpp",
       "my src/a pool.report.md",
       "fake_g++ -c 'a pool.min.cpp'"},
      {"build",
       {"fake_g++", "-I../include", "-c", "../pool.cpp"},
       "pool.min.cpp",
       "pool.report.md",
       "fake_g++ -c pool.min.cpp"},
      {"build",
       {"--stages=snip,refine,options,layout", "fake_g++", "-c", "../my src/near.cpp"},
       "my src/near.min.cpp",
       "my src/near.report.md",
       "fake_g++ -c near.min.cpp"},
      {".",
       {"fake_g++", "@args"},
       "my src/a pool.min.cpp",
       "my src/a pool.report.md",
       "fake_g++ -c 'a pool.min.cpp'"},
      {".",
       {"nice", "-n", "1", "env", "A=b", "fake_g++", "pool.cpp", "-Iinclude", "-o", "pool"},
       "pool.min.cpp",
       "pool.report.md",
       "fake_g++ -c pool.min.cpp"},
      {".", {"./pool-1.sh"}, "pool-1.min.cpp", "pool-1.report.md", "clang -cc1"},
      {"build", {"../ccX1.out"}, "ccX1.min.ii", "ccX1.report.md", "g++ -c ccX1.min.ii"},
      {".",
       {"--test=./test_script", "pool.cpp"},
       "pool.min.cpp",
       "pool.report.md",
       "./test_script"},
      {"build",
       {"-o", "out.cc", "fake_g++", "-I../include", "-c", "../pool.cpp"},
       "build/out.cc",
       "build/out.report.md",
       "fake_g++ -c out.cc"},
  };
  for (const auto& row : rows) {
    if (kIsWindows && row.arguments[0] == "nice") continue;
    Project project;
    Fill(project);
    const Outcome outcome = project.Snipwell(row.arguments, {}, row.folder);
    EXPECT_EQ(outcome.status, 0) << row.report << '\n' << outcome.err;
    EXPECT_EQ(project.Added(), std::string(row.result) + ' ' + row.report) << outcome.err;
    EXPECT_EQ(project.Read(row.result), kSmallest) << row.report;
    const std::string reduced = kIsWindows ? With(row.reduced, "'", "\"") : row.reduced;
    EXPECT_GE(Count(project.Read(row.report), reduced), 1U) << project.Read(row.report);
  }
}

const char kRefusedByGcc[] =
    "int unused() { return 1; }\n"
    "template <class T>\n"
    "struct Pool {\n"
    "  template <class U>\n"
    "  struct Slot {\n"
    "    U value;\n"
    "  };\n"
    "  template <>\n"
    "  struct Slot<int> {\n"
    "    long value;\n"
    "  };\n"
    "  T size;\n"
    "};\n"
    "Pool<char> pool;\n";

const char kRefusedByClang[] =
    "struct Pool {\n"
    "  int size;\n"
    "};\n"
    "int unused() { return 1; }\n"
    "template <class T>\n"
    "T Make(int size) {\n"
    "  int twice = size + size;\n"
    "  return T(twice);\n"
    "}\n"
    "int main() { return Make<Pool>(3).size; }\n";

const std::vector<std::string> kRealPrograms = {"PATH=/usr/bin:/bin"};

std::vector<std::string> WordsOf(const std::string& command) {
  std::istringstream in(command);
  return {std::istream_iterator<std::string>(in), {}};
}

int Shell(const Project& project, const std::string& command) {
  return std::system(("cd '" + project.Folder().string() + "' && " + command).c_str());
}

// What one compiler refuses and another accepts is so too wherever the time ends the run.
TEST(SnipwellWaysIn, WorkWithCompilersAsTheyAre) {
  const struct {
    const char* compiler;
    const char* other;
    const char* source;
    const char* error;
  } rows[] = {
      {"g++", "clang++", kRefusedByGcc, "explicit specialization in non-namespace scope"},
      {"clang++ -std=c++20", "g++ -std=c++20", kRefusedByClang, "no matching conversion for"},
  };
  for (const auto& row : rows) {
    Project project;
    project.Write("pool.cpp", row.source);
    const std::string check = std::string(row.compiler) + " -fsyntax-only ";
    const std::string fails = " 2>&1 | grep -q '" + std::string(row.error) + "'";
    const std::string accepts = std::string(row.other) + " -fsyntax-only ";
    if (Shell(project, check + "pool.cpp" + fails) != 0 ||
        Shell(project, accepts + "pool.cpp 2>test_err") != 0) {
      GTEST_SKIP() << "installed compilers do not differ in: " << row.error;
    }
    const Outcome outcome =
        project.Snipwell(WordsOf("--timeout=3 " + check + "pool.cpp"), kRealPrograms);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(Shell(project, check + "pool.min.cpp" + fails), 0) << project.Read("pool.min.cpp");
    EXPECT_EQ(Shell(project, accepts + "pool.min.cpp"), 0) << project.Read("pool.min.cpp");
    const std::string accepted = "accepted by `" + WordsOf(row.other)[0] + '`';
    EXPECT_EQ(Count(project.Read("pool.report.md"), accepted), 1U);
  }
}

TEST(SnipwellWaysIn, CompareTwoBuildsOfAProgram) {
  Project project;
  project.Write("pool.c",
                "int unused(int a) { return a; }\n"
                "int main(void) { char c = (char)200; return c < 0; }\n");
  if (Shell(project, "gcc --version >test_out 2>&1") != 0) GTEST_SKIP() << "no gcc is installed";
  const Outcome outcome = project.Snipwell({"--stages=snip", "--wrong-code=gcc -funsigned-char",
                                            "gcc", "-fsigned-char", "pool.c", "-o", "pool"},
                                           kRealPrograms);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const std::string result = project.Read("pool.min.c");
  EXPECT_EQ(Count(result, "return c < 0"), 1U) << result;
  EXPECT_EQ(Count(result, "unused"), 0U) << result;
  EXPECT_EQ(Count(project.Read("pool.report.md"), "Two builds of a program behave in"), 1U);
}

}  // namespace
}  // namespace snipwell::testing
