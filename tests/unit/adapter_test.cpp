#include <gtest/gtest.h>

#include "failure/crash_headline.h"
#include "failure/line_rewriter.h"
#include "snip_cc/invocation.h"
#include "snip_cc/options.h"

namespace snipwell::snip_cc {

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
  const std::string start = "snip-cc: internal error: ";
  EXPECT_EQ(CrashHeadline({"x.cpp:1:2: error: no"}), "");
  EXPECT_EQ(CrashHeadline({"cc1plus: x.cc:3: f: Assertion `a == b' failed.", "Stack dump:"}),
            start + "f: Assertion `a == b' failed.");
  EXPECT_EQ(CrashHeadline({"c: y.cc:3: T* f(U): Assertion `g(a) == b' failed."}, true),
            start + "T* f[U]: Assertion `g[a] == b' failed.");
  EXPECT_EQ(CrashHeadline({"x.cpp:1:2: error: static assertion failed: Assertion `x'"}), "");
  EXPECT_EQ(CrashHeadline({"LLVM ERROR: out of memory", "PLEASE submit a bug report"}),
            start + "out of memory");
  EXPECT_EQ(CrashHeadline({"fatal error: error in backend: Cannot select", "Stack dump:"}),
            start + "Cannot select");
  EXPECT_EQ(CrashHeadline({"x.c:1:1: internal compiler error: in f, at g.cc:7"}),
            start + "in f, at g.cc:7");
  EXPECT_EQ(CrashHeadline({"internal compiler error: Segmentation fault", "0x12ab34 crash_signal",
                           "\t../toplev.cc:3", "0x12ab56 fold(tree_node*)", "\t../fold.cc:9"}),
            start + "in fold");
  EXPECT_EQ(CrashHeadline(
                {"PLEASE submit a bug report",
                 "Stack dump:", " #0 0x0001 llvm::sys::PrintStackTrace(int) (/lib/libLLVM.so+0x1)",
                 " #1 0x0002 (/lib/libLLVM-14.so.1+0x2)", " #2 0x0003 (/lib/libc.so.6+0x3)",
                 " #3 0x0004 (/lib/libclang.so+0x4)", "#10 0x0005 a::B(c) (/lib/x.so+0x5)",
                 "#11 0x0006 d (/bin/x+0x6)", "#12 0x0007 e (/bin/x+0x7)"}),
            start + "in libclang.so+0x4, called by a::B, called by d");
  EXPECT_EQ(CrashHeadline({"Stack dump:", "#0 0x0001 gsignal (/lib/libc.so.6+0x1)",
                           "#1 0x0002 (anonymous namespace)::D::v(int) (/lib/libLLVM.so+0x2)",
                           "#2 0x0003 X::operator()(int) const (/lib/x.so+0x3)",
                           "#3 0x0004 main (/bin/x+0x4)", "#4 0x0005 after (/bin/x+0x5)"}),
            start + "in D::v, called by X::operator[]");
  EXPECT_EQ(CrashHeadline({"internal compiler error: Segmentation fault", "0x12ab34 ???",
                           "0x12ab56 __libc_start_main_impl"}),
            start + "Segmentation fault");
  EXPECT_EQ(CrashHeadline({"PLEASE submit a bug report"}), start + "a crash without a stack dump");
}

// Where a stack overflows is chance.
TEST(CrashHeadline, TellsARecursionWhereverItsStackEnds) {
  std::vector<std::string> dump = {"Stack dump:"};
  for (int i = 0; i < 20; ++i) {
    dump.push_back("#1 0x0001 visit(int) (/lib/x.so+0x1)");
    dump.push_back("#2 0x0002 children(int) (/lib/x.so+0x2)");
  }
  const std::string headline = CrashHeadline(dump);
  EXPECT_EQ(headline, "snip-cc: internal error: in a recursion through children");
  dump.erase(dump.begin() + 1);
  EXPECT_EQ(CrashHeadline(dump), headline);
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
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=my-clang", "-c", "x.c"}), "/t"),
            (Command{"my-clang", "-fno-crash-diagnostics", "-o", "/t/output", "-c", "x.c"}));
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=clang/none", "/Zs", "x.c"}), "/t"),
            (Command{"clang/none", "-fsyntax-only", "x.c"}));
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=none", "-oy", "x.c"}), "/t"),
            (Command{"none", "-oy", "x.c"}));
  EXPECT_EQ(CompilerCommand(ParseOptions({"--cc=none", "--driver-mode=cl", "x.c"}), "/t"),
            (Command{"none", "/Fo/t/output", "--driver-mode=cl", "x.c"}));
  EXPECT_EQ(SourceName("dir/big.fut.cpp"), "big.cpp");
  EXPECT_EQ(SourceName("big.fut.fut.cpp"), "big.fut.cpp");
  EXPECT_EQ(SourceName("big.cpp"), "big.cpp");
}

}  // namespace snipwell::snip_cc
