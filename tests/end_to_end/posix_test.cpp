// What is particular to systems like Linux: look-up of the compiler, what it is started with,
// carriage returns that are bytes like others. Signals, links and closed descriptors are among the
// faults that tests/faults tries.

#include <gtest/gtest.h>

#include <string>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

namespace fs = std::filesystem;

void MakeExecutable(const fs::path& path) {
  fs::permissions(path, fs::perms::owner_all, fs::perm_options::add);
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
  for (const char* part : {"***SNIPWELL", "INITIAL ARGUMENTS:", "found file_of_args as argument 1",
                           "temp after: /LOGFILE=log", "Reading args from args", "TC: -1",
                           "Compiler Path is:", "ARGNUM 2: x.c", "ERRORFILE NAME: "}) {
    const std::size_t place = all.find(part);
    ASSERT_NE(place, std::string::npos) << part;
    EXPECT_GE(place, last) << part;
    last = place;
  }
  EXPECT_EQ(all.back(), '0');
}

}  // namespace
}  // namespace snipwell::testing
