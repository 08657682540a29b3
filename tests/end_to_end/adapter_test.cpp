// The adapter, with a compiler that does what a rules file says. Nothing of any run stays behind.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/end_to_end/project.h"
#include "tests/end_to_end/run_tool.h"

namespace snipwell::testing {
namespace {

/// The adapter's run of a compiler that has one rule.
Outcome Adapt(Project& project, const std::string& rule, std::vector<std::string> options) {
  project.SetRules("rule\n" + rule + '\n');
  options.insert(options.begin(), "--cc=fake_g++");
  options.emplace_back("pool.cpp");
  return project.Run("snip-cc", options);
}

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

// A compiler that is not ended at the line that decides runs into the limit.
TEST(Adapter, DecidesAsTheOptionsAsk) {
  const std::string error = "out x.c:1:2: error: no\n";
  const std::string dump = "out Stack dump:\nout 0x12ab56 fold(tree)\n";
  const std::string line = "snip-cc: internal error: ";
  const struct {
    std::string rule;
    const char* option;
    std::string firstLine;
    int status;
  } rows[] = {
      {error + dump + "exit 9", "--limit=60", line + "in fold", 9},
      {error + dump + "exit 9", "--valid", "x.c(1,2): error: no", 1},
      {error + dump + "abort", "--valid", "x.c(1,2): error: no", 1},
      {error + "hang", "--valid", "x.c(1,2): error: no", 1},
      {error + "exit 9", "--first-line", "x.c(1,2): error: no", 9},
      {error + dump + "wait 100\nexit 9", "--first-line", line + "in fold", 9},
      {error + "out LLVM ERROR: out\nhang", "--first-line", line + "out", 1},
      {dump + error + "exit 9", "--valid", line + "in fold", 9},
      {"raw LLVM ERROR: \nwait 100\nout out\nhang", "--first-line", line + "out", 1},
      {"out LLVM ERROR: out\nabort", "--first-line", line + "out", 1},
      {"err int a;\nexit 3", "--first-line", "int a;", 3},
      {error + "exit 9", "--plain-options", "x.c(1,2): error: no", 9},
      {"flood", "--limit=0.2", line + "not ended after 0.2 seconds", 124},
      {"litter\nexit 5", "--limit=60", "", 5},
  };
  Project project;
  for (const auto& row : rows) {
    const Outcome outcome = Adapt(project, row.rule, {"--limit=2", row.option});
    EXPECT_EQ(FirstLine(outcome.out), row.firstLine) << row.rule;
    EXPECT_EQ(outcome.status, row.status) << row.rule;
  }
  for (const char* option : {"/Zs", "/Od"}) {
    const Outcome outcome = Adapt(project, "exit 9", {"--plain-options", option});
    EXPECT_EQ(outcome.out, std::string("snip-cc: ") + option + " is not tried\n");
    EXPECT_EQ(outcome.status, 1);
  }
}

TEST(Adapter, SaysWhatItCannotDo) {
  Project project;
  const struct {
    const char* option;
    const char* complaint;
    int status;
  } rows[] = {
      {"--limit=x", "snip-cc: ", 2},
      {"--cc=./missing", "snip-cc: cannot start ./missing: No such file or directory\n", 127},
  };
  for (const auto& row : rows) {
    const Outcome outcome = project.Run("snip-cc", {row.option, "pool.cpp"});
    EXPECT_EQ(outcome.err.rfind(row.complaint, 0), 0U) << outcome.err;
    EXPECT_EQ(outcome.status, row.status) << outcome.err;
  }
}

// A candidate that hangs in another way than the source does not stop the run.
TEST(Adapter, IsolatesAHang) {
  Project project;
  AddProgram(project.Folder() / "test_bin", "snip-cc",
             TestProgramFolder().parent_path() / "snip-cc");
  project.Write("x.c", "a;hang;c;");
  project.SetRules("rule\nhas hang;\nlitter\nhang\n");
  const Outcome outcome = project.Run(
      "snip", {"/COMPILER=snip-cc", "/LOGFILE=log", "--cc=fake_g++", "--limit=0.5", "x.c"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(project.Read("x.tsf.c"), "hang;");
}

TEST(Adapter, EndsTheCompilerWhenInterrupted) {
  Project project;
  const std::string process = (project.Folder() / "test_pid").generic_string();
  const Outcome outcome = Adapt(project, "litter\nsignal 15 " + process + "\nhang", {});
  // By the signal, with Windows by what its own handler of Ctrl-Break ends a process with.
  EXPECT_EQ(outcome.status, kIsWindows ? static_cast<int>(0xC000013A) : -1);
  EXPECT_EQ(outcome.out, "");
}

}  // namespace
}  // namespace snipwell::testing
