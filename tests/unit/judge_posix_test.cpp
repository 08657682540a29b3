// What only POSIX systems have: tests of the user's for sh, and signals.

#include <gtest/gtest.h>

#include <csignal>

#include "compile/test_command.h"
#include "judge/compiler_checks.h"
#include "judge/process_judge.h"
#include "judge/test_check.h"
#include "temp_folder.h"

namespace snipwell {
namespace {

class JudgeOfATest : public ::testing::Test {
 protected:
  void Start(const std::string& test) {
    std::vector<std::unique_ptr<Check>> checks;
    for (int i = 0; i < 2; ++i) {
      checks.push_back(std::make_unique<TestHolds>(TestWords(test), 0, 0));
    }
    ProcessJudge::Settings settings;
    settings.places = 1;
    settings.folder = folder.Path() / "places";
    settings.programName = "my.x.c";
    judge = std::make_unique<ProcessJudge>(children, std::move(checks), settings);
  }

  TempFolder folder;
  platform::ChildSet children;
  std::unique_ptr<ProcessJudge> judge;
};

// Each time, whatever the run before has left there.
TEST_F(JudgeOfATest, RunsItWhereThereIsTheProgramAlone) {
  Start("sh " +
        folder.Write(
            "test",
            "echo >>" + folder.NameOf("log") +
                "; [ \"$(ls -A)\" = my.x.c ] && [ \"$(cat my.x.c)\" = 'a;' ] && [ $# = 0 ] &&\n"
                "  [ -z \"$(ls -A $TMPDIR)\" ] && echo b >>my.x.c && mkdir -p d/e $TMPDIR/f\n"));
  for (int i = 0; i < 2; ++i) EXPECT_EQ(judge->AskNow("a;"), true);
  EXPECT_EQ(judge->AskNow("b;"), false);
  EXPECT_EQ(folder.Read("log").size(), 5U);
}

TEST_F(JudgeOfATest, StopsForASignal) {
  Start("sleep 60");
  judge->Ask(0, "");
  ::raise(SIGTERM);
  EXPECT_FALSE(judge->Await());
  EXPECT_EQ(judge->StoppedBy(), SIGTERM);
}

// Who kills a compiler is the system, for want of memory.
TEST(JudgeOfACompiler, TakesAKilledOneForNoCrash) {
  const TempFolder folder;
  CompilerRun run;
  run.words = [](const std::string&, const std::string&) {
    return std::vector<std::string>{"sh", "-c", "kill -9 $$"};
  };
  const auto onOtherCrash = [](const Failure& failure, const Place&) {
    ADD_FAILURE() << failure.headline;
  };
  const Failure crash = {FailureKind::Crash, "ended by signal 9", false};
  std::vector<std::unique_ptr<Check>> checks;
  checks.push_back(std::make_unique<FailsAlike>(run, crash, true, onOtherCrash));
  platform::ChildSet children;
  ProcessJudge judge(children, std::move(checks), {1, folder.Path() / "places", "x.c", {}});
  EXPECT_EQ(judge.AskNow("a;"), false);
}

}  // namespace
}  // namespace snipwell
