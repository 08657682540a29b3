// Programs that commands are run on: what is answered, in which order, and what is left behind.

#include "judge/process_judge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "judge/compiler_checks.h"
#include "platform/machine.h"
#include "temp_folder.h"

namespace snipwell {
namespace {

namespace fs = std::filesystem;

/// The fake compiler, which does what the rules in `folder` say.
CompilerRun Compiler(const TempFolder& folder, const std::string& name, const std::string& rules) {
  const std::string compiler = (platform::ProgramFolder() / "fake_g++").string();
  CompilerRun run;
  run.words = [compiler](const std::string& program, const std::string& output) {
    return std::vector<std::string>{compiler, "-o", output, program};
  };
  run.environment = {"FAKE_GCC=" + folder.Write(name, rules)};
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
const std::string kHangs = "hang";

// Of a program that crashes the compiler in another way the callback is told while its file is
// there. A compiler that has said what decides is not waited for.
TEST_F(ProcessJudgeTest, TellsOneFailureFromAnother) {
  const std::string error = "out x.c:1:2: error: no\n";
  const std::string out = "out LLVM ERROR: out\n";
  const struct {
    Failure wanted;
    std::string rule;
    std::string other;  // headline of the other crash
    bool errorsAllowed;
    bool interesting;
  } rows[] = {
      {kCrash, "err LLVM ERROR: out\nhang", "", false, true},
      {kCrash, out + "abort", "", false, true},
      {kCrash, error + out, "", false, false},
      {kCrash, error + out, "", true, true},
      {kCrash, "out LLVM ERROR: in\nhang", "in", false, false},
      {kCrash, "out Stack dump:\nout 0x12ab56 fold(t)\nout Please submit a full bug report\nhang",
       "in fold", false, false},
      {kCrash, "crash", "ended by signal 11", false, false},
      {kCrash, error + "crash", "", false, false},
      {kCrash, error + "crash", "ended by signal 11", true, false},
      {kCrash, "out cc1: out of memory allocating 8 bytes\nexit 1", "", false, false},
      {kCrash, kHangs, "", false, false},
      {kCrash, "exit 1", "", false, false},
      {kHang, kHangs, "", false, true},
      {kHang, "out LLVM ERROR: in\nhang", "in", false, false},
      {kHang, "exit 0", "", false, false},
      {kError, error + "hang", "", false, true},
      {kError, error + out, "", false, true},
      {kError, "out x.c:1:2: error: other\nexit 1", "", false, false},
      {kError, "exit 0", "", false, false},
  };
  for (const auto& row : rows) {
    std::string other;
    const auto onOtherCrash = [&](const Failure& failure, const Place& place) {
      other = failure.headline;
      EXPECT_EQ(fs::file_size(place.program), 2U);
    };
    CompilerRun run = Compiler(folder, "rules", "rule\n" + row.rule + '\n');
    run.limitSeconds = row.rule == kHangs ? 1 : 60;
    Add(std::make_unique<FailsAlike>(run, row.wanted, row.errorsAllowed, onOtherCrash));
    EXPECT_EQ(Start(1).AskNow("a;"), row.interesting) << row.rule;
    EXPECT_EQ(other, row.other) << row.rule;
  }
}

TEST_F(ProcessJudgeTest, AsksTheNextCheckOnlyWhenTheLastOneHolds) {
  const CompilerRun compilers[] = {
      Compiler(folder, "a", "rule\nhas a\nout LLVM ERROR: out\n"),
      Compiler(folder, "b", "rule\nlacks b\nout x: error: no\n"),
      Compiler(folder, "c", "rule\nhas c\nexit 1\n"),
  };
  Add(std::make_unique<FailsAlike>(compilers[0], kCrash, false, FailsAlike::OtherCrash()));
  Add(std::make_unique<Accepts>(compilers[1]));
  Add(std::make_unique<Accepts>(compilers[2]));
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
  const std::string runs = folder.Read("test_runs");  // a line each
  EXPECT_EQ(static_cast<std::size_t>(std::count(runs.begin(), runs.end(), '\n')), commands);
}

bool HasFile(const fs::path& folder, const std::string& start) {
  std::error_code goneMeanwhile;
  for (const auto& entry : fs::recursive_directory_iterator(folder, goneMeanwhile)) {
    if (entry.path().filename().string().rfind(start, 0) == 0) return true;
  }
  return false;
}

TEST_F(ProcessJudgeTest, LeavesNothingOfADroppedQuestion) {
  Add(std::make_unique<Accepts>(Compiler(folder, "rules", "rule\nhas slow\nlitter\nhang\n")));
  Start(2);
  judge->Ask(0, "slow");
  judge->Ask(1, "quick");
  const auto answer = judge->Await();
  ASSERT_TRUE(answer && answer->place == 1 && answer->interesting);
  while (!HasFile(settings.folder, "litter")) std::this_thread::yield();
  judge->Drop(0);
  for (const auto& entry : fs::recursive_directory_iterator(settings.folder)) {
    EXPECT_TRUE(entry.is_directory()) << entry.path();
  }
  judge->Ask(0, "quick");
  EXPECT_EQ(judge->Await()->place, 0U);
}

TEST_F(ProcessJudgeTest, StopsAtItsEnd) {
  Add(std::make_unique<Accepts>(Compiler(folder, "rules", "rule\nhang\n")));
  settings.end = ProcessJudge::Clock::now();
  Start(1).Ask(0, "");
  EXPECT_FALSE(judge->Await());
  EXPECT_EQ(judge->StoppedBy(), 0);
}

}  // namespace
}  // namespace snipwell
