// Time accounting and the time limit, with a clock that the fake compiler moves.

#include <gtest/gtest.h>

#include <string>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

const Start kTestClock = {"snip_with_test_clock", "", ""};

/// The lines that tell times and the end.
std::string ClockLines(const std::string& text) {
  std::string lines;
  for (const std::string& line :
       Matches(text, "((Total |Timeout limit|TOTAL TIME|FileOrg|Timed out|Error found).*\n)")) {
    lines += line;
  }
  return lines;
}

// Runs 1 and 2 confirm the failure, 3 to 5 are the preliminary checks; tries come after.
constexpr char kFailing[] = "rule\nhas b\nout {file}(1) : error\nexit 1\n";

TEST(Clock, ReportsEachQuarterHourOnce) {
  const Workspace work;
  // The first try ends at 31 minutes, the second at 45 minutes to the second, the third just after,
  // the last one at 1:02:05.
  work.SetRules(
      "rule\nrun 6\nclock 1860\nrule\nrun 7\nclock 840\nout {file}(1) : error\nexit 1\n"
      "rule\nrun 8\nclock 1\nrule\nrun 9\nclock 1024\nout {file}(1) : error\nexit 1\n" +
      std::string(kFailing));
  work.Write("x.c", "a;b;c;");
  const Outcome outcome = work.Isolate("x.c", {}, kTestClock);
  EXPECT_EQ(ClockLines(outcome.err),
            "Total time so far is 0:31:0\n"
            "Total time so far is 0:45:1\n"
            "Total time so far is 1:2:5\n"
            "TOTAL TIME FOR EVERYTHING:\t3725\n"
            "FileOrg Compiler Time in seconds: 3725\n"
            "Error found and isolated\n");
}

TEST(Clock, CountsPreliminaryTimeApart) {
  const Workspace work;
  work.SetRules(
      "rule\nrun 1\nclock 1\nout {file} : error\nexit 1\n"
      "rule\nrun 2\nclock 2\nout {file} : error\nexit 1\n"
      "rule\nrun 3\nclock 4\nrule\nrun 4\nclock 8\nrule\nrun 5\nclock 16\n"
      "rule\nrun 6\nclock 32\nrule\nrun 7\nclock 64\nrule\nclock 0\n");
  work.Write("x.c", "a;b;");
  const Outcome outcome = work.Isolate("x.c", {"/VERBOSE"}, kTestClock);
  EXPECT_EQ(ClockLines(outcome.err),
            "Total pretime in seconds: 28\n"
            "Total compile time so far: 32 seconds\n"
            "Total compile time so far: 96 seconds\n"
            "Total compile time so far: 96 seconds\n"
            "TOTAL TIME FOR EVERYTHING:\t127\n"
            "FileOrg Compiler Time in seconds: 96\n"
            "Error found and isolated\n");
}

// The limit is passed in a try that would have kept the error: it is neither accepted nor rejected.
TEST(Timeout, StopsTheSearchAndKeepsTheBestProgram) {
  const Workspace work;
  work.SetRules(
      "rule\nrun 7\nclock 60\nout {file}(1) : error\nexit 1\n"
      "rule\nrun 8\nclock 1\nout {file}(1) : error\nexit 1\n" +
      std::string(kFailing));
  work.Write("x.c", "a;c;b;d;e;");
  const Outcome outcome = work.Isolate("x.c", {"/TIMEOUT=1", "/VERBOSE"}, kTestClock);
  EXPECT_EQ(work.Runs().size(), 8U);
  // Directly after the compilation, without a look at its output.
  const std::string asterisks = '\n' + std::string(84, '*') + '\n';
  EXPECT_NE(outcome.err.find("far: 61 seconds" + asterisks + "Timeout limit"), std::string::npos);
  EXPECT_NE(outcome.err.find("as possible" + asterisks), std::string::npos);
  EXPECT_EQ(ClockLines(outcome.err),
            "Total pretime in seconds: 0\n"
            "Total compile time so far: 0 seconds\n"
            "Total compile time so far: 60 seconds\n"
            "Total compile time so far: 61 seconds\n"
            "Timeout limit of 1 minutes exceeded, exitting as quickly as possible\n"
            "TOTAL TIME FOR EVERYTHING:\t61\n"
            "FileOrg Compiler Time in seconds: 61\n"
            "Timed out, Error isolation not complete\n");
  EXPECT_EQ(work.Read("x.tsf.c"), "a;c;b;d;");
  EXPECT_EQ(work.Read("x.fut.c"), "a;c;b;");
  EXPECT_EQ(work.Read("log"), "File \"x.fut.c\" completed at 01:47:41 on Mon, 09/10/2001\n");
}

// To the second, however many digits the limit has, and whatever stands behind them.
TEST(Timeout, StopsTheSearchBehindItsLastMinute) {
  const struct {
    const char* option;
    const char* told;
    long seconds;
  } rows[] = {
      {"/TIMEOUT=12", "12", 720},
      {"-TIMEOUT=00090min", "90", 5'400},
      {"/TIMEOUT=1440.5", "1440", 86'400},
      {"/TIMEOUT=1234567", "1.23457e+06", 74'074'020},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.option);
    const Workspace work;
    work.SetRules("rule\nrun 6\nclock " + std::to_string(row.seconds) + "\nrule\nrun 7\nclock 1\n" +
                  kFailing);
    work.Write("x.c", "a;b;c;");
    const Outcome outcome = work.Isolate("x.c", {row.option}, kTestClock);
    EXPECT_EQ(work.Runs().size(), 7U);
    EXPECT_NE(outcome.err.find("Timeout limit of " + std::string(row.told) + " minutes exceeded"),
              std::string::npos);
  }
}

// Two bodies deep: what is kept of the levels outside has to be released on the way out.
TEST(Timeout, StopsTheSearchWithinABody) {
  const Workspace work;
  work.SetRules("rule\nrun 12\nclock 61\n" + std::string(kFailing));
  work.Write("x.c", "f() { a; { b; c; } } d;");
  const Outcome outcome = work.Isolate("x.c", {"/TIMEOUT=1"}, kTestClock);
  EXPECT_NE(outcome.err.find("\nTimed out, Error isolation not complete\n"), std::string::npos);
  EXPECT_EQ(work.Texts(12), std::vector<std::string>{"f() { a; { b; } }"});
  EXPECT_EQ(work.Read("x.tsf.c"), "f() { a; { b; c; } }");
}

TEST(Timeout, OfZeroOrBeyondAnyNumberNeverStops) {
  for (const char* option : {"/TIMEOUT=0", "/TIMEOUT=18446744073709551617"}) {
    SCOPED_TRACE(option);
    const Workspace work;
    work.SetRules("rule\nrun 6\nclock 1000000\n" + std::string(kFailing));
    work.Write("x.c", "a;b;");
    const Outcome outcome = work.Isolate("x.c", {option}, kTestClock);
    EXPECT_NE(outcome.err.find("\nError found and isolated\n"), std::string::npos);
    EXPECT_EQ(work.Read("x.tsf.c"), "b;");
  }
}

}  // namespace
}  // namespace snipwell::testing
