// What compilers write on Windows.

#include <gtest/gtest.h>

#include "failure/crash_headline.h"
#include "failure/deciding_line.h"
#include "failure/failure_reader.h"

namespace snipwell {
namespace {

TEST(DecidingLine, ReadsLinesOfClAndItsLinker) {
  const struct {
    const char* line;
    LineMeaning meaning;
    const char* text;
    const char* number;
  } rows[] = {
      {"C:\\s\\x.cpp(3): error C2065: 'y': undeclared identifier", LineMeaning::Error,
       "error C2065: 'y': undeclared identifier", "C2065"},
      {"x.cpp(3,14): error C2065: 'y'", LineMeaning::Error, "error C2065: 'y'", "C2065"},
      {"x.cpp(3) : error C2065: 'y'", LineMeaning::Error, "error C2065: 'y'", "C2065"},
      {"x.cpp(3): error C2672: 'main::<lambda_65e615be2a45>::operator ()': none",
       LineMeaning::Error, "error C2672: 'main::<lambda_>::operator ()': none", "C2672"},
      {"x.cpp(3): fatal error C1083: Cannot open include file: 'y.h'", LineMeaning::Error,
       "fatal error C1083: Cannot open include file: 'y.h'", "C1083"},
      {"x.cpp(3): fatal error C1189: #error:  C1001", LineMeaning::Error,
       "fatal error C1189: #error:  C1001", "C1189"},
      {"cl : Command line error D8016 : '/ZI' and '/O2' are incompatible", LineMeaning::Error,
       "Command line error D8016 : '/ZI' and '/O2' are incompatible", "D8016"},
      {"x.obj : error LNK2019: unresolved external symbol f", LineMeaning::Error,
       "error LNK2019: unresolved external symbol f", "LNK2019"},
      {"LINK : fatal error LNK1104: cannot open file 'x.lib'", LineMeaning::Error,
       "fatal error LNK1104: cannot open file 'x.lib'", "LNK1104"},
      {"x.cpp(3,5): error: no: error C1001: x", LineMeaning::Error, "error: no: error C1001: x",
       ""},
      {"x.cpp(3): warning C4996: 'f': was declared deprecated: error C2065: x", LineMeaning::None,
       "", ""},
      {"x.cpp(3): note: see declaration of 'f': error C2065: x", LineMeaning::None, "", ""},
      {"cl : Command line warning D9002 : ignoring unknown option '-v'", LineMeaning::None, "", ""},
      {"x.cpp", LineMeaning::None, "", ""},
      {"x.cpp(8) : fatal error C1001: Internal compiler error.", LineMeaning::Crash, "", "C1001"},
      {"x.cpp(8): fatal  error C1001: Internal compiler error.", LineMeaning::Crash, "", "C1001"},
      {"INTERNAL COMPILER ERROR in 'C:\\VC\\bin\\cl.exe'", LineMeaning::Crash, "", ""},
      {"LINK : fatal error LNK1000: Internal error during Pass2", LineMeaning::Failure, "",
       "LNK1000"},
      {"Assertion failed: a == b, file C:\\l\\x.cpp, line 12", LineMeaning::Failure, "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MeaningOf(row.line), row.meaning) << row.line;
    EXPECT_EQ(ErrorText(row.line), row.text) << row.line;
    EXPECT_EQ(ErrorNumber(row.line), row.number) << row.line;
  }
}

const std::string kInternal = "C:\\s\\x.cpp(8) : fatal error C1001: Internal compiler error.\r\n";
const std::string kHelp =
    " To work around this problem, try simplifying or changing the program near the locations.\r\n"
    "If possible please provide a repro here: https://developercommunity.visualstudio.com\r\n"
    "Please choose the Technical Support command on the Visual C++\r\n"
    " Help menu, or open the Technical Support help file for more information\r\n";

std::string InSymbols(const std::string& first, const std::string& line) {
  return first + "(compiler file 'D:\\a\\_work\\1\\s\\src\\CxxFE\\sl\\p1\\c\\symbols.cpp', line " +
         line + ")\r\n" + kHelp + "INTERNAL COMPILER ERROR in 'C:\\VC\\bin\\cl.exe'\r\n";
}

Failure FailureIn(const std::string& output) {
  return FailureReader(true).Conclude(output, 0, false);
}

TEST(FailureReader, TellsHowClFails) {
  const struct {
    std::string output;
    FailureKind kind;
    const char* headline;
  } rows[] = {
      {InSymbols(kInternal, "33550"), FailureKind::Crash, "in symbols.cpp, line 33550"},
      {"x.cpp\r\n" + kInternal + "(compiler file 'D:\\src\\p2\\main.cpp', line 253)\r\n" + kHelp +
           "  cl!RaiseException()+0x69\r\n  cl!InvokeCompilerPass()+0x25f\r\n"
           "  cl!InvokeCompilerPassW()+0x106a3e\r\n  cl!InvokeCompilerPassW()+0x1\r\n",
       FailureKind::Crash,
       "in main.cpp, line 253, called by InvokeCompilerPass+0x25f, called by "
       "InvokeCompilerPassW+0x106a3e"},
      {"c1xx : fatal error C1001: Interner Compilerfehler.\n(Compilerdatei \"msc1.cpp\", Zeile 7)",
       FailureKind::Crash, "in msc1.cpp, line 7"},
      {"x.cpp(1) : fatal error C1001: INTERNAL COMPILER ERROR\n  (compiler file 'msc1.cpp', line "
       "6)",
       FailureKind::Crash, "in msc1.cpp, line 6"},
      {kInternal, FailureKind::Crash, "a crash without a stack dump"},
      {kInternal + "(no place\r\n", FailureKind::Crash, "a crash without a stack dump"},
      {"x.cpp(1): fatal error C1060: compiler is out of heap space\r\n", FailureKind::OutOfMemory,
       "out of memory"},
      {"x.cpp(1): error C2065: 'y'\r\nx.cpp(9) : fatal error C1002: compiler is out of heap space "
       "in pass 2\r\n",
       FailureKind::OutOfMemory, "out of memory"},
      {"x.cpp(1): error C2220: it is an error\r\nx.cpp(1): warning C4101: 'y': not "
       "used\r\nx.cpp(2): "
       "warning C4100: 'z'\r\n",
       FailureKind::Error, "error C2220: it is an error: warning C4101: 'y': not used"},
      {"x.cpp(1): error C2220: it is an error\r\nx.cpp(1): error C2065: 'y'\r\n",
       FailureKind::Error, "error C2220: it is an error"},
      {"x.cpp(1): error C2220: it is an error", FailureKind::Error, "error C2220: it is an error"},
      {"x.cpp(1): error C2338: error C1060: y\r\n", FailureKind::Error,
       "error C2338: error C1060: y"},
      {"LINK : fatal error LNK1000: Internal error during Pass2\r\n", FailureKind::Crash,
       "Internal error during Pass2"},
      {"Assertion failed: a == b, file C:\\l\\x.cpp, line 12\r\nPLEASE submit a bug report\r\n",
       FailureKind::Crash, "Assertion failed: a == b, file C:\\l\\x.cpp, line 12"},
      {"x.cpp(1,2): warning C4100: y\r\nx.cpp(3,1): error: no member named 'z'\r\n",
       FailureKind::Error, "error: no member named 'z'"},
      {"terminate called\r\n  what():  std::bad_alloc\r\n", FailureKind::OutOfMemory,
       "out of memory"},
  };
  for (const auto& row : rows) {
    const Failure failure = FailureIn(row.output);
    EXPECT_EQ(failure.kind, row.kind) << row.output;
    EXPECT_EQ(failure.headline, row.headline) << row.output;
    const Failure whereErrorsDecide = FailureReader(false).Conclude(row.output, 0, false);
    EXPECT_TRUE(row.kind != FailureKind::Error || whereErrorsDecide.IsSameAs(failure));
  }
}

TEST(FailureReader, WaitsForTheWarningThatIsAnError) {
  FailureReader reader(false);
  const std::string error = "x.cpp(1): error C2220: it is an error\n";
  reader.Read(error);
  EXPECT_FALSE(reader.IsDecided());
  reader.Read(error + "x.cpp(1): warning C4101: 'y'\n");
  EXPECT_TRUE(reader.IsDecided());
}

TEST(FailureReader, ComparesWhereClFailedAndNotWhereTheProgramIs) {
  const Failure failure = FailureIn(InSymbols(kInternal, "33550"));
  const std::string other = "D:\\T\\t-1\\x.cpp(14): fatal error C1001: Internal compiler error.\n";
  EXPECT_TRUE(FailureIn(InSymbols(other, "33550")).IsSameAs(failure));
  EXPECT_TRUE(
      FailureIn("x.cpp(1): error C2065: 'y'\n" + InSymbols(other, "33550")).IsSameAs(failure));
  EXPECT_FALSE(FailureIn(InSymbols(other, "33551")).IsSameAs(failure));
  const Failure error = FailureIn("D:\\T\\x.cpp(3,7): error C2065: 'y'\r\n");
  EXPECT_TRUE(FailureIn("C:\\x.cpp(14): error C2065: 'y'\n").IsSameAs(error));
  EXPECT_FALSE(FailureIn("D:\\T\\x.cpp(3,7): error C2065: 'z'\r\n").IsSameAs(error));
}

TEST(CrashHeadline, KnowsFramesOfClangOnWindows) {
  const std::string start = "Stack dump:";
  const std::string bin = "C:\\Program Files (x86)\\bin\\clang-cl.exe";
  const struct {
    std::vector<std::string> lines;
    const char* headline;
  } rows[] = {
      {{start, "0x00007FF7B449C45E, " + bin + "(0x00007FF7B1360000) + 0x313C45E byte(s)",
        "0x00007FF7B2DA5BC2, " + bin + "(0x00007FF7B1360000) + 0x1A byte(s), a::B() + 0x1 byte(s)",
        "0x00007FF9D6A5244D, C:\\W\\KERNEL32.DLL(0x00007FF9D6A40000) + 0x1244D byte(s), "
        "BaseThreadInitThunk() + 0x1D byte(s)"},
       "in clang-cl.exe+0x313C45E, called by a::B, called by BaseThreadInitThunk"},
      {{start, "Exception Code: 0xE0000046",
        " #0 0x00007ffbf80801dc (C:\\Windows\\System32\\KERNELBASE.dll+0x601dc)",
        " #1 0x00007ff67fc3cf5a (" + bin + "+0x1e2cf5a)",
        " #2 0x00007ff67fb38713 f(int) C:\\src\\x.cpp:12:0"},
       "in clang-cl.exe+0x1e2cf5a, called by f"},
      {{start, "0x00007FF7B449C45E <unknown module>"}, "in <unknown module>"},
  };
  for (const auto& row : rows) EXPECT_EQ(CrashHeadline(row.lines), row.headline);
}

}  // namespace
}  // namespace snipwell
