// Odd surroundings: a compiler that crashes or deletes files, links, files that are none.

#include <gtest/gtest.h>

#include <string>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

namespace fs = std::filesystem;

const char kStatusLines[] =
    "------------- ******* --------------------\nCompiler failed for this file.\n";

TEST(Compiler, ThatCrashesHasFailed) {
  const Workspace work;
  work.SetRules("rule\nhas b\nout internal error: dying\nabort\n");
  work.Write("x.c", "a;b;c;");
  work.Isolate("x.c");
  EXPECT_EQ(work.Read("x.tsf.c"), "b;");
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), std::string("internal error: dying\n") + kStatusLines);
}

TEST(Files, ThatAreLinksAreReplacedNotWrittenThrough) {
  const Workspace work;
  work.FailWhileItHas({"b"});
  const std::string source = "a; /* cleaned away */b;c;";
  work.Write("x.c", source);
  work.Write("other", "other");
  fs::create_hard_link(work.Folder() / "other", work.Folder() / "x.tsf.c");
  fs::create_hard_link(work.Folder() / "x.c", work.Folder() / "x.fut.c");
  fs::create_hard_link(work.Folder() / "x.c", work.Folder() / "x.c.ZEDRerrfile");
  work.Isolate("x.c");
  EXPECT_EQ(work.Read("x.c"), source);
  EXPECT_EQ(work.Read("other"), "other");
  EXPECT_EQ(work.Read("x.tsf.c"), " b;");
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
