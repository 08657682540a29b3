// How the arguments are taken apart, seen from what the tool says and what the compiler is given.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

using Arguments = std::vector<std::string>;

const char kNoCompiler[] =
    "ERROR: Cannot determine which compiler to use\n"
    "       Use /COMPILER <COMPILER_PATH> argument to specify\n";
const char kNoLogFile[] =
    "Compiler Path is: x\n"
    "ERROR: Cannot determine where to write to Snipwell logfile\n"
    "       Use /LOGFILE <Logfile_path and logfile_name>> argument to specify\n";
const char kNoNumber[] = "ERROR: /TIMEOUT=value, value \"\" is invalid.\nValue must be a number.\n";

TEST(CommandLine, RefusesWhatCannotBeRun) {
  const struct {
    Arguments arguments;
    char code;
    const char* errEnd;
  } rows[] = {
      {{}, '3', kNoCompiler},
      {{"-compiler=x", "a.c"}, '4', kNoLogFile},
      // An option that is last is none; nor is one in mixed case.
      {{"/compiler=x", "a.c", "/LOGFILE=l"}, '4', kNoLogFile},
      {{"/Compiler=x", "/LOGFILE=l", "a.c"}, '3', kNoCompiler},
      // The first spelling decides, and it is last.
      {{"-compiler=y", "/LOGFILE=l", "/COMPILER=x"}, '3', kNoCompiler},
      {{"/COMPILER=x", "/LOGFILE=l", "/TIMEOUT=", "a.c"}, '6', kNoNumber},
      {{"/COMPILER=x", "/LOGFILE=l", "-TIMEOUT=-5", "a.c"}, '6', "Value must be a number.\n"},
  };

  for (const auto& row : rows) {
    const Workspace work;
    const Outcome outcome = work.Snip(row.arguments);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, std::string("***SNIPWELL ***\n") + row.code);
    EXPECT_EQ(outcome.err.rfind(row.errEnd), outcome.err.size() - std::strlen(row.errEnd));
    EXPECT_EQ(work.Files(), "");
  }
}

TEST(CommandLine, HelpWinsOverEverything) {
  for (const char* option : {"-HELP", "/HELP", "-help", "/help", "-?", "\"/?\""}) {
    const Workspace work;
    const Outcome outcome = work.Snip({"/TIMEOUT=x", option, "a.c"});
    EXPECT_EQ(outcome.out.substr(0, 26), "***SNIPWELL ***\nsnip help\n") << option;
  }
}

TEST(CommandLine, HandsTheRestToTheCompiler) {
  const struct {
    Arguments arguments;
    const char* compiled;  ///< the argument list of the first compilation
  } rows[] = {
      {{"/COMPILER=fake_compiler", "/logfile=l", "-O2", "/timeout=5", "/TC", "x.c"},
       "snip -O2 /timeout=5 /TC -c x.c"},
      {{"/c", "-logfile=l", "-TIMEOUT=007", "/compiler=fake_compiler", "x.c"}, "snip /c x.c"},
      // Of several the first counts, in the order of the spellings; the others stay.
      {{"-verbose", "/COMPILER=fake_compiler", "-COMPILER=z", "/LOGFILE=l", "/LOGFILE=m",
        "/VERBOSE", "-TIMEOUT=007", "-TIMEOUT=5min", "/ERRORMATCH=e", "/errormatch=f", "x.c"},
       "snip -verbose -COMPILER=z /LOGFILE=m -TIMEOUT=5min /errormatch=f -c x.c"},
      // Pairs of quotes are stripped, single ones are not.
      {{"\"/COMPILER=fake_compiler\"", "/LOGFILE=l", "\"a b\"", "\"", "\"a", "a\"b\"", "\"\"\"",
        "x.c"},
       "snip a b  \"a a\"b\" \" -c x.c"},
  };

  for (const auto& row : rows) {
    const Workspace work;
    work.Write("x.c", "a;");
    const Outcome outcome = work.Snip(row.arguments);
    EXPECT_EQ(outcome.out.back(), '0') << outcome.out << outcome.err;
    ASSERT_EQ(work.Runs().size(), 1U);
    EXPECT_EQ(work.Runs()[0].arguments, row.compiled);
  }
}

TEST(CommandLine, TellsTheLanguage) {
  const struct {
    Arguments options;
    const char* source;
    const char* trace;
  } rows[] = {
      {{}, "x.cpp", "TC: -1  TP: -1\n*C++"},        {{}, "x.CPP", "TC: -1  TP: -1\n*C\n"},
      {{}, "x.cpp.bak", "TC: -1  TP: -1\n*C\n"},    {{}, "x", "TC: -1  TP: -1\n*C++"},
      {{"-TC"}, "x.cpp", "TC: 3  TP: -1\n*C\n"},    {{"-TP", "-TC"}, "x.c", "TC: 4  TP: 3\n*C\n"},
      {{"-TC", "/TP"}, "x.c", "TC: 3  TP: 4\n*C++"}};
  for (const auto& row : rows) {
    const Workspace work;
    Arguments options = row.options;
    options.emplace_back("/VERBOSE");
    const Outcome outcome = work.Isolate(row.source, options);
    std::string trace = row.trace;
    trace.replace(trace.find('*'), 1, "******************************************\nFileType is ");
    EXPECT_NE(outcome.err.find(trace), std::string::npos) << row.source << outcome.err;
  }
}

TEST(ArgumentFiles, AreExpandedInPlaceAndTraced) {
  const Workspace work;
  work.Write("f", "one  two\r\nthree @g");
  work.Write("g", "/COMPILER=fake_compiler\n /LOGFILE=l\n");
  work.Write("x.c", "a;");
  const Outcome outcome = work.Snip({"-a", "@f", "@missing", "x.c"});
  EXPECT_EQ(outcome.out,
            "***SNIPWELL ***\n"
            "found file_of_args as argument 2\n"
            "temp before: one\ntemp after: one\n"
            "temp before: \ntemp after: \n"
            "temp before: two\nthree\ntemp after: twothree\n"
            "temp before: @g\ntemp after: @g\n"
            "Reading args from f\n"
            "found file_of_args as argument 4\n"
            "temp before: /COMPILER=fake_compiler\n\ntemp after: /COMPILER=fake_compiler\n"
            "temp before: /LOGFILE=l\n\ntemp after: /LOGFILE=l\n"
            "Reading args from g\n"
            "found file_of_args as argument 6\n"
            "Reading args from missing\n"
            "0");
  ASSERT_EQ(work.Runs().size(), 1U);
  EXPECT_EQ(work.Runs()[0].arguments, "snip -a one twothree -c x.c");
}

TEST(ArgumentFiles, ThatNameThemselvesAreDroppedThere) {
  const Workspace work;
  work.Write("f", "-a @g");
  work.Write("g", "-b @./f -d");
  work.Write("x.c", "a;");
  const Outcome outcome = work.Isolate("x.c", {"@f", "@g"});
  EXPECT_NE(outcome.err.find("ERROR: Argument file names itself, argument dropped: ./f\n"),
            std::string::npos);
  ASSERT_EQ(work.Runs().size(), 1U);
  EXPECT_EQ(work.Runs()[0].arguments, "snip -a -b -d -b -a -d -c x.c");
}

// A timed test would prove little; one that took quadratic time would not end.
TEST(ArgumentFiles, MayHoldManyWords) {
  const Workspace work;
  std::string words;
  for (int i = 0; i < 100'000; ++i) words += "-w ";
  work.Write("f", words);
  work.Write("x.c", "a;");
  work.Snip({"@f", "/LOGFILE=l", "x.c"});
  EXPECT_NE(work.Read("test_err").find(kNoCompiler), std::string::npos);
}

}  // namespace
}  // namespace snipwell::testing
