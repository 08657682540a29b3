// What is particular to Windows: line ends, quoting, batch files, how a compiler crashes.

#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <string>
#include <thread>

#include "platform/command_line_windows.h"
#include "platform/handle_windows.h"
#include "tests/end_to_end/project.h"
#include "tests/end_to_end/run_tool.h"
#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

namespace fs = std::filesystem;

TEST(Quoting, FollowsTheRulesOfCRuntimes) {
  const struct {
    const char* argument;
    const char* quoted;
  } rows[] = {
      {"plain", "plain"},
      {"", "\"\""},
      {"a b", "\"a b\""},
      {"a\\b\\", "a\\b\\"},
      {"a b\\", "\"a b\\\\\""},
      {"a\"b", "\"a\\\"b\""},
      {"a\\\\\"b", "\"a\\\\\\\\\\\"b\""},
      {"tab\there", "\"tab\there\""},
  };
  for (const auto& row : rows) EXPECT_EQ(platform::QuoteArgument(row.argument), row.quoted);
}

TEST(Quoting, BringsEachArgumentToTheCompiler) {
  for (const char* argument :
       {"a b", "a\"b", "C:\\with blank\\", "\\\"", "a\\\\ \"b c\"", "%PATH%"}) {
    SCOPED_TRACE(argument);
    const Workspace work;
    work.Write("my x.c", "a;");
    work.Isolate("my x.c", {argument, "last"});
    EXPECT_EQ(work.Read("runs/1.args"), std::string("snip\n") + argument + "\nlast\n-c\nmy x.c\n");
  }
}

TEST(Text, IsWrittenWithCarriageReturns) {
  for (const std::string end : {"\r\n", "\n"}) {
    SCOPED_TRACE(end == "\n" ? "line feeds" : "pairs");
    const Workspace work;
    work.SetRules("rule\nhas b\nout {file}(1) : error\nexit 1\n");
    work.Write("args", "/ERRORMATCH=criteria" + end + " /LOGFILE=log" + end);
    work.Write("criteria", "one:" + end + "\" : error\"" + end);
    work.Write("x.c", "a;" + end + end + "b;" + end + "c;" + end);
    work.Snip({"/COMPILER=fake_compiler", "@args", "x.c"});
    EXPECT_EQ(work.Texts(6), (std::vector<std::string>{"", "a;\nb;\nc;", "a;\nb;", "a;", "\nb;"}));
    EXPECT_EQ(work.ReadBytes("x.tsf.c"), "\r\nb;");
    EXPECT_EQ(work.ReadBytes("x.c.ZEDRerrfile"),
              "x.fut.c(1) : error\r\n"
              "------------- ******* --------------------\r\n"
              "Compiler failed for this file.\r\n");
    const std::string log = work.ReadBytes("log");
    EXPECT_EQ(log.substr(log.size() - 2), "\r\n");
    const std::string out = work.ReadBytes("test_out");
    EXPECT_EQ(out.substr(0, 17), "***SNIPWELL ***\r\n");
  }
}

// By an access violation, or with the status that the C runtime's own start of a program cannot
// tell from a failed start.
TEST(Compiler, ThatEndsOddlyHasFailed) {
  for (const std::string end : {"crash", "exit -1"}) {
    const Workspace work;
    work.SetRules("rule\nhas b\nout internal error: dying\n" + end + "\n");
    work.Write("x.c", "a;b;c;");
    work.Isolate("x.c");
    EXPECT_EQ(work.Read("x.tsf.c"), "b;") << end;
  }
}

TEST(Compiler, IsFoundWithOrWithoutItsSuffix) {
  const struct {
    const char* name;
    const char* out;
  } rows[] = {
      {"fake_compiler", "***SNIPWELL ***\n0"},
      {"fake_compiler.exe", "***SNIPWELL ***\n0"},
      {"my tools\\cc", "***SNIPWELL ***\n0"},
      {"my tools/cc.exe", "***SNIPWELL ***\n0"},
      {"my tools/plain", "***SNIPWELL ***\n0"},
      {"my tools/cc.bin", "***SNIPWELL ***\n0"},
      {".\\fake_compiler", "***SNIPWELL ***\nCould not run the compiler\n"},
      {"my tools", "***SNIPWELL ***\nCould not run the compiler\n"},
      {"x.c", "***SNIPWELL ***\nCould not run the compiler\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Workspace work;
    fs::create_directory(work.Folder() / "my tools");
    for (const char* name : {"cc.exe", "plain", "cc.bin"}) {
      fs::copy_file(TestProgramFolder() / "fake_compiler.exe", work.Folder() / "my tools" / name);
    }
    work.Write("x.c", "a;");
    const Outcome outcome =
        work.Snip({std::string("/COMPILER=") + row.name, "/LOGFILE=log", "x.c"});
    EXPECT_EQ(outcome.out, row.out);
  }
}

// As virus scanners and editors hold them: nobody may rename over one, or write another.
TEST(Files, HeldByAnotherProgramForAMomentAreReplacedAllTheSame) {
  const Workspace work;
  work.FailWhileItHas({"b"});
  work.Write("x.c", "a;b;c;");
  std::thread holder([&work] {
    using platform::Handle;
    const auto hold = [&work](const char* name, DWORD others) {
      Handle held;
      while (!held.IsOpen()) {
        held = Handle(::CreateFileW((work.Folder() / name).c_str(), GENERIC_READ, others, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(500));
    };
    hold("x.tsf.c", FILE_SHARE_READ | FILE_SHARE_WRITE);
    hold("x.c.ZEDRerrfile", FILE_SHARE_READ);
  });
  const Outcome outcome = work.Isolate("x.c");
  holder.join();
  EXPECT_EQ(outcome.err.find("ERROR:"), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(work.Read("x.tsf.c"), "b;");
}

TEST(Files, OfAnEarlierRunAreReplacedWhereTheyAreReadOnly) {
  const Workspace work;
  work.FailWhileItHas({"b"});
  work.Write("x.c", "a;b;c;");
  for (const char* name : {"x.tsf.c", "x.fut.c", "x.c.ZEDRerrfile"}) {
    work.Write(name, "an earlier one, and longer");
    ::SetFileAttributesW((work.Folder() / name).c_str(), FILE_ATTRIBUTE_READONLY);
  }
  EXPECT_EQ(work.Isolate("x.c").out, "***SNIPWELL ***\n1");
  EXPECT_EQ(work.Read("x.tsf.c"), "b;");
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile").find("earlier"), std::string::npos);
}

// Wine hides what kind of link it is. A name of the source that is read-only stays so.
TEST(Files, ThatLeadToTheSourceAreReplaced) {
  for (const char* name : {"x.tsf.c", "x.fut.c", "x.c.ZEDRerrfile"}) {
    const Workspace work;
    work.FailWhileItHas({"b"});
    work.Write("x.c", "a;b;c;");
    const fs::path source = work.Folder() / "x.c";
    ::CreateHardLinkW((work.Folder() / name).c_str(), source.c_str(), nullptr);
    ::SetFileAttributesW(source.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(work.Isolate("x.c").out, "***SNIPWELL ***\n1") << name;
    EXPECT_EQ(work.Read("x.c"), "a;b;c;") << name;
    EXPECT_EQ(work.Read("x.tsf.c"), "b;") << name;
    EXPECT_NE(::GetFileAttributesW(source.c_str()) & FILE_ATTRIBUTE_READONLY, 0U) << name;
    ::SetFileAttributesW(source.c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

/// In folders deeper than 260 characters, and more than one code page has.
std::string LongName(const std::string& file) {
  std::string folder = "p";
  for (int i = 0; i < 4; ++i) folder += "/\u00e9\u0436\u6f22-" + std::string(70, 'x');
  return folder + "/\u00fc\u4e16." + file;
}

TEST(Names, MayBeLongAndOfAnyLanguage) {
  const Workspace work;
  fs::create_directories((work.Folder() / LongName("")).parent_path());
  AddProgram(work.Folder(), "p\u00e9\u6f22", TestProgramFolder() / "fake_compiler");
  work.Write(LongName("c"), "a;b;c;");
  work.FailWhileItHas({"b"});
  const Outcome outcome = work.Snip({"/COMPILER=p\u00e9\u6f22", "/LOGFILE=log", LongName("c")});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(work.Read(LongName("tsf.c")), "b;");
  AddProgram(work.Folder(), "\u6f22++", TestProgramFolder() / "fake_g++");
  work.Write("rules", CrashOn(kWanted, "f"));
  work.Write(LongName("cpp"), "int unused;\nint take() { return 7; }\n");
  const Start start = {"snipwell", "", "", {"FAKE_GCC=" + (work.Folder() / "rules").string()}};
  EXPECT_EQ(work.Snip({"-q", "\u6f22++", "-c", LongName("cpp")}, start).err, "");
  EXPECT_EQ(work.Read(LongName("min.cpp")), kSmallest);
}

// With all that they have started, though nobody is left to end them.
TEST(Children, EndWithTheProgramWhateverEndsIt) {
  const Workspace work;
  const auto path = [&work](const char* name) { return (work.Folder() / name).generic_string(); };
  AddProgram(work.Folder(), "cc++", TestProgramFolder() / "fake_g++");
  fs::create_directory(path("test_tmp"));
  work.Write("x.cpp", "a;");
  work.Write("rules", "rule\nlitter\nsignal 9 " + path("test_pid") + "\nhang\n");
  const Outcome outcome =
      work.Snip({"cc++", "-c", "x.cpp"}, {"snipwell",
                                          "",
                                          "",
                                          {"FAKE_GCC=" + path("rules"), "TMP=" + path("test_tmp")},
                                          path("test_pid")});
  EXPECT_EQ(outcome.status, 9);
  for (int i = 0; i < 500 && !ProcessesOf(work.Folder()).empty(); ++i) ::Sleep(10);
  EXPECT_EQ(ProcessesOf(work.Folder()), "");
}

// The command interpreter runs it, and gets arguments that it passes on as they are; it has no way
// to quote a double quote or a percent sign.
TEST(BatchFiles, RunWithTheArgumentsThatTheInterpreterPassesOn) {
  const Workspace work;
  fs::create_directory(work.Folder() / "my tools");
  work.Write("my tools/cc.bat", "@fake_compiler %*\r\n");
  work.FailWhileItHas({"b"});
  work.Write("my x.c", "a;b;c;");
  const Outcome outcome = work.Snip(
      {"/COMPILER=my tools\\cc", "/LOGFILE=log", "two words", "a&b", "(^)", "C:\\a b\\", "my x.c"});
  EXPECT_EQ(outcome.out, "***SNIPWELL ***\n1");
  EXPECT_EQ(work.Read("runs/1.args").substr(work.Read("runs/1.args").find('\n')),
            "\ntwo words\na&b\n(^)\nC:\\a b\\\n-c\nmy x.c\n");
  EXPECT_EQ(work.Read("my x.tsf.c"), "b;");
}

TEST(BatchFiles, AreNotStartedWithOtherArguments) {
  for (const std::string& argument :
       {std::string("%PATH%"), std::string("a\"b"), std::string(8100, 'x')}) {
    SCOPED_TRACE(argument);
    const Workspace work;
    work.Write("cc.bat", "@fake_compiler %*\r\n");
    work.Write("x.c", "a;");
    const Outcome outcome = work.Snip({"/COMPILER=cc.bat", "/LOGFILE=log", argument, "x.c"});
    EXPECT_EQ(outcome.out, "***SNIPWELL ***\nCould not run the compiler\n");
    EXPECT_TRUE(work.Runs().empty());
  }
}

}  // namespace
}  // namespace snipwell::testing
