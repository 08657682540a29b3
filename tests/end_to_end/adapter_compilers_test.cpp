// The adapter between the tool and real compilers, or scripts of a POSIX shell.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
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

TEST_F(AdapterTest, TellsASignalAndAMissingTest) {
  WriteScript("killed", "kill -9 $$\n");
  work.Write("x.c", "a;");
  const Start adapter = {"env TMPDIR=\"$PWD/tmp\" snip-cc", "", ""};
  const Outcome outcome = work.Snip({"--cc=./killed", "x.c"}, adapter);
  EXPECT_EQ(outcome.status, 137);
  EXPECT_EQ(outcome.out, "snip-cc: internal error: ended by signal 9\n");
  EXPECT_NE(work.Snip({"--test=./missing", "x.c"}, adapter).err.find("not found"),
            std::string::npos);
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

}  // namespace
}  // namespace snipwell::testing
