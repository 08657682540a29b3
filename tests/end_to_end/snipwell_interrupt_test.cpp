// Runs that are stopped, by somebody or by the time, and runs that go on from there. The fake
// compiler itself sends the signal, at a run that lies in the stage wanted.

#include <gtest/gtest.h>

#include <fstream>

#include "tests/end_to_end/project.h"

namespace snipwell::testing {
namespace {

const char kSource[] =
    "int unused(int a) { return 1 + a; }\n"
    "int take(int pool) {\n"
    "  int count = pool;\n"
    "  return count + 7;\n"
    "}\n";
/// A rule for one run, which then does not end.
std::string At(int run, const std::string& action) {
  return "rule\nrun " + std::to_string(run) + "\n" + action + "litter\nhang\n";
}

std::string SignalTo(const Project& project, int number) {
  return "signal " + std::to_string(number) + ' ' +
         (project.Folder() / "test_pid").generic_string() + '\n';
}

/// The result is a whole program that still fails: another run goes on from it.
void ExpectToGoOn(Project& project, const std::string& stages) {
  EXPECT_EQ(Count(project.Read("pool.min.cpp"), "int take"), 1U);
  EXPECT_EQ(Count(project.Read("pool.report.md"), "## How to reproduce\n"), 1U) << stages;
  project.SetRules(CrashOn(kWanted, "f"));
  const Outcome outcome = project.Reduce({"--resume"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Count(outcome.err, "The run went on from an earlier result."), 1U) << outcome.err;
  EXPECT_EQ(project.Read("pool.min.cpp"), kSmallest) << stages;
  EXPECT_EQ(project.Added(), "pool.min.cpp pool.report.md");
}

TEST(SnipwellStopped, DeliversWhatThereIs) {
  const struct {
    const char* stages;
    int signal;
    int run;
    int secondRun;  // at which it is sent the signal again, or 0
  } rows[] = {
      {"preprocess", 2, 4, 0}, {"snip", 15, 4, 0},    {"snip", 2, 8, 0},      {"refine", 2, 4, 0},
      {"refine", 15, 9, 0},    {"options", 2, 4, 0},  {"layout", 1, 4, 0},    {"layout", 15, 5, 0},
      {"layout", 2, 6, 0},     {"refine", 2, 12, 13}, {"refine", 15, 12, 14},
  };
  for (const auto& row : rows) {
    if (kIsWindows && (&row - rows) % 2 != 0) continue;  // each takes seconds there
    Project project;
    project.Write("pool.cpp", kSource);
    const std::string signal = SignalTo(project, row.signal);
    project.SetRules(At(row.run, signal) + At(row.secondRun, signal) + CrashOn(kWanted, "f"));
    const std::string stages = std::string("--stages=") + row.stages;
    EXPECT_EQ(project.Reduce({stages}).status, 130) << stages << ' ' << row.run;
    // The check and the report compile too, and a try may just have begun. A second signal that
    // comes before the first one is seen counts as one with it.
    EXPECT_LE(Count(project.Runs(), "\n"), row.run + 4U)
        << "it goes on: " << stages << ' ' << row.run;
    ExpectToGoOn(project, stages + ' ' + std::to_string(row.run));
  }
}

TEST(SnipwellStopped, LeavesNothingBeforeThereIsAResult) {
  for (const int run : {1, 2, 3}) {
    Project project;
    project.SetRules(At(run, SignalTo(project, 2)) + CrashOn(kWanted, "f"));
    const Outcome outcome = project.Reduce();
    EXPECT_EQ(outcome.status, 130) << run;
    EXPECT_EQ(Count(outcome.err, "snipwell: stopped\n"), 1U) << outcome.err;
    EXPECT_EQ(project.Added(), "");
  }
}

TEST(SnipwellStopped, DeliversAtTheEndOfItsTime) {
  const struct {
    const char* stages;
    int run;
  } rows[] = {{"snip", 5}, {"refine", 5}, {"options,refine", 4}};
  for (const auto& row : rows) {
    Project project;
    project.Write("pool.cpp", kSource);
    project.SetRules(At(row.run, "") + CrashOn(kWanted, "f"));
    const std::string stages = std::string("--stages=") + row.stages;
    EXPECT_EQ(project.Reduce({"--timeout=1", stages}).status, 0) << stages;
    EXPECT_LE(Count(project.Runs(), "\n"), row.run + 4U) << "it goes on: " << stages;
    ExpectToGoOn(project, stages);
  }
}

TEST(SnipwellStopped, GoesOnFromWhatStillFails) {
  const struct {
    const char* earlier;
    const char* remark;
    const char* result;
  } rows[] = {
      {"int take(int b) { return 7; }", "The run went on from an earlier result.",
       "int take(int b) { return 7; }\n"},
      {"int other() {}\n", "The earlier result does not fail any more: the reduction begins anew.",
       "int take(int a) { return 7; }\n"},
  };
  for (const auto& row : rows) {
    Project project;
    project.Write("pool.cpp", "int take(int a) { return 7; }");
    EXPECT_EQ(project.Reduce({"--stages=layout"}).status, 0);
    std::ofstream(project.Folder() / "pool.min.cpp") << row.earlier;
    const Outcome outcome = project.Reduce({"--resume", "--stages=layout"});
    EXPECT_EQ(Count(outcome.err, row.remark), 1U) << outcome.err;
    EXPECT_EQ(project.Read("pool.min.cpp"), row.result);
  }
}

}  // namespace
}  // namespace snipwell::testing
