#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "failure/crash_headline.h"
#include "failure/deciding_line.h"
#include "failure/failure_reader.h"
#include "failure/line_rewriter.h"
#include "snip_cc/invocation.h"
#include "snip_cc/options.h"

namespace snipwell::snip_cc {
namespace {

TEST(RewriteLine, PutsIntoParenthesesWhatDiffersBetweenRuns) {
  const struct {
    const char* line;
    const char* rewritten;
  } rows[] = {
      {"x.cpp:12:5: error: no", "x.cpp(12,5): error: no"},
      {"x.cpp:12: error: no", "x.cpp(12): error: no"},
      {"dir with blank/x.cpp:1:2: note: y.h:3:4: z", "dir with blank/x.cpp(1,2): note: y.h:3:4: z"},
      {"In file included from a.h:3,", "In file included from a.h(3),"},
      {"                 from b.cpp:1:", "                 from b.cpp(1):"},
      {"In file included from b.cpp:1:", "In file included from b.cpp(1):"},
      {"x.cpp: In function 'int f()':", "x.cpp: In function 'int f()':"},
      {"x.cpp:5:7:   required from here", "x.cpp(5,7):   required from here"},
      {"    5 | a ? b:1:2;", "    5 | a ? b:1:2;"},
      {"x.cpp(12) : error", "x.cpp(12) : error"},
      {"std::map: 12: x", "std::map: 12: x"},
      {"note: 12:30", "note: 12:30"},
      {" #4 0x00007ff46745a050 f(int) (/lib/m.so+0x3c050)",
       " #4 (0x00007ff46745a050) f(int) (/lib/m.so+0x3c050)"},
      {"short 0x12ab stays", "short 0x12ab stays"},
      {"==1234==ERROR, pid 77, stupid 7", "==(1234)==ERROR, pid (77), stupid 7"},
      {"cannot open /tmp/T/cc1.s: gone", "cannot open (/tmp/T/cc1.s): gone"},
      {"x.cpp:1:2: internal compiler error: in expand_expr, at expr.cc:123",
       "x.cpp(1,2): internal compiler error: in expand_expr, at expr.cc:123"},
      {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(RewriteLine(row.line, "/tmp/T"), row.rewritten);
}

// Else the tool would take them in pieces that end elsewhere when a line number grows.
TEST(RewriteLine, CutsALongLineWhereverThePlaceEnds) {
  const std::string text = ": error: " + std::string(400, 'x');
  const std::string nine = RewriteLine("x.cpp:9:9" + text, "");
  const std::string ten = RewriteLine("x.cpp:10:10" + text, "");
  EXPECT_EQ(nine.substr(0, 22), "x.cpp(9,9): error: xxx");
  EXPECT_EQ(nine.substr(nine.find(')')), ten.substr(ten.find(')')));
  EXPECT_LT(ten.size(), 300U);
}

TEST(WithoutColours, LeavesTheWords) {
  EXPECT_EQ(WithoutColours("x.c:1: \x1b[01;31m\x1b[Kerror: \x1b[m\x1b[Kno\x1b["),
            "x.c:1: error: no");
}

TEST(CrashHeadline, TellsOneCrashFromAnother) {
  EXPECT_EQ(CrashHeadline({"x.cpp:1:2: error: no"}), "");
  EXPECT_EQ(CrashHeadline({"cc1plus: x.cc:3: f: Assertion `a == b' failed.", "Stack dump:"}),
            "f: Assertion `a == b' failed.");
  EXPECT_EQ(CrashHeadline({"c: y.cc:3: T* f(U): Assertion `g(a) == b' failed."}, 6),
            "T* f[U]: Assertion `g[a] == b' failed.");
  EXPECT_EQ(CrashHeadline({"x.cpp:1:2: error: static assertion failed: Assertion `x'"}), "");
  EXPECT_EQ(CrashHeadline({"LLVM ERROR: out of memory", "PLEASE submit a bug report"}),
            "out of memory");
  EXPECT_EQ(CrashHeadline({"fatal error: error in backend: Cannot select", "Stack dump:"}),
            "Cannot select");
  EXPECT_EQ(CrashHeadline({"x.c:1:1: internal compiler error: in f, at g.cc:7"}),
            "in f, at g.cc:7");
  EXPECT_EQ(CrashHeadline({"internal compiler error: Segmentation fault", "0x12ab34 crash_signal",
                           "\t../toplev.cc:3", "0x12ab56 fold(tree_node*)", "\t../fold.cc:9"}),
            "in fold");
  EXPECT_EQ(CrashHeadline(
                {"PLEASE submit a bug report",
                 "Stack dump:", " #0 0x0001 llvm::sys::PrintStackTrace(int) (/lib/libLLVM.so+0x1)",
                 " #1 0x0002 (/lib/libLLVM-14.so.1+0x2)", " #2 0x0003 (/lib/libc.so.6+0x3)",
                 " #3 0x0004 (/lib/libclang.so+0x4)", "#10 0x0005 a::B(c) (/lib/x.so+0x5)",
                 "#11 0x0006 d (/bin/x+0x6)", "#12 0x0007 e (/bin/x+0x7)"}),
            "in libclang.so+0x4, called by a::B, called by d");
  EXPECT_EQ(CrashHeadline({"Stack dump:", "#0 0x0001 gsignal (/lib/libc.so.6+0x1)",
                           "#1 0x0002 (anonymous namespace)::D::v(int) (/lib/libLLVM.so+0x2)",
                           "#2 0x0003 X::operator()(int) const (/lib/x.so+0x3)",
                           "#3 0x0004 main (/bin/x+0x4)", "#4 0x0005 after (/bin/x+0x5)"}),
            "in D::v, called by X::operator[]");
  EXPECT_EQ(CrashHeadline({"internal compiler error: Segmentation fault", "0x12ab34 ???",
                           "0x12ab56 __libc_start_main_impl"}),
            "Segmentation fault");
  EXPECT_EQ(CrashHeadline({"PLEASE submit a bug report"}), "a crash without a stack dump");
  EXPECT_EQ(CrashHeadline({"0x12ab56 fold(tree_node*)"}, 6), "in fold");
  EXPECT_EQ(CrashHeadline({"x.c:1:2: error: no"}, 11), "ended by signal 11");
  EXPECT_EQ(CrashHeadline({"LLVM ERROR: Cannot select: 0x55aa77cc99: i32 in x.c:12:34: f"}),
            "Cannot select:");
}

// As clang writes them when it asks nobody for names.
TEST(CrashHeadline, KnowsFramesWithoutNames) {
  const std::string start = "Stack dump:";
  EXPECT_EQ(
      CrashHeadline({start, "/lib/libLLVM-14.so.1(_ZN4llvm3sys15PrintStackTraceEi+0x31)[0x71]",
                     "/lib/libLLVM-14.so.1(+0xdcb83f)[0x72]", "/lib/libc.so.6(+0x3c05)[0x73]",
                     "/lib/libclang-cpp.so.14(+0xa2)[0x74]", "clang-14[0x4142c2]",
                     "/lib/libx.so(_ZN1a1B1cEi+0x5f)[0x75]", "clang-14(main+0x28)[0x411b36]",
                     "/lib/libc.so.6(__libc_start_main+0x85)[0x76]"}),
      "in libclang-cpp.so.14+0xa2, called by clang-14+0x4142c2, called by a::B::c");
  EXPECT_EQ(CrashHeadline({start, "a.out(f+0x5f)[0x75]", "/a(+0x1)[0x76]"}),
            "in f, called by a+0x1");
  EXPECT_EQ(CrashHeadline({start, "0  libLLVM.so.19.1   0x00007fa6fa0b73c6 llvm::sys::P(int) + 54",
                           "1  libLLVM.so.19.1   0x00007fa6f9ffd210",
                           "2  libc.so.6         0x00007fa6f905a050",
                           "10 libLLVM.so.19.1   0x00007fa701a20eb9",
                           "11 libclang.so.19.1  0x00007fa701a1a3fc a::B(c) const + 4"}),
            "in libLLVM.so.19.1+...eb9, called by a::B");
  // Behind the system's frames those of the compiler begin, in whatever module.
  EXPECT_EQ(
      CrashHeadline({start, " #0 0x0001 (/bin/clang+0x1)", " #1 0x0002 (/lib/libLLVM.so+0x2)",
                     " #2 0x0003 (/lib/libc.so.6+0x3)", " #3 0x0004 abort (/lib/libc.so.6+0x4)",
                     " #4 0x0005 llvm::report_fatal_error(char) (/lib/libLLVM.so+0x5)",
                     " #5 0x0006 (/lib/libLLVM.so+0x6)", " #6 0x0007 (/bin/clang+0x7)",
                     " #7 0x0008 (/lib/libc.so.6+0x8)"}),
      "in libLLVM.so+0x6, called by clang+0x7, called by libc.so.6+0x8");
  EXPECT_EQ(
      CrashHeadline({start, "#0 0x0001 raise ./nptl/raise.c:4:1", "#1 0x0002 f(int) /a/b.c:1:2",
                     "#2 0x0003 __libc_start_call_main ./csu/x.h:74:3"}),
      "in f");
}

// Where a stack overflows is chance.
TEST(CrashHeadline, TellsARecursionWhereverItsStackEnds) {
  std::vector<std::string> dump = {"Stack dump:"};
  for (int i = 0; i < 20; ++i) {
    dump.push_back("#1 0x0001 visit(int) (/lib/x.so+0x1)");
    dump.push_back("#2 0x0002 children(int) (/lib/x.so+0x2)");
  }
  const std::string headline = CrashHeadline(dump);
  EXPECT_EQ(headline, "in a recursion through children");
  dump.erase(dump.begin() + 1);
  EXPECT_EQ(CrashHeadline(dump), headline);
  dump.push_back("#41 0x0003 main (/bin/x+0x3)");
  EXPECT_EQ(CrashHeadline(dump), "in children, called by visit, called by children");
}

TEST(DecidingLine, KnowsWhoIsAtFault) {
  const struct {
    const char* line;
    LineMeaning meaning;
    const char* text;
  } rows[] = {
      {"x.c:1:2: error: no", LineMeaning::Error, ""},
      {"x.c(1,2): fatal error: y.h: No such file", LineMeaning::Error, ""},
      {"x.c:1:2: error: \"internal compiler error: LLVM ERROR: x\"", LineMeaning::Error, ""},
      {"x.cpp:1:2: error: static assertion failed: Assertion `x'", LineMeaning::Error, ""},
      {"clang: error: linker command failed with exit code 1", LineMeaning::Error, ""},
      {"x.c:1:2: warning: LLVM ERROR: x", LineMeaning::None, ""},
      {"x.c:1:2: note: in Assertion `x'", LineMeaning::None, ""},
      {"x.c:1:2: note: error: no", LineMeaning::None, ""},
      {"x.c:1:2: error: no: note: x", LineMeaning::Error, ""},
      {"  puts(\"x: error: no\");", LineMeaning::None, ""},
      {"1 error generated.", LineMeaning::None, ""},
      {"", LineMeaning::None, ""},
      {"x.c:1:1: internal compiler error: in f, at g.cc:7", LineMeaning::Failure,
       "in f, at g.cc:7"},
      {"x.c:1:1: internal compiler error: Segmentation fault", LineMeaning::Crash, ""},
      {"x.c(1): internal error: assertion failed", LineMeaning::Failure, "assertion failed"},
      {"cc1: x.cc:3: T f(U): Assertion `a' failed.", LineMeaning::Failure,
       "T f(U): Assertion `a' failed."},
      {"fatal error: error in backend: Cannot select", LineMeaning::Failure, "Cannot select"},
      {"x.c:1:1: fatal error: error in backend: no", LineMeaning::Failure, "no"},
      {"LLVM ERROR: out of memory", LineMeaning::Failure, "out of memory"},
      {"UNREACHABLE executed at x.cpp:1!", LineMeaning::Failure, "x.cpp:1!"},
      {"g++: fatal error: Killed signal terminated program cc1plus", LineMeaning::Failure,
       "Killed signal terminated program cc1plus"},
      {"clang: error: unable to execute command: Killed", LineMeaning::Failure,
       "unable to execute command: Killed"},
      {"LLVM ERROR: ", LineMeaning::Crash, ""},
      {"Stack dump:", LineMeaning::Crash, ""},
      {"Please submit a full bug report, with", LineMeaning::DumpEnd, ""},
      {"x.c(1): error C2065: 'x'", LineMeaning::Error, ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MeaningOf(row.line), row.meaning) << row.line;
    EXPECT_EQ(FailureText(row.line), row.text) << row.line;
  }
}

TEST(ErrorText, NamesNoPlaceOfTheProgram) {
  const struct {
    const char* line;
    const char* text;
  } rows[] = {
      {"x.c:1:2: error: no", "error: no"},
      {"x.c(3) : fatal error C1083: no: error: y", "fatal error C1083: no: error: y"},
      {"x.c:1:2: error: no f(lambda at d/x.c:10:22) (of T<a::b, 1:2>)",
       "error: no f(lambda at d/x.c) (of T<a::b, 1:2>)"},
      {"x.c:1:2: error: ", "error:"},
      {"/tmp/x.s:3: Error: no such instruction: `f'", "Error: no such instruction: `f'"},
      {"x.c(3): error #20: f", "error #20: f"},
      {"    3 | x(\": error: no\");", ""},
      {"LLVM ERROR: x", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(ErrorText(row.line), row.text) << row.line;
}

Failure ReadWhole(const std::string& output, bool pastErrors, int signal, bool succeeded) {
  return FailureReader(pastErrors).Conclude(output, signal, succeeded);
}

TEST(FailureReader, TellsHowACompilationFails) {
  const struct {
    const char* output;
    int signal;
    FailureKind kind;
    const char* headline;
    bool errorsBefore;
  } rows[] = {
      {"x.c:1:2: warning: w\n", 0, FailureKind::None, "", false},
      {"x.c:1:2: error: a\nx.c:2:2: error: b\n", 0, FailureKind::Error, "error: a", false},
      {"x.c:1: \x1b[1merror: \x1b[mno\r", 0, FailureKind::Error, "error: no", false},
      {"x.c:1:2: error: a\nLLVM ERROR: out (x)", 0, FailureKind::Crash, "out [x]", true},
      {"Stack dump:\n0x12ab56 fold(t)\nx.c:1:2: error: a", 6, FailureKind::Crash, "in fold", false},
      {"x.c:1:2: error: a\n", 11, FailureKind::Crash, "ended by signal 11", true},
      {"", 11, FailureKind::Crash, "ended by signal 11", false},
      {"cc1plus: out of memory allocating 9 bytes\n", 0, FailureKind::OutOfMemory, "out of memory",
       false},
      {"x.c:1: error: no: out of memory allocating\n  1 | LLVM ERROR: out of memory", 0,
       FailureKind::Error, "error: no: out of memory allocating", false},
      {"terminate called\n  what():  std::bad_alloc", 6, FailureKind::OutOfMemory, "out of memory",
       false},
      {"clang: error: unable to execute command: Killed", 0, FailureKind::OutOfMemory,
       "out of memory", false},
      {"LLVM ERROR: out of memory\nStack dump:", 6, FailureKind::OutOfMemory, "out of memory",
       false},
  };
  for (const auto& row : rows) {
    const Failure failure = ReadWhole(row.output, true, row.signal, false);
    EXPECT_EQ(failure.kind, row.kind) << row.output;
    EXPECT_EQ(failure.headline, row.headline);
    EXPECT_EQ(failure.errorsBefore, row.errorsBefore) << row.output;
  }
  EXPECT_EQ(ReadWhole("x.c:1: error: a", true, 0, true).kind, FailureKind::None);
}

/// The failure as it is known when it is decided, if it ever is before the output's end.
std::optional<Failure> ReadUntilDecided(const std::string& output, bool pastErrors) {
  constexpr std::size_t kPiece = 7;
  FailureReader reader(pastErrors);
  std::string read;
  while (!reader.IsDecided() && read.size() < output.size()) {
    read = output.substr(0, read.size() + kPiece);
    reader.Read(read);
  }
  if (!reader.IsDecided()) return std::nullopt;
  return reader.Conclude(read, 0, false);
}

const std::vector<std::string> kPool = {"x.c:1:2: error: no",
                                        "x.c:1:2: error: Assertion `x'",
                                        "f: Assertion `a' failed.",
                                        "LLVM ERROR: out",
                                        "virtual memory exhausted",
                                        "Stack dump:",
                                        "0x12ab56 fold(tree)",
                                        "Please submit a full bug report",
                                        "internal compiler error: in f",
                                        "internal compiler error: Aborted"};

/// All outputs of four lines out of the pool.
std::vector<std::vector<std::string>> AllOfFourLines() {
  std::vector<std::vector<std::string>> all = {{}};
  for (std::size_t i = 0; all[i].size() < 4; ++i) {
    for (const std::string& line : kPool) {
      std::vector<std::string> longer = all[i];
      longer.push_back(line);
      all.push_back(longer);
    }
  }
  all.erase(all.begin(), all.end() - 10'000);
  return all;
}

// Whatever the compiler would have written behind the line that decides, and however it had ended.
TEST(FailureReader, LeavesTheAnswerAsItWouldBe) {
  int decided = 0;
  for (const std::vector<std::string>& lines : AllOfFourLines()) {
    std::string all;
    for (const std::string& line : lines) all += line + '\n';
    for (const bool pastErrors : {false, true}) {
      const std::optional<Failure> early = ReadUntilDecided(all, pastErrors);
      if (!early) continue;
      ++decided;
      for (const int signal : {0, 6}) {
        const Failure whole = ReadWhole(all, pastErrors, signal, signal == 0);
        EXPECT_TRUE(whole.IsSameAs(*early) && whole.errorsBefore == early->errorsBefore) << all;
      }
      EXPECT_FALSE(pastErrors && early->kind == FailureKind::Error);
      if (early->kind == FailureKind::Crash) {
        EXPECT_EQ(early->headline, CrashHeadline(lines, 6));
      }
    }
  }
  EXPECT_GT(decided, 10'000);
}

TEST(Options, AreTakenOutAndTheRestIsTranslated) {
  Options options = ParseOptions({"--cc=g++-12", "/Zs", "/Od", "/c", "--limit=2.5", "x.cpp"});
  EXPECT_EQ(options.compiler, "g++-12");
  EXPECT_EQ(options.limitSeconds, 2.5);
  EXPECT_EQ(options.arguments, (std::vector<std::string>{"-fsyntax-only", "-O0", "-c", "x.cpp"}));
  options = ParseOptions({"--driver-mode=cl", "/Zs", "x.c"});
  EXPECT_EQ(options.compiler, "cc");
  EXPECT_EQ(options.arguments, (std::vector<std::string>{"--driver-mode=cl", "/Zs", "x.c"}));
  EXPECT_EQ(ParseOptions({"x.ii"}).compiler, "c++");
  options = ParseOptions({"--valid", "--first-line", "/Od", "--plain-options", "x.c"});
  EXPECT_TRUE(options.mustBeValid && options.firstLine);
  EXPECT_EQ(options.refused, "/Od");
  EXPECT_EQ(options.arguments, (std::vector<std::string>{"-O0", "x.c"}));
  options = ParseOptions({"--valid", "--first-line", "--plain-options", "--test=t", "x.c"});
  EXPECT_FALSE(options.mustBeValid || options.firstLine);
  EXPECT_EQ(options.refused, "");
  EXPECT_EQ(ParseOptions({"--limit=soon", "x.c"}).complaint,
            "--limit=soon is no number of seconds");
  EXPECT_EQ(ParseOptions({"--limit=0", "x.c"}).complaint, "--limit=0 is no number of seconds");
  EXPECT_FALSE(ParseOptions({"--limit=1e20", "x.c"}).complaint.empty());
  EXPECT_FALSE(ParseOptions({"--test=", "x.c"}).complaint.empty());
  EXPECT_EQ(ParseOptions({"--cc=/a/clang-cl-14", "/Od", "x.c"}).arguments[0], "/Od");
  EXPECT_EQ(ParseOptions({"--cc=g++"}).complaint, "no source file given");
}

TEST(Invocation, KeepsOutputAndCrashReportsAway) {
  using Command = std::vector<std::string>;
  const std::string output = (std::filesystem::path("/t") / "output").string();
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=my-clang", "-c", "x.c"}), "/t"),
            (Command{"my-clang", "-fno-crash-diagnostics", "-o", output, "-c", "x.c"}));
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=clang/none", "/Zs", "x.c"}), "/t"),
            (Command{"clang/none", "-fsyntax-only", "x.c"}));
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=none", "-oy", "x.c"}), "/t"),
            (Command{"none", "-oy", "x.c"}));
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=none", "--driver-mode=cl", "x.c"}), "/t"),
            (Command{"none", "/Fo" + output, "--driver-mode=cl", "x.c"}));
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=C:\\vc\\CL.exe", "/c", "/Od", "x.c"}), "/t"),
            (Command{"C:\\vc\\CL.exe", "/Fo" + output, "/c", "/Od", "x.c"}));
  EXPECT_EQ(SourceName("dir/big.fut.cpp"), "big.cpp");
  EXPECT_EQ(SourceName("big.fut.fut.cpp"), "big.fut.cpp");
  EXPECT_EQ(SourceName("big.cpp"), "big.cpp");
}

}  // namespace
}  // namespace snipwell::snip_cc
