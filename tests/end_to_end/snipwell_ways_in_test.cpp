// The ways in which a failing command is given, and compilers as they are.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
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
      {".",
       {"-o", "build/out", "fake_g++", "-Iinclude", "-c", "pool.cpp"},
       "build/out",
       "build/out.report.md",
       "fake_g++ -c -x c++ out"},
  };
  for (const auto& row : rows) {
    // There is no nice, and each takes seconds.
    const bool isSimilar = row.folder == std::string("build") && row.arguments.size() > 1;
    if (kIsWindows && (row.arguments[0] == "nice" || isSimilar)) continue;
    Project project;
    Fill(project);
    const Outcome outcome = project.Snipwell(row.arguments, {}, row.folder);
    EXPECT_EQ(outcome.status, 0) << row.report << '\n' << outcome.err;
    EXPECT_EQ(project.Added(), std::string(row.result) + ' ' + row.report) << outcome.err;
    EXPECT_EQ(project.Read(row.result), kSmallest) << row.report;
    const std::string reduced = kIsWindows ? With(row.reduced, "'", "\"") : row.reduced;
    EXPECT_GE(Count(project.Read(row.report), reduced), 1U) << project.Read(row.report);
    EXPECT_EQ(Count(project.Read(row.report), "test_tmp"), 0U) << project.Read(row.report);
  }
}

/// A rule for cl's answer to texts that hold these words in their order.
std::string ClAnswers(const std::string& words, const std::string& lines) {
  return "rule\nnoarg /P\narg /DFROM_CL\nwords " + words + '\n' + lines + "exit 2\n";
}

std::string InternalErrorOfCl(const std::string& line) {
  return "out {file}(7): fatal error C1001: Internal compiler error.\n"
         "out (compiler file 'D:\\\\a\\\\p1\\\\symbols.cpp', line " +
         line +
         ")\n"
         "out  To work around this problem, try simplifying or changing the program\n";
}

// What another internal error is, the next line tells. The variable CL holds for every try.
TEST(SnipwellWaysIn, HoldFailuresOfCl) {
  const struct {
    const char* compiler;
    const char* stages;
    std::string rules;
    const char* headline;
    const char* added;
    const char* reduced;  // command in the report
  } rows[] = {
      {"cl", "--stages=preprocess,snip,refine,options,layout",
       ClAnswers(kWanted, InternalErrorOfCl("33550")) +
           ClAnswers("int take ( ) {", InternalErrorOfCl("33551")),
       "# internal compiler error: in symbols.cpp, line 33550\n",
       "my src/a pool.min.cpp my src/a pool.other-1.cpp my src/a pool.report.md",
       "\ncl /c 'a pool.min.cpp'\n"},
      {"clang-cl", "--stages=preprocess,refine,options,layout",
       ClAnswers(kWanted, "err {file}(7,3): error: no member\n"), "# error: no member\n",
       "my src/a pool.min.cpp my src/a pool.report.md", "\nclang-cl /c 'a pool.min.cpp'\n"},
      {"CL.EXE", "--stages=refine,layout",
       ClAnswers(kWanted, "out {file}(7): error C2065: 'x'\n") +
           ClAnswers("int take ( ) {", "out {file}(7): error C2066: 'x'\n"),
       "# error C2065: 'x'\n", "my src/a pool.min.cpp my src/a pool.report.md",
       "\nCL.EXE /O2 /Zi /I build /c '/Tpa pool.min.cpp'\n"},
  };
  for (const auto& row : rows) {
    Project project;
    Fill(project);
    project.AddCompiler(row.compiler);
    project.SetRules(row.rules);
    const Outcome outcome = project.Snipwell(
        {row.stages, row.compiler, "/O2", "/Zi", "/FS", "/MP", "/I", "build", "/Fo:", "a.obj",
         "/sourceDependencies", "a.json", "/c", "/TP", "my src/a pool.cpp", "/link", "x.lib"},
        {"CL=/DFROM_CL", "_CL_=/w"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(project.Added(), row.added) << outcome.err;
    EXPECT_EQ(project.Read("my src/a pool.min.cpp"), kSmallest) << outcome.err;
    const std::string report = project.Read("my src/a pool.report.md");
    EXPECT_EQ(Count(report, row.headline), 1U) << report;
    EXPECT_EQ(Count(report, kIsWindows ? With(row.reduced, "'", "\"") : row.reduced), 1U) << report;
    EXPECT_EQ(Count(report, "```text\nMicrosoft (R) C/C++ Compiler Version 19.99 for x64\n```"),
              1U);
  }
}

TEST(SnipwellWaysIn, AskClAboutAnErrorOfClangCl) {
  Project project;
  Fill(project);
  project.AddCompiler("clang-cl");
  project.AddCompiler("cl");
  project.SetRules(std::string("rule\nnoarg /P\narg cl\nlacks unused\nexit 2\n") +
                   "rule\nnoarg /P\narg clang-cl\nwords " + kWanted +
                   "\nerr {file}(7,3): error: no member\nexit 1\n");
  const Outcome outcome =
      project.Snipwell({"--stages=refine", "clang-cl", "/std:c++17", "-Wall", "/c", "pool.cpp"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Count(project.Read("pool.min.cpp"), "unused"), 1U) << outcome.err;
  EXPECT_EQ(Count(project.Read("pool.report.md"), "accepted by cl."), 1U)
      << project.Read("pool.report.md");
  EXPECT_EQ(Count(project.Runs(), "-Wall"), Count(project.Runs(), "clang-cl"));
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

/// The compiler that accepts the program, as the report tells.
std::string AcceptedBy(const std::string& report) {
  const std::string words = "accepted by `";
  const std::size_t at = report.find(words);
  if (at == std::string::npos) return "";
  const std::size_t begin = at + words.size();
  return report.substr(begin, report.find('`', begin) - begin);
}

// What one compiler refuses and another accepts is so too wherever the time ends the run.
TEST(SnipwellWaysIn, WorkWithCompilersAsTheyAre) {
  const struct {
    const char* compiler;
    const char* other;
    const char* options;
    const char* source;
    const char* error;
  } rows[] = {
      {"g++", "clang++", " -fsyntax-only ", kRefusedByGcc,
       "explicit specialization in non-namespace scope"},
      {"clang++", "g++", " -std=c++20 -fsyntax-only ", kRefusedByClang,
       "no matching conversion for"},
  };
  for (const auto& row : rows) {
    Project project;
    project.Write("pool.cpp", row.source);
    const std::string check = std::string(row.compiler) + row.options;
    const std::string fails = " 2>&1 | grep -q '" + std::string(row.error) + "'";
    if (Shell(project, check + "pool.cpp" + fails) != 0 ||
        Shell(project, std::string(row.other) + row.options + "pool.cpp 2>test_err") != 0) {
      GTEST_SKIP() << "installed compilers do not differ in: " << row.error;
    }
    const Outcome outcome =
        project.Snipwell(WordsOf("--timeout=3 " + check + "pool.cpp"), kRealPrograms);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(Shell(project, check + "pool.min.cpp" + fails), 0) << project.Read("pool.min.cpp");
    const std::string by = AcceptedBy(project.Read("pool.report.md"));
    EXPECT_NE(by, "");
    EXPECT_EQ(Shell(project, by + row.options + " pool.min.cpp"), 0) << by;
  }
}

TEST(SnipwellWaysIn, CompareTwoBuildsOfAProgram) {
  Project project;
  project.Write("pool.c",
                "double cos(double);\n"
                "double unused(double a) { return cos(a); }\n"
                "int main(void) { char c = (char)200; return c < 0; }\n");
  if (Shell(project, "gcc --version >test_out 2>&1") != 0) GTEST_SKIP() << "no gcc is installed";
  std::vector<std::string> words = {"--stages=snip",
                                    "--wrong-code=gcc -funsigned-char",
                                    "gcc",
                                    "-fsigned-char",
                                    "pool.c",
                                    "-lm",
                                    "-o",
                                    "pool"};
  const Outcome outcome = project.Snipwell(words, kRealPrograms);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const std::string result = project.Read("pool.min.c");
  EXPECT_EQ(Count(result, "return c < 0"), 1U) << result;
  EXPECT_EQ(Count(result, "unused"), 0U) << result;
  EXPECT_EQ(Count(project.Read("pool.report.md"), "Two builds of a program behave in"), 1U);
  // An earlier result that is no right program, or is one, and the first declaration in it.
  const char* const programs[] = {
      "int take(int);",
      "int take();",
      "int lost(int a) { if (a) return 1; }",
      "int printf(const char *, ...); int shown(void) { return printf(\"%s\", 1); }",
      "int printf(const char *, ...); int shown(char *a) { return printf(\"%s!\", a); }",
  };
  words.front() = "--stages=layout";
  words.insert(words.begin(), "--resume");
  for (const char* const program : programs) {
    std::ofstream(project.Folder() / "pool.min.c")
        << program << "\nint main(void) { " << (Count(program, "(char *a)") ? "shown(0); " : "")
        << "char c = (char)200; return c < 0; }\n";
    const Outcome again = project.Snipwell(words, kRealPrograms);
    EXPECT_EQ(Count(again.err, "does not fail any more"), program == programs[0] ? 0U : 1U)
        << program << again.err;
  }
}

}  // namespace
}  // namespace snipwell::testing
