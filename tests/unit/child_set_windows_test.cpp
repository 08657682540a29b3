// Children side by side, what they leave behind and how they end. Those that are more than a word
// to the command interpreter are the fake compiler.

#include <gtest/gtest.h>
#include <windows.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/child_set.h"
#include "platform/handle_windows.h"
#include "platform/machine.h"
#include "platform/shell.h"
#include "platform/temporary_folder.h"
#include "temp_folder.h"
#include "told_end.h"

namespace snipwell::platform {
namespace {

namespace fs = std::filesystem;

ChildCommand Shell(const std::string& script) {
  ChildCommand command;
  command.arguments = ShellWords(script);
  return command;
}

const Child& RunToEnd(ChildSet& set, const ChildCommand& command) {
  const Child& child = set.Start(command);
  while (!child.HasEnded()) set.Wait();
  return child;
}

/// A folder with a fake compiler that obeys one rule, whatever it is to compile.
class Compiler {
 public:
  explicit Compiler(const std::string& rule) {
    folder.Write("rules", "rule\n" + rule);
    folder.Write("x.c", "");
    fs::create_directory(folder.Path() / "tmp");
    fs::copy_file(ProgramFolder() / "fake_g++.exe", folder.Path() / "cc.exe");
  }

  ChildCommand Command(double limitSeconds = 0) const {
    ChildCommand command;
    command.arguments = {".\\cc", "x.c"};
    command.folder = folder.NameOf("");
    command.temporaryFolder = folder.NameOf("tmp");
    command.environment = {"FAKE_GCC=" + folder.NameOf("rules")};
    command.limitSeconds = limitSeconds;
    return command;
  }
  /// True when a process of its program runs, which nobody can delete then.
  bool Runs() const {
    const Handle file(::CreateFileW((folder.Path() / "cc.exe").c_str(), GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
    return !file.IsOpen();
  }

 private:
  TempFolder folder;
};

TEST(ChildSet, BringsTheOutputOfManyBackWhole) {
  ChildSet set;
  std::vector<const Child*> children;
  for (int i = 0; i < 40; ++i) {
    const std::string number = std::to_string(i);
    children.push_back(
        &set.Start(Shell("echo a" + number + "& >&2 echo b" + number + "& exit " + number)));
  }
  for (std::size_t ended = 0; ended < children.size();) {
    for (const Child* child : set.Wait().children) ended += child->HasEnded() ? 1 : 0;
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    const std::string number = std::to_string(i);
    EXPECT_EQ(children[i]->Output(), 'a' + number + "\nb" + number + '\n');
    EXPECT_EQ(children[i]->End().status, static_cast<int>(i));
  }
}

TEST(ChildSet, TellsHowAChildEnded) {
  const TempFolder folder;
  folder.Write("script.bat", "@echo %~1\r\n@exit 4\r\n");
  folder.Write("text", "no program");
  const std::string missing = "reason " + std::to_string(ENOENT);
  const Compiler crashes("out half\ncrash\n");
  const Compiler writes("raw a\\x0d\\x0ab\\x0dc\\x0d\nexit 2\n");
  const Compiler hangs("out so\nhang\n");
  const struct {
    ChildCommand command;
    std::string output;
    std::string end;
  } rows[] = {
      {Shell("exit 3"), "", "status 3"},
      {crashes.Command(), "half\n", "signal 11"},
      {writes.Command(), "a\r\nb\rc\r", "status 2"},
      {hangs.Command(1), "so\n", "signal 9, timed out"},
      {{{folder.NameOf("none")}, "", "", {}, 0, 0}, "", missing},
      {{{}, "", "", {}, 0, 0}, "", missing},
      {{{folder.NameOf("text")}, "", "", {}, 0, 0}, "", missing},
      {{{"script", "a b"}, folder.NameOf(""), "", {}, 0, 0}, "a b\n", "status 4"},
      {{{folder.NameOf("script"), "c"}, "", "", {}, 0, 0}, "c\n", "status 4"},
      {{ShellWords("echo %TMP% %SNIPWELL_TEST%&cd"),
        folder.NameOf(""),
        "T:\\",
        {"snipwell_test=x"},
        60,
        1 << 30},
       "T:\\ x\n" + folder.Path().string() + "\n",
       "status 0"},
  };
  ::SetEnvironmentVariableW(L"SNIPWELL_TEST", L"old");
  ChildSet set;
  for (const auto& row : rows) {
    const Child& child = RunToEnd(set, row.command);
    // Wine writes more of a crash.
    const std::size_t most = child.End().signal == 11 ? row.output.size() : Child::kMostOutput;
    EXPECT_EQ(child.Output().substr(0, most), row.output);
    EXPECT_EQ(Ended(child.End()), row.end) << row.output;
  }
}

TEST(ChildSet, EndsWhatAChildLeavesBehindAndDisturbsNoNeighbour) {
  const Compiler lasting("litter\nout ready\nhang\n");
  const Compiler ending("litter\nout ready\n");
  const Compiler forever("litter\nflood\n");
  {
    ChildSet set;
    Child& neighbour = set.Start(lasting.Command());
    while (neighbour.Output() != "ready\n") set.Wait();
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(RunToEnd(set, ending.Command()).Output(), "ready\n");
      EXPECT_FALSE(ending.Runs());
      EXPECT_TRUE(lasting.Runs());
    }
    set.Stop(neighbour);
    while (!neighbour.HasEnded()) set.Wait();
    EXPECT_EQ(Ended(neighbour.End()), "signal 9, stopped");
    EXPECT_FALSE(lasting.Runs());
    const Child& endless = set.Start(forever.Command());
    while (endless.Output().empty()) set.Wait();
  }
  EXPECT_FALSE(forever.Runs());
}

TEST(ChildSet, WaitsNoLongerThanItMay) {
  const Compiler hangs("hang\n");
  ChildSet set;
  EXPECT_TRUE(set.Wait().children.empty());
  Child& child = set.Start(hangs.Command());
  EXPECT_TRUE(set.Wait(0).children.empty());
  EXPECT_TRUE(set.Wait(0.05).children.empty());
  Child& missing = set.Start(ChildCommand());
  EXPECT_EQ(set.Wait().children, std::vector<Child*>{&missing});
  set.Release(child);
  EXPECT_TRUE(set.Wait(0).children.empty());
}

TEST(TemporaryFolder, GoesWithWhatIsHeldForAMomentOrReadOnlyAndSparesWhatLinksLeadTo) {
  const TempFolder other;
  other.Write("kept", "");
  fs::path path;
  std::thread holder;
  {
    const TemporaryFolder folder(other.Path());
    path = folder.Path();
    fs::create_directories(path / "deep" / "deeper");
    const fs::path files[] = {path / "deep" / "held", path / "read-only"};
    for (const fs::path& file : files)
      Handle(::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    ::SetFileAttributesW(files[1].c_str(), FILE_ATTRIBUTE_READONLY);
    ::CreateHardLinkW((path / "name").c_str(), (other.Path() / "kept").c_str(), nullptr);
    Handle held(
        ::CreateFileW(files[0].c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held.IsOpen());
    holder = std::thread(
        [taken = std::move(held)] { std::this_thread::sleep_for(std::chrono::milliseconds(300)); });
  }
  EXPECT_FALSE(fs::exists(path));
  EXPECT_TRUE(fs::exists(other.Path() / "kept"));
  holder.join();
}

}  // namespace
}  // namespace snipwell::platform
