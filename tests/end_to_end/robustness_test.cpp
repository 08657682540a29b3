// Odd surroundings: how the compiler ends and is found, links, closed descriptors, what a compiler
// does to the files.

#include <gtest/gtest.h>

#include <string>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

namespace fs = std::filesystem;

const char kStatusLines[] =
    "------------- ******* --------------------\nCompiler failed for this file.\n";

void MakeExecutable(const fs::path& path) {
  fs::permissions(path, fs::perms::owner_all, fs::perm_options::add);
}

TEST(Compiler, ThatCrashesHasFailed) {
  const Workspace work;
  work.SetRules("rule\nhas b\nout internal error: dying\nabort\n");
  work.Write("x.c", "a;b;c;");
  work.Isolate("x.c");
  EXPECT_EQ(work.Read("x.tsf.c"), "b;");
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), std::string("internal error: dying\n") + kStatusLines);
}

struct LookupCase {
  const char* name;
  const char* option;
  const char* errorFile;
};

TEST(Compiler, IsLookedUpByNameThenInPath) {
  const LookupCase cases[] = {
      {"in the current directory", "/COMPILER=here", "from here snip\n"},
      {"by path", "/COMPILER=bin/there", "from bin snip\n"},
      {"in PATH", "/COMPILER=there", "from bin snip\n"},
      {"without an interpreter line", "/COMPILER=plain", "plain -c x.c\n"},
      {"a directory is none, the search goes on", "/COMPILER=both", "from bin snip\n"},
      {"a directory", "/COMPILER=bin", "Spawn compiler failed.\n"},
      {"a file that cannot be executed", "/COMPILER=./x.c", "Spawn compiler failed.\n"},
      {"a path is not searched", "/COMPILER=./there", "Spawn compiler failed.\n"},
      {"an empty name", "/COMPILER=", "Spawn compiler failed.\n"},
  };
  for (const LookupCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Workspace work;
    fs::create_directory(work.Folder() / "bin");
    fs::create_directory(work.Folder() / "both");
    // The argument list begins with the tool's own name, so the shell sees that as its script name.
    work.Write("here", "#!/bin/sh\necho from here snip\n");
    work.Write("plain", "echo plain \"$@\"\n");
    for (const char* name : {"bin/there", "bin/both"}) {
      work.Write(name, "#!/bin/sh\necho from bin snip\n");
      MakeExecutable(work.Folder() / name);
    }
    MakeExecutable(work.Folder() / "here");
    MakeExecutable(work.Folder() / "plain");
    work.Write("x.c", "a;");
    work.Snip({row.option, "/LOGFILE=l", "x.c"},
              {"env PATH=/nowhere::bin:/usr/bin:/bin '" SNIP_FOLDER "/snip'", "", ""});
    EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), row.errorFile);
  }
}

// With SIGCHLD ignored the system would forget that the compiler has succeeded.
TEST(Compiler, IsJudgedRightWhenChildSignalsAreIgnored) {
  const Workspace work;
  work.Write("x.c", "a;");
  const Outcome outcome = work.Isolate("x.c", {}, {"snip", "", "trap '' CHLD;"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n0");
}

// The child has none of the tool's descriptors but its standard streams, and the default handling
// of Ctrl-C.
TEST(Compiler, StartsCleanly) {
  const Workspace work;
  work.Write("cc",
             "#!/bin/sh\n"
             "ls -l /proc/self/fd | grep -c 'ZEDRerrfile'\n"
             "ls -l /proc/self/fd | grep -c 'test_out\\|test_err'\n"
             "grep -o 'SigIgn.*' /proc/self/status | grep -o '.$'\n");
  MakeExecutable(work.Folder() / "cc");
  work.Write("x.c", "a;");
  work.Snip({"/COMPILER=./cc", "/LOGFILE=l", "x.c"}, {"snip", "", "trap '' INT;"});
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), "1\n0\n0\n");
}

TEST(Descriptors, MayBeClosed) {
  struct Case {
    const char* redirections;
    const char* out;
    int status;
  };
  // Without standard output or error there is nothing to save and restore; the run ends.
  const Case cases[] = {
      {"<&-", "***SNIPWELL ***\n1", 0}, {">&-", "", 1}, {"2>&-", "***SNIPWELL ***\n", 1}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.redirections);
    const Workspace work;
    work.FailWhileItHas({"b"});
    work.Write("x.c", "a;b;c;");
    const Outcome outcome = work.Isolate("x.c", {}, {"snip", row.redirections, ""});
    EXPECT_EQ(outcome.out, row.out);
    EXPECT_EQ(outcome.status, row.status);
    EXPECT_EQ(work.Read("x.c"), "a;b;c;");
    if (row.status == 0) {
      EXPECT_EQ(work.Read("x.tsf.c"), "b;");
    } else {
      EXPECT_TRUE(work.Runs().empty());
      EXPECT_EQ(work.Files(), "x.c");
    }
  }
}

TEST(Files, ThatAreLinksAreReplacedNotWrittenThrough) {
  for (const bool symbolic : {true, false}) {
    SCOPED_TRACE(symbolic ? "symbolic" : "hard");
    const Workspace work;
    work.FailWhileItHas({"b"});
    const std::string source = "a; /* cleaned away */b;c;";
    work.Write("x.c", source);
    work.Write("other", "other");
    const char* const links[][2] = {
        {"other", "x.tsf.c"}, {"x.c", "x.fut.c"}, {"x.c", "x.c.ZEDRerrfile"}};
    for (const auto& [target, name] : links) {
      if (symbolic) {
        fs::create_symlink(target, work.Folder() / name);
      } else {
        fs::create_hard_link(work.Folder() / target, work.Folder() / name);
      }
    }
    work.Isolate("x.c");
    EXPECT_EQ(work.Read("x.c"), source);
    EXPECT_EQ(work.Read("other"), "other");
    EXPECT_EQ(work.Read("x.tsf.c"), " b;");
  }
}

TEST(Files, OfTheProgramAreNoLog) {
  for (const char* log : {"x.c", "./x.c", "x.tsf.c"}) {
    SCOPED_TRACE(log);
    const Workspace work;
    work.FailWhileItHas({"b"});
    work.Write("x.c", "a;b;c;");
    const Outcome outcome =
        work.Snip({"/COMPILER=fake_compiler", std::string("/LOGFILE=") + log, "x.c"});
    EXPECT_EQ(work.Read("x.c"), "a;b;c;");
    EXPECT_EQ(work.Read("x.tsf.c"), "b;");
    EXPECT_NE(outcome.err.find(std::string("ERROR: Log file is the program, nothing appended: ") +
                               log + '\n'),
              std::string::npos);
  }
}

// A NUL byte ends a name for the system, but not for the words of an argument file.
TEST(Files, TheSourceIsNoCompilerOutputFile) {
  const Workspace work;
  work.FailWhileItHas({"b"});
  work.Write("x.c", "a;b;c;");
  work.Write("args", std::string("/COMPILER=fake_compiler /LOGFILE=l x.c\0junk", 43));
  work.Snip({"@args"});
  EXPECT_EQ(work.Read("x.c"), "a;b;c;");
  EXPECT_EQ(work.Read("x.tsf.c"), "b;");
  EXPECT_EQ(work.Files(), "args l x.c x.c.ZEDRerrfile x.tsf.c");
}

TEST(Files, ALogThatCannotBeOpenedCostsOnlyItsLine) {
  const Workspace work;
  work.FailWhileItHas({"b"});
  work.Write("x.c", "a;b;");
  const Outcome outcome = work.Snip({"/COMPILER=fake_compiler", "/LOGFILE=no/log", "x.c"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(outcome.err.find("ERROR:"), std::string::npos);
}

TEST(Files, TheIsolatedCodeStaysWhenTheCompilerDeletesTheCandidate) {
  const Workspace work;
  // Run 7 removes c from "a;b;c;", shows the error and deletes what it has compiled.
  work.SetRules(
      "rule\nrun 7\nout {file}(1) : error\ndelete\nexit 1\n"
      "rule\nhas b\nout {file}(1) : error\nexit 1\n");
  work.Write("x.c", "a;b;c;");
  const Outcome outcome = work.Isolate("x.c");
  EXPECT_NE(outcome.err.find("ERROR: Cannot replace isolated file x.tsf.c\n"), std::string::npos);
  EXPECT_EQ(work.Texts(8), (std::vector<std::string>{"a;c;", "b;c;"}));
  EXPECT_EQ(work.Read("x.tsf.c"), "b;c;");
}

TEST(Files, ASourceThatCannotBeReadIsReported) {
  const Workspace work;
  work.SetRules("rule\nout x(1) : error\nexit 1\n");
  fs::create_directory(work.Folder() / "x.c");
  const Outcome outcome = work.Isolate("x.c");
  EXPECT_NE(outcome.err.find("ERROR: Cannot open input file x.c\n"
                             "ERROR: Something strange happened \n"
                             "ERROR: Cannot open input file x.c\n"
                             "ERROR: Something strange happened \n"),
            std::string::npos);
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
}

TEST(Files, NothingIsLostWhenNoCandidateCanBeWritten) {
  const Workspace work;
  work.SetRules("rule\nout {file}(1) : error\nexit 1\n");
  work.Write("x.c", "a;b;c;");
  // A directory in its place can be neither written nor replaced, but it could be renamed.
  fs::create_directory(work.Folder() / "x.fut.c");
  const Outcome outcome = work.Isolate("x.c");
  EXPECT_NE(outcome.err.find("ERROR: Cannot open output file x.fut.c\n"), std::string::npos);
  EXPECT_NE(outcome.err.find("ERROR: Cannot write candidate file x.fut.c\n"), std::string::npos);
  EXPECT_EQ(work.Read("x.c"), "a;b;c;");
  EXPECT_EQ(work.Read("x.tsf.c"), "a;b;c;");
}

}  // namespace
}  // namespace snipwell::testing
