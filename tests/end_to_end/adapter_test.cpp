// The adapter between the tool and compilers or tests that do not speak as it expects.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

namespace fs = std::filesystem;

bool HasProgram(const std::string& name) {
  return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0;
}

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<std::string> Words(const std::string& text) {
  std::istringstream in(text);
  return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

class AdapterTest : public ::testing::Test {
 protected:
  AdapterTest() { fs::create_directory(work.Folder() / "tmp"); }
  // Nothing of any compilation stays behind.
  ~AdapterTest() override { EXPECT_TRUE(fs::is_empty(work.Folder() / "tmp")); }

  Outcome Isolate(const std::string& source, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"/COMPILER=snip-cc", "/LOGFILE=log"});
    arguments.push_back(source);
    return work.Snip(arguments, {"env TMPDIR=\"$PWD/tmp\" snip", "", ""});
  }

  void WriteScript(const std::string& name, const std::string& text) {
    work.Write(name, "#!/bin/sh\n" + text);
    fs::permissions(work.Folder() / name, fs::perms::owner_all);
  }

  Workspace work;
};

// The line of the error moves with every cut above it.
TEST_F(AdapterTest, IsolatesAnErrorOfGccWhoseLineMoves) {
  if (!HasProgram("g++")) GTEST_SKIP() << "no g++ here";
  std::string source;
  for (int i = 0; i < 12; ++i) source += "int before" + std::to_string(i) + ";\n";
  work.Write("x.cpp", source + "struct S { int a; };\nint f(S s) { return s.b; }\nint after;\n");
  const Outcome outcome = Isolate("x.cpp", {"--cc=g++", "-O2"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(work.Read("x.tsf.cpp"), "\nstruct S {  };\nint f(S s) { return s.b; }");
  EXPECT_NE(work.Read("x.cpp.ZEDRerrfile").find("x.fut.cpp("), std::string::npos);
}

const char kCrash[] =
    "void one() {\n  int i;\n#pragma clang __debug llvm_fatal_error\n  int j;\n}\n";
const char kOtherCrash[] = "void other() {\n  int i;\n#pragma clang __debug crash\n  int j;\n}\n";

TEST_F(AdapterTest, StaysWithTheFirstOfTwoCrashesOfClang) {
  if (!HasProgram("clang++")) GTEST_SKIP() << "no clang++ here";
  for (const bool fatalErrorFirst : {true, false}) {
    const std::string first = fatalErrorFirst ? kCrash : kOtherCrash;
    const std::string second = fatalErrorFirst ? kOtherCrash : kCrash;
    work.Write("x.cpp", "int a;\n\n" + first + "\n" + second + "\nint b;\n");
    const Outcome outcome = Isolate("x.cpp", {"--cc=clang++"});
    EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
    const std::string isolated = work.Read("x.tsf.cpp");
    EXPECT_NE(isolated.find(fatalErrorFirst ? "llvm_fatal_error" : "__debug crash"),
              std::string::npos)
        << isolated;
    EXPECT_EQ(isolated.find(fatalErrorFirst ? "__debug crash" : "llvm_fatal_error"),
              std::string::npos)
        << isolated;
    EXPECT_EQ(isolated.find("int b"), std::string::npos) << isolated;
  }
}

TEST_F(AdapterTest, IsolatesEachKindOfCrashOfClang) {
  if (!HasProgram("clang++")) GTEST_SKIP() << "no clang++ here";
  for (const char* kind : {"llvm_fatal_error", "crash", "parser_crash"}) {
    SCOPED_TRACE(kind);
    const std::string pragma = std::string("#pragma clang __debug ") + kind + "\n";
    work.Write("x.cpp", "int a;\n\nvoid f() {\n int i;\n" + pragma + " int j;\n}\nint b;\n");
    EXPECT_EQ(Isolate("x.cpp", {"--cc=clang++"}).out, "***SNIPWELL ***\n1");
    const std::string isolated = work.Read("x.tsf.cpp");
    EXPECT_NE(isolated.find(pragma), std::string::npos) << isolated;
    EXPECT_EQ(isolated.find("int"), std::string::npos) << isolated;
  }
}

TEST_F(AdapterTest, LeavesBothChecksToClangInClMode) {
  if (!HasProgram("clang++")) GTEST_SKIP() << "no clang++ here";
  work.Write("x.cpp", "int a;\nstruct S { int a; };\nint f(S s) { return s.b; }\n");
  const Outcome outcome = Isolate("x.cpp", {"--cc=clang++", "--driver-mode=cl", "/VERBOSE"});
  EXPECT_NE(outcome.err.find("Using front-end only of compiler\n"), std::string::npos);
  EXPECT_NE(outcome.err.find("Using NO optimizations\n"), std::string::npos);
  EXPECT_EQ(work.Read("x.tsf.cpp"), "\nstruct S {  };\nint f(S s) { return s.b; }");
}

// The compiler and what it has started are ended at the limit; a candidate that hangs in another
// way than the source does not stop the run.
TEST_F(AdapterTest, IsolatesAHang) {
  WriteScript("slow",
              "for file; do :; done\n"
              "grep -q 'hang;' $file || exit 0\n"
              "sleep 60 & echo $! >>children\n"
              "sleep 60\n");
  work.Write("x.c", "a;hang;c;");
  const Outcome outcome = Isolate("x.c", {"--cc=./slow", "--limit=0.1"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(work.Read("x.tsf.c"), "hang;");
  for (const std::string& child : Words(work.Read("children"))) {
    const std::string status = ReadAll("/proc/" + child + "/status");
    EXPECT_TRUE(status.empty() || status.find("State:\tZ") != std::string::npos) << status;
  }
}

TEST_F(AdapterTest, RunsATestInAFolderWithTheSourceUnderItsOwnName) {
  WriteScript("check.sh", "ls\necho ': error'\n[ \"$(ls)\" = my.x.c ] && grep -q 'b;' my.x.c\n");
  work.Write("my.x.c", "a;b;c;");
  const Outcome outcome = Isolate("my.x.c", {"--test=./check.sh"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(work.Read("my.x.tsf.c"), "b;");
  work.Write("y.c", "a;");
  EXPECT_EQ(Isolate("y.c", {"--test=./check.sh"}).out, "***SNIPWELL ***\n0");
}

// One that has left the process group, and one that writes into the temporary folder to the end.
TEST_F(AdapterTest, LeavesNothingBehind) {
  WriteScript("cc",
              "setsid sleep 60 & echo $! >>children\n"
              "(while :; do echo >$TMPDIR/f$$; done) & echo $! >>children\n"
              "for i in 1 2 3 4 5 6 7 8 9; do echo a long line of messages; done\n"
              "cat; ulimit -c\n");
  work.Write("x.c", "a;");
  const Outcome outcome = work.Snip({"--cc=./cc", "x.c"}, {"env TMPDIR=tmp snip-cc", "", ""});
  EXPECT_EQ(outcome.out.substr(outcome.out.size() - 2), "0\n");
  EXPECT_EQ(outcome.status, 0);
  work.Snip({"--cc=./cc", "x.c"}, {"env TMPDIR=tmp snip-cc", "| head -1", ""});
  for (const std::string& child : Words(work.Read("children"))) {
    EXPECT_FALSE(fs::exists("/proc/" + child)) << child;
  }
}

TEST_F(AdapterTest, PassesTheStatusOn) {
  WriteScript("cc", "echo said; echo so >&2; exit 3\n");
  WriteScript("killed", "kill -9 $$\n");
  work.Write("x.c", "a;");
  const Start adapter = {"env TMPDIR=\"$PWD/tmp\" snip-cc", "", ""};
  Outcome outcome = work.Snip({"--cc=./cc", "x.c"}, adapter);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "said\nso\n");
  WriteScript("cc", "exit 127\n");
  EXPECT_EQ(work.Snip({"--cc=./cc", "x.c"}, adapter).err, "");
  outcome = work.Snip({"--cc=./missing", "x.c"}, adapter);
  EXPECT_EQ(outcome.err, "snip-cc: cannot start ./missing: No such file or directory\n");
  EXPECT_EQ(outcome.status, 127);
  outcome = work.Snip({"--test=./missing", "x.c"}, adapter);
  EXPECT_NE(outcome.err.find("not found"), std::string::npos);
  outcome = work.Snip({"--cc=./killed", "x.c"}, adapter);
  EXPECT_EQ(outcome.status, 137);
  EXPECT_EQ(outcome.out, "snip-cc: internal error: ended by signal 9\n");
  EXPECT_EQ(work.Snip({"--limit=x", "x.c"}, adapter).status, 2);
}

// A compiler that is not ended at the line that decides runs into the limit.
TEST_F(AdapterTest, DecidesAsTheOptionsAsk) {
  const std::string error = "echo 'x.c:1:2: error: no'\n";
  const std::string assertion = "echo \"cc: y.c:3: f: Assertion 'a' failed.\" | tr \\' '\\`'\n";
  const std::string dump = "echo Stack dump:; echo '0x12ab56 fold(tree)'\n";
  const std::string line = "snip-cc: internal error: ";
  const struct {
    std::string script;
    const char* option;
    std::string firstLine;
    int status;
  } rows[] = {
      {error + dump + "exit 9", "--limit=60", line + "in fold", 9},
      {error + dump + "exit 9", "--valid", "x.c(1,2): error: no", 1},
      {error + dump + "kill -9 $$", "--valid", "x.c(1,2): error: no", 1},
      {error + "sleep 60", "--valid", "x.c(1,2): error: no", 1},
      {error + "exit 9", "--first-line", "x.c(1,2): error: no", 9},
      {error + dump + "sleep 0.1; exit 9", "--first-line", line + "in fold", 9},
      {error + "echo 'LLVM ERROR: out'; sleep 60", "--first-line", line + "out", 1},
      {dump + error + "exit 9", "--valid", line + "in fold", 9},
      {"printf 'LLVM ERROR: '; sleep 0.1; echo out; sleep 60", "--first-line", line + "out", 1},
      {"echo 'LLVM ERROR: out'; kill -9 $$", "--first-line", line + "out", 1},
      {"echo 'int a;' >&2; exit 3", "--first-line", "int a;", 3},
      {error + "exit 9", "--plain-options", "x.c(1,2): error: no", 9},
  };
  work.Write("x.c", "a;");
  const Start adapter = {"env TMPDIR=\"$PWD/tmp\" snip-cc", "", ""};
  for (const auto& row : rows) {
    WriteScript("cc", row.script + "\n");
    const Outcome outcome = work.Snip({"--cc=./cc", "--limit=2", row.option, "x.c"}, adapter);
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')), row.firstLine) << row.script;
    EXPECT_EQ(outcome.status, row.status) << row.script;
  }
  for (const char* option : {"/Zs", "/Od"}) {
    const Outcome outcome = work.Snip({"--cc=./none", "--plain-options", option, "x.c"}, adapter);
    EXPECT_EQ(outcome.out, std::string("snip-cc: ") + option + " is not tried\n");
    EXPECT_EQ(outcome.status, 1);
  }
}

// Clang asks nobody for the names of a dump's functions, and the crash is told all the same.
TEST_F(AdapterTest, StaysWithACrashOfClangThatIsValid) {
  if (!HasProgram("clang++")) GTEST_SKIP() << "no clang++ here";
  const std::string crash = "void f(U u) {\n int i;\n#pragma clang __debug crash\n int j;\n}\n";
  work.Write("x.cpp", "int a;\ntypedef int U;\n" + crash + "int b;\n");
  const Outcome outcome =
      Isolate("x.cpp", {"--cc=clang++", "--valid", "--first-line", "--plain-options", "/VERBOSE"});
  EXPECT_NE(outcome.err.find("Using full compiler\n"), std::string::npos);
  EXPECT_NE(outcome.err.find("Using given optimizations\n"), std::string::npos);
  EXPECT_EQ(work.Read("x.tsf.cpp"),
            "\ntypedef int U;\nvoid f(U u) {\n\n#pragma clang __debug crash\n\n}");
  EXPECT_NE(work.Read("x.cpp.ZEDRerrfile").find("called by clang::"), std::string::npos);
}

TEST_F(AdapterTest, EndsTheCompilerWhenInterrupted) {
  WriteScript("slow", "echo $$ >started\nsleep 60\n");
  work.Write("x.c", "a;");
  // A shell ignores the interrupt signal for what it starts in the background; TERM it does not.
  const Outcome outcome = work.Snip(
      {"--cc=./slow", "x.c"},
      {"env TMPDIR=\"$PWD/tmp\" sh -c 'snip-cc \"$@\" & while ! [ -s started ]; do :; done; "
       "kill -TERM $!; wait $!; echo $?; kill -0 $(cat started) 2>/dev/null; echo $?' sh",
       "", ""});
  EXPECT_EQ(outcome.out, "143\n1\n");
}

}  // namespace
}  // namespace snipwell::testing
