// Commands as they are reported: the system's shell takes them apart as they were meant.

#include "platform/shell.h"

#include <gtest/gtest.h>

#include "platform/child_set.h"
#include "tests/end_to_end/project.h"
#include "tests/end_to_end/run_tool.h"

namespace snipwell::testing {

TEST(ShellCommand, BringsItsWordsToTheProgram) {
  std::vector<std::string> words = {"",   "a b",    "-DX=\"y\"", "it's",        "$HOME", "`id`",
                                    "\\", "~",      "#",         "*",           "a;b",   "{a,b}",
                                    "!",  "-I../x", "a&b",       "^",           "(a)",   "a b\\",
                                    ">a", "\"",     "\\\"",      "-DX=\"a&b\"", "a\"&b", "\"<(^|"};
  if (!kIsWindows) words.insert(words.end(), {"a\nb", "\xff", "%PATH%"});
  words.emplace_back("x.c");
  const Workspace work;
  std::string expected;
  for (const std::string& word : words) expected += word + '\n';
  const std::string program = (TestProgramFolder() / "fake_compiler").string();
  words.insert(words.begin(), program);
  platform::ChildCommand command;
  command.arguments = platform::ShellWords(platform::ShellCommand(words));
  command.folder = work.Folder().string();
  platform::ChildSet children;
  const platform::Child& child = children.Start(command);
  while (!child.HasEnded()) children.Wait();
  EXPECT_EQ(work.ReadBytes("runs/1.args"), program + '\n' + expected);
  EXPECT_EQ(platform::ShellCommand({"g++", "-O2", "-std=c++20", "src/pool.cpp"}),
            "g++ -O2 -std=c++20 src/pool.cpp");
}

}  // namespace snipwell::testing
