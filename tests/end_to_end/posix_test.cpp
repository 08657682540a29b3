// What is particular to systems like Linux: look-up of the compiler, what it is started with,
// carriage returns that are bytes like others. Signals, links and closed descriptors are among the
// faults that tests/faults tries.

#include <gtest/gtest.h>

#include <string>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

namespace fs = std::filesystem;

void WriteProgram(const Workspace& work, const std::string& name, const std::string& text) {
  work.Write(name, text);
  fs::permissions(work.Folder() / name, fs::perms::owner_all, fs::perm_options::add);
}

// The same on every system, but where starting a compiler takes long, so does this.
TEST(Reduction, DescendsNoDeeperThanLevel200) {
  constexpr int kDepth = 203;
  std::string source;
  for (int i = 0; i < kDepth; ++i) source += "namespace n{ y; ";
  source += "x;" + std::string(kDepth, '}') + "z;";
  const Workspace work;
  work.FailWhileItHas({"x;"});
  work.Write("x.cpp", source);
  const Outcome outcome = work.Isolate("x.cpp", {"/VERBOSE"});
  std::string isolated;
  // Levels 1 to 200 lose their y; what lies in the namespace that level 200 needs stays.
  for (int i = 0; i < 200; ++i) isolated += "namespace n{  ";
  isolated += "namespace n{ y; namespace n{ y; namespace n{ y; x;" + std::string(kDepth, '}');
  EXPECT_EQ(work.Read("x.tsf.cpp"), isolated);
  const std::vector<std::string> levels = Matches(outcome.err, "## New level: ([0-9]+) ");
  ASSERT_EQ(levels.size(), 200U);
  EXPECT_EQ(levels.back(), "200");
}

TEST(Compiler, IsLookedUpByNameThenInPath) {
  const struct {
    const char* option;
    const char* output;
  } rows[] = {
      {"here", "from here snip\n"},
      {"bin/there", "from bin snip\n"},
      {"there", "from bin snip\n"},
      {"plain", "plain -c x.c\n"},  // without an interpreter line
      {"both", "from bin snip\n"},  // a directory is none, the search goes on
      {"bin", "Spawn compiler failed.\n"},
      {"./x.c", "Spawn compiler failed.\n"},
      {"./there", "Spawn compiler failed.\n"},  // a path is not searched
      {"", "Spawn compiler failed.\n"},
  };
  const Workspace work;
  fs::create_directory(work.Folder() / "bin");
  fs::create_directory(work.Folder() / "both");
  // The argument list begins with the tool's own name, so the shell sees that as its script name.
  WriteProgram(work, "here", "#!/bin/sh\necho from here snip\n");
  WriteProgram(work, "plain", "echo plain \"$@\"\n");
  WriteProgram(work, "bin/there", "#!/bin/sh\necho from bin snip\n");
  WriteProgram(work, "bin/both", "#!/bin/sh\necho from bin snip\n");
  work.Write("x.c", "a;");
  for (const auto& row : rows) {
    work.Snip({std::string("/COMPILER=") + row.option, "/LOGFILE=l", "x.c"},
              {"env PATH=/nowhere::bin:/usr/bin:/bin '" SNIP_FOLDER "/snip'", "", ""});
    EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), row.output) << row.option;
  }
}

// The child has none of the tool's descriptors but its standard streams, and the default handling
// of Ctrl-C.
TEST(Compiler, StartsCleanly) {
  const Workspace work;
  WriteProgram(work, "cc",
               "#!/bin/sh\n"
               "ls -l /proc/self/fd | grep -c 'ZEDRerrfile'\n"
               "ls -l /proc/self/fd | grep -c 'test_out\\|test_err'\n"
               "grep -o 'SigIgn.*' /proc/self/status | grep -o '.$'\n");
  work.Write("x.c", "a;");
  work.Snip({"/COMPILER=./cc", "/LOGFILE=l", "x.c"}, {"snip", "", "trap '' INT;"});
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), "1\n0\n0\n");
}

TEST(Text, KeepsCarriageReturnsOfTheSource) {
  const Workspace work;
  work.FailWhileItHas({"b"});
  work.Write("x.c", "a;\r\nb = \"\r\n\";\r\nc;");
  work.SetRules("rule\nrun 3\nrule\nhas b\nout {file}(1) : error\nexit 1\n");
  work.Isolate("x.c");
  EXPECT_EQ(work.ReadBytes("x.tsf.c"), "\r\nb = \"\r\n\";");
}

// Standard error flushes standard output first, so on one terminal the lines keep their order.
TEST(Run, KeepsTheOrderOfBothStreams) {
  const Workspace work;
  work.Write("args", "/LOGFILE=log");
  work.Write("x.c", "a;");
  work.Snip({"@args", "/COMPILER=fake_compiler", "/VERBOSE", "x.c"},
            {"snip", ">test_all 2>&1", ""});
  const std::string all = work.Read("test_all");
  std::size_t last = 0;
  for (const char* part :
       {"***SNIPWELL", "INITIAL", "found file", "TC: -1", "ARGNUM 2", "ERRORF"}) {
    EXPECT_LE(last, all.find(part)) << part;
    last = all.find(part);
  }
  EXPECT_NE(last, std::string::npos);
  EXPECT_EQ(all.back(), '0');
}

}  // namespace
}  // namespace snipwell::testing
