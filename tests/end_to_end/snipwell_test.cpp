// From the command to the report: what is written, and how the program ends.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>

#include "refine/search.h"
#include "tests/end_to_end/fake_rules.h"
#include "tests/end_to_end/project.h"

namespace snipwell::testing {
namespace {

std::string ErrorOn(const std::string& words, const std::string& error,
                    const std::string& more = "") {
  return "rule\nnoarg -E\nwords " + words + "\n" + more + "err {file}:7:3: error: " + error +
         "\nexit 1\n";
}

/// The parts stand in a text, in this order.
void ExpectInOrder(const std::string& text, const std::vector<std::string>& parts) {
  std::size_t last = 0;
  for (const std::string& part : parts) {
    const std::size_t place = text.find(part, last);
    EXPECT_NE(place, std::string::npos) << part << "\nis not where it should be in\n" << text;
    if (place != std::string::npos) last = place + part.size();
  }
}

TEST(Snipwell, GoesFromTheCommandToTheReport) {
  Project project;
  project.SetRules(CrashOn(kWanted, "take_pool", "arg -O2\nlitter\n") +
                   CrashOn("int take ( ) {", "other"));
  const Outcome outcome = project.Snipwell({"-j1", "--json=made.json", "--html", "made.html",
                                            "fake_g++", "-Wall", "-O2", "-Da=b", "-c", "pool.cpp"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(project.Added(), "made.html made.json pool.min.cpp pool.other-1.cpp pool.report.md");
  EXPECT_EQ(project.Read("pool.min.cpp"), kSmallest);
  EXPECT_EQ(project.Read("pool.other-1.cpp"), "int take(){\n}");
  ExpectInOrder(
      project.Read("pool.report.md"),
      {"<!-- snipwell report -->\n# internal compiler error: in take_pool, at pool.cc:70\n",
       "crashes.\n", "gcc version 99.1 (Fake)\n", "fake_g++ -O2 -c pool.min.cpp\n", kSmallest,
       "pool.min.cpp:7:3: internal", "## Where it comes from",
       "fake_g++ -Wall -O2 -Da=b -c pool.cpp\n", "- `pool.cpp:5-8`\n\n",
       "| source | 128 | 37 |\n| preprocessed |", "| laid out | 25 | 9 |\n", " compilations in ",
       "- in other, at pool.cc:70, kept in `pool.other-1.cpp`"});
  EXPECT_EQ(Count(outcome.err, "25 bytes, 9 tokens, "), 1U) << outcome.err;
  const std::string page = project.Read("made.html");
  ExpectInOrder(page, {"<!DOCTYPE html>", "take_pool", "</html>"});
  EXPECT_EQ(Count(page, "<script") + Count(page, "<link"), 0U);
  const auto json = nlohmann::json::parse(project.Read("made.json"));
  EXPECT_EQ(json["source"], kSmallest);
  EXPECT_EQ(json["reducedCommand"], nlohmann::json({"fake_g++", "-O2", "-c", "pool.min.cpp"}));
  EXPECT_EQ(json["stages"].back()["tokens"], 9);
}

TEST(Snipwell, EndsWithAStatusThatTellsWhy) {
  const std::string fails = CrashOn(kWanted, "f");
  using Words = std::vector<std::string>;
  const Words command = {"fake_g++", "-c", "pool.cpp"};
  const auto with = [&](const std::string& option) {
    Words words = command;
    words.insert(words.begin(), option);
    return words;
  };
  const struct {
    Words arguments;
    std::string rules;
    int status;
    const char* message;
  } rows[] = {
      {command, "", 1, "does not fail: snipwell stands before one that does"},
      {with("--match=none"), fails, 1, "no line of the compiler's output holds 'none': --list"},
      {{"--test=false", "pool.cpp"}, fails, 1, "the test does not hold: it has to end with"},
      {{}, fails, 2, "Put it before the command that fails"},
      {{"fake_g++", "-c"}, fails, 2, "source"},
      {{"fake_g++", "-c", "pool.cpp", "b.cpp"}, fails, 2, "compiles 2 sources (pool.cpp, b.cpp)"},
      {{"fake_g++", "pool.o", "-o", "pool"}, fails, 2, "add -c and name the one that fails"},
      {{"fake_g++", "-c", "pool.cpp", "--html=x"},
       fails,
       2,
       "compiler: snipwell --html=x fake_g++"},
      {with("--html=pool.cpp"), fails, 2,
       "pool.cpp is the source, or two things are to be written"},
      {with("--trace=pool.min.cpp"), fails, 2, "two things are to be written to it: give it"},
      {with("--json=pool.h"), fails, 4, "pool.h exists and is of no earlier run: give another"},
      {with("--html=nowhere/x"), fails, 4, "cannot write nowhere/x: is there room"},
      {with("--match="), fails, 2, "--match= lacks its value"},
      {with("--limit=nan"), fails, 2, "nan is no number of seconds (above 0"},
      {with("--accepted-by=nowhere"), fails, 4, "cannot start nowhere of --accepted-by="},
      {with("--nonsense"), fails, 2, "no option --nonsense; snipwell --help tells"},
      {{"--test=x", "--wrong-code=y", "pool.cpp"}, fails, 2, "choose one"},
      {{"--test=x", "pool.cpp", "b.cpp"}, fails, 2, "one source and no more"},
      {with("-opool.cpp"), fails, 2, "would replace the source: give it another name with -o"},
      {{"-p", "nowhere", "pool.cpp"}, fails, 2, "cannot be read: let the build write it"},
      {{"none.sh"}, fails, 2, "holds no command: name the script"},
      {{"none.out"}, fails, 2, "-freport-bug"},
      {command, CrashOn("", "f"), 3, "an empty file fails in the same way"},
      {command, CrashOn("", "f", "run 1\n") + CrashOn("", "g"), 3, "--match=TEXT can name a line"},
      {command, "rule\nerr virtual memory exhausted: no\nexit 1\n", 3, "try fewer --jobs"},
      {with("--accepted-by=fake_g++"), ErrorOn("take", "no"), 3, "does not accept the source"},
      {{"none++", "-c", "pool.cpp"}, fails, 4, "cannot start none++: is it installed"},
      {{"fake_g++", "-c", "none.cpp"}, fails, 4, "cannot read none.cpp"},
      {with("-opool.h"), fails, 4, "is no result of an earlier run: give another name with -o"},
      {with("--launch=nowhere"), fails, 4, "the launcher has to start the command"},
      {with("-onowhere/pool.cpp"), fails, 4, "pool.report.md: is there room"},
  };
  for (const auto& row : rows) {
    Project project;
    project.SetRules(row.rules);
    const Outcome outcome = project.Snipwell(row.arguments);
    EXPECT_EQ(outcome.status, row.status) << row.message << '\n' << outcome.err;
    EXPECT_EQ(Count(outcome.err, row.message), 1U) << row.message << '\n' << outcome.err;
    EXPECT_EQ(project.Added(), "") << row.message;
  }
}

/// The size columns of a trace.
std::string Steps(const std::string& trace) {
  std::istringstream lines(trace);
  std::string steps;
  std::string seconds;
  std::string bytes;
  std::string tokens;
  std::string rest;
  while (lines >> seconds >> bytes >> tokens && std::getline(lines, rest)) {
    steps += bytes + ' ' + tokens + '\n';
  }
  return steps;
}

std::string ManyFunctions() {
  std::string text;
  for (int i = 0; i < 7; ++i) {
    const std::string number = std::to_string(i);
    text +=
        "int f" + number + "(int a, int b) { if (a < b) return a * " + number + "; return b; }\n";
  }
  return text;
}

/// Answers at once, by the words of a rule alone.
class WordsJudge : public Judge {
 public:
  explicit WordsJudge(std::string wanted) : words(std::move(wanted)) {}

  std::size_t Places() const override { return 1; }
  void Ask(std::size_t place, const std::string& program) override {
    answer = {place, HasInOrder(program, words)};
  }
  void Drop(std::size_t /*place*/) override {}
  std::optional<Answer> Await() override { return answer; }

 private:
  std::string words;
  Answer answer{};
};

/// The size columns of the trace that a search leaves which asks no process.
std::string StepsOfSearch(const std::string& source, const std::string& words) {
  std::string steps;
  const auto take = [&](const Program& /*before*/, const std::string& text) {
    steps += std::to_string(text.size()) + ' ' + std::to_string(Program(text).Size()) + '\n';
  };
  const Program start(source, Blanks::Needed);
  take(start, source);
  take(start, start.Render());
  WordsJudge judge(words);
  Search(judge, start, take).Run(Passes());
  return steps;
}

// On any system too. Programs that fail are made to be answered after those that do not.
TEST(Snipwell, TakesTheSameStepsWithAnyNumberOfJobs) {
  const std::string words = "int f3 a < b 3 ; int f6 ( int ) { return b ; }";
  const std::string steps = StepsOfSearch(ManyFunctions(), words);
  std::string result;
  for (const char* jobs : {"-j1", "-j2", "-j7"}) {
    if (kIsWindows && jobs != std::string("-j2")) continue;  // one takes long there
    Project project;
    project.Write("pool.cpp", ManyFunctions());
    project.SetRules(CrashOn(words, "f", "wait 5\n"));
    const Outcome outcome = project.Snipwell(
        {jobs, "--stages=refine", "--trace=test_trace", "fake_g++", "-c", "pool.cpp"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    if (result.empty()) result = project.Read("pool.min.cpp");
    EXPECT_EQ(project.Read("pool.min.cpp"), result) << jobs;
    EXPECT_EQ(Steps(project.Read("test_trace")), steps) << jobs;
  }
  EXPECT_GT(Count(steps, "\n"), 8U) << steps;
  EXPECT_LT(result.size(), 80U) << result;
}

TEST(Snipwell, HoldsOnToTheFailureThatIsAskedFor) {
  const std::string warning = "rule\nnoarg -E\nwords take 7\nerr {file}:7:3: warning: odd\n";
  const std::string afterError =
      CrashOn("int take ( ) 7", "f") + CrashOn("take", "f", "err {file}:1:1: error: what?\n");
  const std::string flaky = CrashOn("take count", "f") + CrashOn("take", "f", "even\n");
  const std::string warned =
      ErrorOn("", "lost [-Werror=return-type]", "arg g++-9\narg -Werror=return-type\n");
  // The first that accepts the source does not know what the preprocessor has made of it.
  const std::string lost =
      "rule\nnoarg -E\narg g++-10\nuntil 6\n" + ErrorOn("", "lost", "arg g++-10\n");
  const std::string needsOther = ErrorOn("", "bad", "arg g++-9\nlacks other\n") +
                                 "rule\nnoarg -E\narg g++-9\n" + ErrorOn("take 7", "no");
  const auto accepted = [](const std::string& other) {
    return "rule\nnoarg -E\narg " + other + "\nwords " + kWanted + '\n' +
           ErrorOn("", "bad", "arg " + other + "\n") + ErrorOn("take 7", "no");
  };
  const struct {
    std::vector<std::string> options;
    std::vector<std::string> otherCompilers;  // in PATH
    std::string rules;
    const char* result;
    const char* reported;
  } rows[] = {
      {{"--match=odd"}, {}, warning, "take 7\n", "# odd\n"},
      {{"--match", "at pool.cc"}, {}, CrashOn("take", "f"), "take\n", "writes a certain line.\n"},
      {{}, {}, afterError, "int take() 7\n", "# internal compiler error: in f, at pool.cc:70"},
      {{"--allow-errors"}, {}, afterError, "take\n", "error: what?\n"},
      {{"--repeat=2", "--stages=refine"},
       {},
       flaky,
       "take count",
       "\nfake_g++ -O2 -c pool.min.cpp\n"},
      {{}, {}, accepted("other++"), "take 7\n", "No other compiler of this machine was found"},
      {{"--accepted-by=other++ -c"},
       {"other++"},
       accepted("other++"),
       kSmallest,
       "accepted by `other++`"},
      {{}, {"g++-9"}, accepted("g++-9"), kSmallest, "accepted by `g++-9`"},
      {{}, {"g++-9"}, warned + accepted("g++-9"), kSmallest, "accepted by `g++-9`"},
      {{"--stages=snip"},
       {"g++-9"},
       needsOther,
       "\nint take(Pool& pool) {\n\nreturn count + 7;\n}\nint other;",
       "accepted by `g++-9`"},
      {{"--stages=snip", "--match=odd"},
       {},
       warning,
       "\nint take(Pool& pool) {\n\nreturn count + 7;\n}",
       "# odd\n"},
      {{}, {"g++-10", "g++-9"}, lost + accepted("g++-9"), kSmallest, "accepted by `g++-9`"},
  };
  for (const auto& row : rows) {
    // Each takes seconds there, and a script, by which snip asks another compiler, is no program.
    if (kIsWindows && &row - rows > 4) break;
    Project project;
    for (const std::string& name : row.otherCompilers) project.AddCompiler(name);
    project.SetRules(row.rules);
    std::vector<std::string> options = row.options;
    options.emplace_back("--json=test_json");
    const Outcome outcome = project.Reduce(options);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(project.Read("pool.min.cpp"), row.result) << row.rules;
    const auto json = nlohmann::json::parse(project.Read("test_json"));
    EXPECT_GE(json["compilations"], Count(project.Runs(), "\n")) << row.rules;
    EXPECT_EQ(Count(project.Read("pool.report.md"), row.reported), 1U)
        << row.reported << project.Read("pool.report.md");
  }
}

TEST(Snipwell, SaysThatTheFailureDoesNotComeAgain) {
  Project project;
  project.SetRules(CrashOn("take", "f", "until 9\n"));
  const Outcome outcome = project.Reduce({"--stages=refine"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(Count(outcome.err, "The result fails only sometimes"), 1U) << outcome.err;
}

TEST(Snipwell, KeepsACompilerThatWritesWithoutEnd) {
  Project project;
  project.Write("pool.cpp", "int take(){}");
  project.SetRules("rule\nnoarg -E\nwords take\nlitter\nflood\n");
  const Outcome outcome = project.Reduce({"--limit=1", "--stages=layout"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(project.Read("pool.min.cpp"), "int take() {}\n");
  EXPECT_EQ(Count(project.Read("pool.report.md"), "The compiler does not end.\n"), 1U);
  EXPECT_LT(project.Read("pool.report.md").size(), 10000U);
}

TEST(Snipwell, ListsTheLinesToChooseFrom) {
  Project project;
  project.SetRules(
      "rule\nerr a.h:1:2: error: one\\na.h:1:2: note: two\nerr c.h:3:4: fatal error: 3\nexit 1\n");
  const Outcome outcome = project.Reduce({"--list"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "a.h:1:2: error: one\nc.h:3:4: fatal error: 3\n");
  EXPECT_EQ(project.Added(), "");
}

TEST(Snipwell, KeepsTheOptionsThatTheFailureNeeds) {
  const struct {
    const char* needed;
    std::vector<std::string> given;
    const char* left;
  } table[] = {
      {"arg -O2\narg -fsmall\narg -std=c++20\n",
       {"-g", "-O2", "-Wall", "-Wextra", "-std=c++20", "-fsmall", "-pipe"},
       "-O2 -std=c++20 -fsmall -c"},
      {"arg -O2\narg -fsmall\n", {"-O2", "-fsmall"}, "-O2 -fsmall -c"},
      {"arg -O2\narg -x\n", {"-g", "-O2", "-Wall", "-x", "c++"}, "-O2 -c -x c++-cpp-output"},
      {"arg -x\n", {"-g", "-O2", "-x", "c++"}, "-c -x c++-cpp-output"},
  };
  for (const auto& [needed, given, left] : table) {
    Project project;
    project.SetRules(CrashOn(kWanted, "f", needed));
    std::vector<std::string> command = {"-j1", "fake_g++"};
    command.insert(command.end(), given.begin(), given.end());
    command.insert(command.end(), {"-c", "pool.cpp", "-o", "x.o", "-MD"});
    project.Snipwell(command);
    const std::string report = project.Read("pool.report.md");
    const std::string line = std::string("\nfake_g++ ") + left + " pool.min.cpp\n";
    EXPECT_EQ(Count(report, line), 1U) << report;
  }
}

TEST(Snipwell, CompilesTenTimesAtMostBesideRefining) {
  const std::string wrongError = "rule\nnoarg -E\narg g++-9\n" + ErrorOn("take", "bad");
  for (const std::string& rules : {CrashOn(kWanted, "f"), wrongError}) {
    Project project;
    project.AddCompiler("g++-9");
    project.SetRules(rules);
    const Outcome outcome = project.Reduce({"--stages=preprocess,options,layout"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const std::string runs = project.Runs();
    EXPECT_LE(Count(runs, "\n") - Count(runs, " -E ") - Count(runs, " -v\n"), 10U) << runs;
  }
}

// The folders of the tries are made elsewhere, and every try goes by way of the launcher.
TEST(Snipwell, RunsTriesWhereAndAsItIsTold) {
  Project project;
  project.WriteScript("test_launch", "#!/bin/sh\necho \"$1\" >>\"$TEST_LOG\"\nexec \"$@\"\n",
                      "@echo %~1>>\"%TEST_LOG%\"\r\n@%*\r\n");
  const std::string launch = kIsWindows ? ".\\test_launch" : "./test_launch";
  std::filesystem::create_directory(project.Folder() / "test_work");
  const std::string log = (project.Folder() / "test_log").string();
  const Outcome outcome = project.Reduce(
      {"--work=test_work", "-q", "--stages", "refine", "--launch", launch + ' ' + launch},
      {"TEST_LOG=" + log});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(project.Read("pool.min.cpp"), "int take(){\nreturn 7;\n}");
  const std::string tries = "-o " + (project.Folder() / "test_work").string();
  EXPECT_GT(Count(project.Runs(), tries), 9U);
  // A try that is not wanted any more may end between the two.
  EXPECT_GE(Count(project.Read("test_log"), "fake_g++"), Count(project.Runs(), tries));
  EXPECT_TRUE(std::filesystem::is_empty(project.Folder() / "test_work"));
}

}  // namespace
}  // namespace snipwell::testing
