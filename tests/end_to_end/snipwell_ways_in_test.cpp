// The ways in which a failing command is given, and compilers as they are.

#include <gtest/gtest.h>

#include "platform/machine.h"
#include "tests/end_to_end/project.h"

namespace snipwell::testing {
namespace {

const char kResult[] = "int take() { return 7; }\n";
const char kSource[] =
    "#include \"pool.h\"\n"
    "int unused;\n"
    "int take(Pool& pool) {\n"
    "  return pool.size + 7;\n"
    "}\n";

const char kCrash[] =
    "rule\n"
    "noarg -E\n"
    "words int take ( ) { return 7 ; }\n"
    "err {file}:7:3: internal compiler error: in f, at pool.cc:70\n"
    "exit 1\n";

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
    "  \"command\": \"ccache fake_g++ -O2 -I../include -o a.o -c '../my src/a pool.cpp'\"}]\n";

const char kTest[] =
    "#!/bin/sh\n"
    "PATH=/usr/bin:/bin\n"
    "[ $# -eq 0 ] && [ \"$(ls -A)\" = pool.cpp ] || exit 1\n"
    "tr -d '\\n' <pool.cpp | grep -q 'int take(.*) *{ *return.*7; *}' || exit 1\n"
    "touch left-behind\n";

std::string With(std::string text, const std::string& mark, const std::string& value) {
  for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark)) {
    text.replace(at, mark.size(), value);
  }
  return text;
}

/// A project with everything in it that a command may name.
void Fill(Project& project) {
  project.SetRules(kCrash);
  project.Write("pool.cpp", kSource);
  project.Write("my src/a pool.cpp", kSource);
  project.Write("my src/near.cpp", kSource);
  project.Write("my src/pool.h", "struct Pool { int size; };\n");
  project.Write("include/pool.h", "struct Pool { int size; };\n");
  project.Write("build/compile_commands.json",
                With(kDatabase, "FOLDER", project.Folder().string()));
  project.Write("args", "-O2 -Iinclude '-DA=b c' \"my src/a pool.cpp\" -c");
  project.Write("ccX1.out", kBugReport);
  project.Write("pool-1.cpp", "int unused;\nint take(int size) { return size + 7; }\n");
  project.Write("pool-1.sh",
                "# Crash reproducer for Fake\n# Driver args: \"-c\"\n \"clang\" \"-cc1\""
                " \"-O2\" \"-main-file-name\" \"pool.cpp\" \"-x\" \"c++\" \"pool-1.cpp\"\n");
  project.WriteProgram("test_script", kTest);
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
    Project project;
    Fill(project);
    const Outcome outcome = project.Snipwell(row.arguments, "", row.folder);
    EXPECT_EQ(outcome.status, 0) << row.report << '\n' << outcome.err;
    EXPECT_EQ(project.Added(), std::string(row.result) + ' ' + row.report) << outcome.err;
    EXPECT_EQ(project.Read(row.result), kResult) << row.report;
    EXPECT_GE(Count(project.Read(row.report), row.reduced), 1U) << project.Read(row.report);
  }
}

}  // namespace
}  // namespace snipwell::testing
