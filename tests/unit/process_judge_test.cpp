// Programs that commands are run on: what is answered, in which order, and what is left behind.

#include "judge/process_judge.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "compile/test_command.h"
#include "judge/compiler_checks.h"
#include "judge/test_check.h"
#include "temp_folder.h"

namespace snipwell {
namespace {

namespace fs = std::filesystem;

/// A script as the compiler; "$1" is the program's file, "$2" the output's.
CompilerRun Compiler(const std::string& script) {
  CompilerRun run;
  run.words = [script](const std::string& program, const std::string& output) {
    return std::vector<std::string>{"sh", "-c", script, "sh", program, output};
  };
  return run;
}

class ProcessJudgeTest : public ::testing::Test {
 protected:
  void Add(std::unique_ptr<Check> check) { checks.push_back(std::move(check)); }

  ProcessJudge& Start(std::size_t places) {
    settings.places = places;
    settings.folder = folder.Path() / "places";
    settings.programName = "my.x.c";
    judge = std::make_unique<ProcessJudge>(children, std::move(checks), settings);
    checks.clear();
    return *judge;
  }

  TempFolder folder;
  platform::ChildSet children;
  std::vector<std::unique_ptr<Check>> checks;
  ProcessJudge::Settings settings;
  std::unique_ptr<ProcessJudge> judge;
};

const Failure kCrash = {FailureKind::Crash, "out", false};
const Failure kHang = {FailureKind::Hang, "not ended", false};
const Failure kError = {FailureKind::Error, "error: no", false};

// Of a program that crashes the compiler in another way the callback is told while its file is
// there. A compiler that has said what decides is not waited for.
TEST_F(ProcessJudgeTest, TellsOneFailureFromAnother) {
  const std::string error = "echo 'x.c:1:2: error: no'; ";
  const struct {
    Failure wanted;
    std::string script;
    std::string other;  // headline of the other crash
    bool errorsAllowed;
    bool interesting;
  } rows[] = {
      {kCrash, "echo LLVM ERROR: out >&2; sleep 60", "", false, true},
      {kCrash, "echo LLVM ERROR: out; kill -6 $$", "", false, true},
      {kCrash, error + "echo LLVM ERROR: out", "", false, false},
      {kCrash, error + "echo LLVM ERROR: out", "", true, true},
      {kCrash, "echo LLVM ERROR: in; sleep 60", "in", false, false},
      {kCrash,
       "echo Stack dump:; echo '0x12ab56 fold(t)'; echo Please submit a full bug report; sleep 60",
       "in fold", false, false},
      {kCrash, "kill -11 $$", "ended by signal 11", false, false},
      {kCrash, error + "kill -11 $$", "", false, false},
      {kCrash, error + "kill -11 $$", "ended by signal 11", true, false},
      {kCrash, "kill -9 $$", "", false, false},
      {kCrash, "echo cc1: out of memory allocating 8 bytes; exit 1", "", false, false},
      {kCrash, "exec sleep 60", "", false, false},
      {kCrash, "exit 1", "", false, false},
      {kHang, "exec sleep 60", "", false, true},
      {kHang, "echo LLVM ERROR: in; sleep 60", "in", false, false},
      {kHang, "exit 0", "", false, false},
      {kError, error + "sleep 60", "", false, true},
      {kError, error + "echo LLVM ERROR: out", "", false, true},
      {kError, "echo 'x.c:1:2: error: other'; exit 1", "", false, false},
      {kError, "exit 0", "", false, false},
  };
  for (const auto& row : rows) {
    std::string other;
    const auto onOtherCrash = [&](const Failure& failure, const Place& place) {
      other = failure.headline;
      EXPECT_EQ(fs::file_size(place.program), 2U);
    };
    CompilerRun run = Compiler(row.script);
    run.limitSeconds = row.script == "exec sleep 60" ? 0.2 : 60;
    Add(std::make_unique<FailsAlike>(run, row.wanted, row.errorsAllowed, onOtherCrash));
    EXPECT_EQ(Start(1).AskNow("a;"), row.interesting) << row.script;
    EXPECT_EQ(other, row.other) << row.script;
  }
}

TEST_F(ProcessJudgeTest, AsksTheNextCheckOnlyWhenTheLastOneHolds) {
  const std::string log = "echo >>" + folder.NameOf("log") + "; ";
  Add(std::make_unique<FailsAlike>(
      Compiler(log + "grep -q a $1 && echo LLVM ERROR: out; sleep 0.0$$"), kCrash, false,
      FailsAlike::OtherCrash()));
  Add(std::make_unique<Accepts>(Compiler(log + "grep -q b $1 || echo x: error: no; echo >$2")));
  Add(std::make_unique<Accepts>(Compiler(log + "! [ -e $2 ] && ! grep -q c $1")));
  Start(3);
  const std::string texts[] = {"",  "a", "b", "c",  "ab", "ac", "bc", "abc",
                               "a", "b", "",  "ab", "ab", "ab", "ca", "abc"};
  std::map<std::size_t, std::string> open;
  std::size_t commands = 0;
  std::size_t next = 0;
  const auto ask = [&](std::size_t place) {
    const std::string& text = open[place] = texts[next++];
    const bool hasA = text.find('a') != std::string::npos;
    const bool hasB = text.find('b') != std::string::npos;
    commands += hasA && hasB ? 3 : hasA ? 2 : 1;
    judge->Ask(place, text);
  };
  for (std::size_t place = 0; place < judge->Places(); ++place) ask(place);
  while (!open.empty()) {
    const auto answer = judge->Await();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->interesting, open[answer->place] == "ab") << open[answer->place];
    open.erase(answer->place);
    if (next < std::size(texts)) ask(answer->place);
  }
  EXPECT_EQ(folder.Read("log").size(), commands);
}

// Each time, whatever the run before has left there.
TEST_F(ProcessJudgeTest, RunsATestWhereThereIsTheProgramAlone) {
  const std::string test = folder.Write(
      "test", "echo >>" + folder.NameOf("log") +
                  "; [ \"$(ls -A)\" = my.x.c ] && [ \"$(cat my.x.c)\" = 'a;' ] && [ $# = 0 ] &&\n"
                  "  [ -z \"$(ls -A $TMPDIR)\" ] && echo b >>my.x.c && mkdir -p d/e $TMPDIR/f\n");
  for (int i = 0; i < 2; ++i) {
    Add(std::make_unique<TestHolds>(TestWords("sh " + test), 0, 0));
  }
  Start(1);
  for (int i = 0; i < 2; ++i) EXPECT_EQ(judge->AskNow("a;"), true);
  EXPECT_EQ(judge->AskNow("b;"), false);
  EXPECT_EQ(folder.Read("log").size(), 5U);
}

TEST_F(ProcessJudgeTest, LeavesNothingOfADroppedQuestion) {
  const std::string left = folder.NameOf("left");
  Add(std::make_unique<Accepts>(Compiler("grep -q quick $1 && { while ! [ -e " + left +
                                         " ]; do :; done; exit 0; }\n"
                                         "setsid sh -c 'echo $$ >$0.new; mv $0.new $0; sleep 60' " +
                                         left + " & sleep 60")));
  Start(2);
  judge->Ask(0, "slow");
  judge->Ask(1, "quick");
  const auto answer = judge->Await();
  ASSERT_TRUE(answer && answer->place == 1 && answer->interesting);
  const int process = std::atoi(folder.Read("left").c_str());
  EXPECT_EQ(::kill(process, 0), 0);
  judge->Drop(0);
  EXPECT_NE(::kill(process, 0), 0);
  for (const auto& entry : fs::recursive_directory_iterator(settings.folder)) {
    EXPECT_TRUE(entry.is_directory()) << entry.path();
  }
  judge->Ask(0, "quick");
  EXPECT_EQ(judge->Await()->place, 0U);
}

TEST_F(ProcessJudgeTest, StopsForASignalAndAtItsEnd) {
  Add(std::make_unique<Accepts>(Compiler("sleep 60")));
  Start(1).Ask(0, "");
  ::raise(SIGTERM);
  EXPECT_FALSE(judge->Await());
  EXPECT_EQ(judge->StoppedBy(), SIGTERM);
  Add(std::make_unique<Accepts>(Compiler("sleep 60")));
  settings.end = ProcessJudge::Clock::now();
  Start(1).Ask(0, "");
  EXPECT_FALSE(judge->Await());
  EXPECT_EQ(judge->StoppedBy(), 0);
}

}  // namespace
}  // namespace snipwell
