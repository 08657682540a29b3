// Children side by side, what they leave behind and how they end.

#include "platform/child_set.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "platform/signals.h"
#include "temp_folder.h"
#include "told_end.h"

namespace snipwell::platform {
namespace {

ChildCommand Shell(const std::string& script) {
  ChildCommand command;
  command.arguments = {"sh", "-c", script};
  return command;
}

/// Waits until every child has ended.
void Await(ChildSet& set, const std::vector<const Child*>& children) {
  for (const Child* child : children) {
    while (!child->HasEnded()) set.Wait();
  }
}

const Child& RunToEnd(ChildSet& set, const ChildCommand& command) {
  const Child& child = set.Start(command);
  Await(set, {&child});
  return child;
}

/// The processes whose numbers are in a file, one a line, and that still run.
int Running(const std::string& numbers) {
  int running = 0;
  for (std::size_t start = 0; start < numbers.size(); start = numbers.find('\n', start) + 1) {
    if (::kill(std::atoi(numbers.c_str() + start), 0) == 0) ++running;
  }
  return running;
}

TEST(ChildSet, BringsTheOutputOfManyBackWhole) {
  std::mt19937 random(7);
  ChildSet set;
  std::vector<Child*> children;
  std::vector<std::string> expected;
  for (int i = 0; i < 40; ++i) {
    std::string script;
    expected.emplace_back();
    for (int piece = 0; piece < 4; ++piece) {
      const std::string text = std::to_string(random());
      script += "sleep 0.0" + std::to_string(random() % 50) + "; echo " + text;
      script += random() % 2 == 0 ? ";" : " >&2;";
      expected.back() += text + "\n";
    }
    children.push_back(&set.Start(Shell(script + "exit " + std::to_string(i))));
  }
  for (std::size_t ended = 0; ended < children.size();) {
    for (const Child* child : set.Wait().children) ended += child->HasEnded() ? 1 : 0;
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    EXPECT_EQ(children[i]->Output(), expected[i]);
    EXPECT_EQ(children[i]->End().status, static_cast<int>(i));
  }
}

// One that ends at once, one in the group, one in a session of its own, and two in one where they
// are adopted while the child runs.
constexpr char kLeaveBehind[] =
    "(setsid true &)\n"
    "sleep 60 & echo $! >$TMPDIR/left\n"
    "setsid sleep 60 & echo $! >>$TMPDIR/left\n"
    "(setsid sh -c 'echo $$ >>$TMPDIR/left; sleep 60 & echo $! >>$TMPDIR/left; wait' &)\n"
    "while [ $(wc -l <$TMPDIR/left) != 4 ]; do :; done; echo ready\n";

TEST(ChildSet, EndsWhatAChildLeavesBehindAndDisturbsNoNeighbour) {
  const TempFolder folders[2];
  ChildCommand lasting = Shell(std::string(kLeaveBehind) + "sleep 60");
  lasting.temporaryFolder = folders[0].NameOf("");
  ChildCommand ending = Shell(kLeaveBehind);
  ending.temporaryFolder = folders[1].NameOf("");
  ChildSet set;
  Child& neighbour = set.Start(lasting);
  while (neighbour.Output() != "ready\n") set.Wait();
  const std::string lefts = folders[0].Read("left");
  EXPECT_EQ(Running(lefts), 4);
  for (int i = 0; i < 3; ++i) {
    const Child& child = RunToEnd(set, ending);
    EXPECT_EQ(child.Output(), "ready\n");
    EXPECT_EQ(Running(folders[1].Read("left")), 0);
    EXPECT_EQ(Running(lefts), 4);
  }
  set.Stop(neighbour);
  Await(set, {&neighbour});
  EXPECT_TRUE(neighbour.End().stopped);
  EXPECT_EQ(neighbour.End().signal, SIGKILL);
  EXPECT_EQ(Running(lefts), 0);
}

TEST(ChildSet, EndsAllWhenItGoes) {
  const TempFolder folder;
  ChildCommand command = Shell(std::string(kLeaveBehind) + "sleep 60");
  command.temporaryFolder = folder.NameOf("");
  {
    ChildSet set;
    const Child& child = set.Start(command);
    while (child.Output().empty()) set.Wait();
  }
  EXPECT_EQ(Running(folder.Read("left")), 0);
}

TEST(ChildSet, TellsHowAChildEnded) {
  const TempFolder folder;
  const std::string script = folder.Write("script", "echo $1; exit 4\n");
  ASSERT_EQ(::chmod(script.c_str(), 0700), 0);
  ::setenv("SNIPWELL_TEST", "old", 1);
  struct rlimit core {};
  ::getrlimit(RLIMIT_CORE, &core);
  core.rlim_cur = core.rlim_max;
  ::setrlimit(RLIMIT_CORE, &core);
  const struct {
    ChildCommand command;
    std::string output;
    std::string end;
  } rows[] = {
      {Shell("exit 3"), "", "status 3"},
      {Shell("kill -TERM $$"), "", "signal 15"},
      {{{folder.NameOf("none")}, "", "", {}, 0, 0}, "", "reason " + std::to_string(ENOENT)},
      {{{}, "", "", {}, 0, 0}, "", "reason " + std::to_string(ENOENT)},
      {{{"sh"}, folder.NameOf("none"), "", {}, 0, 0}, "", "reason " + std::to_string(ENOENT)},
      {{{folder.NameOf("")}, "", "", {}, 0, 0}, "", "reason " + std::to_string(EACCES)},
      {{{script, "a b"}, "", "", {}, 0, 0}, "a b\n", "status 4"},
      {{{"./script", "c"}, folder.NameOf(""), "", {}, 0, 0}, "c\n", "status 4"},
      {{{"sh", "-c", "echo $TMPDIR $SNIPWELL_TEST $LANGUAGE"}, "", "/t", {"SNIPWELL_TEST=x"}, 0, 0},
       "/t x en\n",
       "status 0"},
      {{{"sh", "-c", "ulimit -c; cat; exec sleep 60"}, "", "", {}, 0.2, 0},
       "0\n",
       "signal 9, timed out"},
      {{{"sh", "-c", "sleep 0.1; ulimit -v"}, "", "", {}, 60, 1 << 30}, "1048576\n", "status 0"},
      {Shell("exec >/dev/null 2>&1; sleep 0.1"), "", "status 0"},
  };
  ChildSet set;
  for (const auto& row : rows) {
    const Child& child = RunToEnd(set, row.command);
    EXPECT_EQ(child.Output(), row.output);
    EXPECT_EQ(Ended(child.End()), row.end) << row.output;
  }
}

/// A child that is asked to end as it is, and what it does about that.
ChildCommand Asked(const std::string& trap, double limit, double grace) {
  ChildCommand command = Shell("trap '" + trap + "' TERM; echo ready; while :; do sleep 0.1; done");
  command.limitSeconds = limit;
  command.graceSeconds = grace;
  return command;
}

TEST(ChildSet, AsksAChildToEndBeforeItIsKilled) {
  const struct {
    ChildCommand command;
    std::string end;
  } rows[] = {
      {Asked("exit 3", 0, 60), "status 3, stopped"},
      {Asked("exit 3", 0.3, 60), "status 3, timed out"},
      {Asked("echo no", 0, 0.3), "signal 9, stopped"},
      {Asked("echo no", 0.3, 0.3), "signal 9, timed out"},
  };
  ChildSet set;
  for (const auto& row : rows) {
    Child& child = set.Start(row.command);
    while (child.Output().empty()) set.Wait();
    if (row.command.limitSeconds == 0) set.Stop(child);
    Await(set, {&child});
    EXPECT_EQ(Ended(child.End()), row.end);
  }
}

// Nobody waits for one that is released: not a wait, but the end of the set.
TEST(ChildSet, SeesToTheEndOfAReleasedChild) {
  const TempFolder folder;
  const std::string lasting = "setsid sleep 60 & echo $! >>" + folder.NameOf("left") + "; ";
  for (const char* trap : {"exit", "echo no"}) {
    ChildSet set;
    ChildCommand command = Asked(trap, 0, 0.3);
    command.arguments.back() = lasting + command.arguments.back();
    Child& child = set.Start(command);
    while (child.Output().empty()) set.Wait();
    set.Release(child);
    EXPECT_TRUE(set.Wait().children.empty());
    EXPECT_NE(folder.Read("left"), "");
  }
  EXPECT_EQ(Running(folder.Read("left")), 0);
}

// One that writes without end keeps neither the others' ends nor a signal from being noticed.
TEST(ChildSet, HearsEverybodyWhileOneWritesWithoutEnd) {
  ChildSet set;
  Child& endless = set.Start(Shell("exec yes"));
  const Child& large = set.Start(Shell("head -c 3000000 /dev/zero"));
  Await(set, {&large, &RunToEnd(set, Shell("exit"))});
  EXPECT_EQ(large.Output(), std::string(3000000, '\0'));
  while (endless.Output().size() < Child::kMostOutput) set.Wait();
  EXPECT_FALSE(set.Wait().children.empty());
  EXPECT_EQ(endless.Output().size(), Child::kMostOutput);
  ::raise(SIGTERM);
  int signal = 0;
  while (signal == 0) signal = set.Wait().signal;
  EXPECT_EQ(signal, SIGTERM);
  set.Stop(endless);
  Await(set, {&endless});
  EXPECT_EQ(Ended(endless.End()), "signal 9, stopped");
}

// Else a child that ends just then is waited for without end.
TEST(SignalsHeldBack, KeepsTheEndOfAChildForTheNextWait) {
  const SignalsHeldBack heldBack;
  EXPECT_EQ(TakeSignal(), 0);
  ::raise(SIGCHLD);
  ::raise(SIGTERM);
  EXPECT_EQ(TakeSignal(), SIGTERM);
  EXPECT_EQ(TakeSignal(), 0);
  sigset_t pending;
  ::sigpending(&pending);
  EXPECT_EQ(::sigismember(&pending, SIGCHLD), 1);
}

TEST(ChildSet, WaitsNoLongerThanItMay) {
  ChildSet set;
  EXPECT_TRUE(set.Wait().children.empty());
  Child& child = set.Start(Shell("exec sleep 60"));
  EXPECT_TRUE(set.Wait(0).children.empty());
  EXPECT_TRUE(set.Wait(0.05).children.empty());
  EXPECT_FALSE(child.HasEnded());
  Child& missing = set.Start(ChildCommand());
  EXPECT_EQ(set.Wait().children, std::vector<Child*>{&missing});
  set.Release(child);
  EXPECT_TRUE(set.Wait(0).children.empty());
}

TEST(ChildSet, SaysWhyWhenDescriptorsAreUsedUp) {
  struct rlimit before {};
  ::getrlimit(RLIMIT_NOFILE, &before);
  ChildSet set;
  for (const rlim_t most : {3, 4, 5, 6, 7}) {
    const struct rlimit few = {most, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &few);
    const Child& child = set.Start(Shell("echo"));
    ::setrlimit(RLIMIT_NOFILE, &before);
    Await(set, {&child});
    EXPECT_EQ(child.End().reason, child.End().started ? 0 : EMFILE);
    EXPECT_EQ(child.Output(), child.End().started ? "\n" : "");
  }
  EXPECT_EQ(Ended(RunToEnd(set, Shell("echo")).End()), "status 0");
}

}  // namespace
}  // namespace snipwell::platform
