// What a run writes, on which stream and in which file, and how it ends.

#include <gtest/gtest.h>

#include <string>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

const char kBanner[] = "***SNIPWELL ***\n";

const char kCriteriaListing[] =
    "Matching Criteria from default strings\n"
    "StringArray Contents\n"
    "--------------------\n"
    "|: error|\n"
    "|internal error :|\n"
    "|internal error:|\n"
    "|Illegal READ|\n"
    "|Illegal WRITE|\n"
    "|compiler error:|\n"
    "|: catastrophic error:|\n"
    "|Catastrophic error:|\n"
    "8 Strings Total\n"
    "\n";

const char kStatusLines[] =
    "------------- ******* --------------------\n"
    "Compiler failed for this file.\n";

const char kEnd[] =
    "*************************************\n"
    "TOTAL TIME FOR EVERYTHING:\t0\n"
    "*************************************\n"
    "***********************************\n"
    "FileOrg Compiler Time in seconds: 0\n"
    "***********************************\n"
    "Error found and isolated\n";

/// What standard error holds up to the first compilation of x.c.
std::string Opening(const std::string& program = "snip") {
  return "INITIAL ARGUMENTS:\n"
         "StringArray Contents\n"
         "--------------------\n"
         "|" +
         program +
         "|\n|/COMPILER=fake_compiler|\n|/LOGFILE=log|\n|x.c|\n4 Strings Total\n\n"
         "Compiler Path is: fake_compiler\n"
         "Logfile Path is: log\n"
         "ERRORFILE NAME: \n"
         "x.c.ZEDRerrfile\n";
}

TEST(Run, ShowsTheHelp) {
  const Workspace work;
  const Outcome outcome = work.Snip({"/?"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "INITIAL ARGUMENTS:\nStringArray Contents\n--------------------\n|snip|\n|/?|\n"
            "2 Strings Total\n\n");
  EXPECT_EQ(outcome.out,
            "***SNIPWELL ***\n"
            "snip help\n"
            "---------\n"
            "snip \n"
            "/COMPILER=<compiler_path>                   (required)\n"
            "/LOGFILE=<logfile_path>                     (required, logfile contains completion "
            "log)\n"
            "[/ERRORMATCH=<matching_criteria_file_path>] (default is ErrorMatch.txt)\n"
            "[/VERBOSE]                                  (prints out all the details)\n"
            "[/HELP or /?]                               (displays this message)\n"
            "source_file \n"
            "\n"
            "source_file.suffix is any K&R C, ANSI C, or C++ file\n"
            "\n"
            "Example: snip /compiler=\\VexlabEnv\\COMPIL~1.0K\\bin\\qcx.exe /logfile=zarf.log "
            "zarf.i\n"
            "\n"
            "Note:\n"
            "---------------\n"
            "If preprocessor directives( like #line, #ifdef, #endif) cause problems,\n"
            "use qcx with /EP /P options to create a .i file.\n"
            "Process the .i file through snip like you would the original C/C++ file\n"
            "Example: qcx /EP /P <orig_file.cpp>\n"
            "followed by snip call on orig_file.i\n"
            "\n"
            "FILES PRODUCED:\n"
            "---------------\n"
            "source_file.tsf.suffix     the isolated code\n"
            "source_file.ZEDR_errfile   the results of the last run of the compiler\n"
            "logfile_path               \n"
            "0");
}

TEST(Run, EndsQuietlyWhenTheSourceCompiles) {
  const Workspace work;
  work.SetRules("rule\nout x.c(1) : error in words only\nerr warning\n");
  work.Write("x.c", "a;");
  const Outcome outcome = work.Isolate("x.c");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, std::string(kBanner) + "0");
  EXPECT_EQ(outcome.err, Opening());
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), "x.c(1) : error in words only\nwarning\n");
  EXPECT_EQ(work.Files(), "x.c x.c.ZEDRerrfile");
}

TEST(Run, EndsWhenNoLineMatches) {
  const Workspace work;
  work.SetRules("rule\nout Internal Error: capitals\nerr Error\nraw no line feed\nexit 3\n");
  work.Write("x.c", "a;");
  const Outcome outcome = work.Isolate("x.c");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, std::string(kBanner) + "2");
  EXPECT_EQ(outcome.err, Opening() + kCriteriaListing +
                             "No errors were found that matched the given matching criteria\n");
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile"),
            std::string("Internal Error: capitals\nError\nno line feed") + kStatusLines);
  EXPECT_EQ(work.Files(), "x.c x.c.ZEDRerrfile");
}

TEST(Run, EndsWhenTheCompilerCannotBeStarted) {
  const Workspace work;
  work.Write("x.c", "a;");
  const Outcome outcome = work.Snip({"/COMPILER=./no_such_compiler", "/LOGFILE=log", "x.c"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, std::string(kBanner) + "Could not run the compiler\n");
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), "Spawn compiler failed.\n");
}

TEST(Run, EndsWhenTheCompilerOutputFileCannotBeOpened) {
  const Workspace work;
  const Outcome outcome = work.Isolate("nowhere/x.c");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, std::string(kBanner) + "Can't open file: \nnowhere/x.c.ZEDRerrfile\n\n\n");
  EXPECT_TRUE(work.Runs().empty());
}

TEST(Run, ReportsAnIsolation) {
  const Workspace work;
  work.FailWhileItHas({"b"});
  work.Write("x.c", "a;b;c;");
  work.Write("log", "older line\n");
  const Outcome outcome = work.Isolate("x.c", {}, {"snip_with_test_clock", "", ""});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, std::string(kBanner) + "1");
  EXPECT_EQ(outcome.err, Opening("snip_with_test_clock") + kCriteriaListing + kEnd);
  EXPECT_EQ(work.Read("log"),
            "older line\nFile \"x.fut.c\" completed at 01:46:40 on Mon, 09/10/2001\n");
  EXPECT_EQ(work.Read("x.c.ZEDRerrfile"), std::string("x.fut.c(1) : error 7: no\n") + kStatusLines);
  EXPECT_EQ(work.Files(), "log x.c x.c.ZEDRerrfile x.tsf.c");
}

/// What the scan of one matching output writes.
std::string Scanned(const std::string& file) {
  return "Pre FormatLine LineString: " + file + "(1) : error 7: no\n\n" +
         "Post FormatLine LineString: " + file + " : error 7: no\n\n";
}

std::string Built(int removed, int created, const std::string& flagged) {
  return "Num List Nodes Removed: " + std::to_string(removed) +
         "\nNum List Nodes Created: " + std::to_string(created) + "\nCurrent ErrAll: " + flagged +
         "\n\n";
}

std::string Tried(const std::string& ids, int removed, int created) {
  return "Removing: " + ids + "\n\nNum ErrDetect Nodes Removed: " + std::to_string(removed) +
         "\nNum ErrDetect Nodes Created: " + std::to_string(created) +
         "\nTotal compile time so far: 0 seconds\n";
}

// The object that holds the error, "void f(){ b; }", is dumped, and its body is the next level.
TEST(Run, TracesEveryStepInVerboseMode) {
  const Workspace work;
  work.FailWhileItHas({"b"});
  work.Write("x.c", "void f(){ b; }c;");
  const Outcome outcome = work.Isolate("x.c", {"/VERBOSE"}, {"snip_with_test_clock", "", ""});
  EXPECT_EQ(outcome.out, std::string(kBanner) +
                             "ARGNUM 0: snip_with_test_clock\n"
                             "ARGNUM 1: -c\n"
                             "ARGNUM 2: x.c\n"
                             "1");
  const std::string same = Scanned("x.fut.c");
  const std::string none = "No matching errors found!\n";
  const std::string expected =
      kCriteriaListing + Scanned("x.c") +
      "ARGC: 3\nARGV[0]: snip_with_test_clock\nARGV[1]: -c\nARGV[2]: x.fut.c\n" +
      // The engine's reference and the three preliminary checks.
      same + same + "*SAME Error: UPDATING *\n" + Built(0, 2, "") +
      "Removing excess spaces and comments from stream\n" + same +
      "Using front-end only of compiler\n"
      "****************************\nTotal pretime in seconds: 0\n****************************\n" +
      same + "Using NO optimizations\n" + Built(2, 2, "") +
      // Level 0.
      Tried("0 1 ", 0, 2) + none + "*NOT the Same Error: RESTORING *\n" + Tried("1 ", 2, 2) + same +
      "*SAME Error: UPDATING *\n" + Built(2, 1, "") + Tried("0 ", 2, 1) + none +
      "*NOT the Same Error: RESTORING WITH ERROR INDICATOR*\n"
      "ERROR POSITION INFO: \n"
      "*******\n"
      "ID: 0\n"
      "Start: Line: 0   Col: 0\n"
      "StartParen: Line: 0   Col: 7\n"
      "EndParen: Line: 0   Col: 8\n"
      "EndHeader: Line: 0   Col: 8\n"
      "StartBody: Line: 0   Col: 10\n"
      "EndBody: Line: 0   Col: 13\n"
      "End: Line: 0   Col: 14\n"
      "Type: 6  Status: 1  Block: 1  Error: 1  Is Used: 0\n"
      "****************\n"
      "##########################\n"
      "## New level: 1         ##\n"
      "##########################\n" +
      // Level 1 has one candidate; then back at level 0.
      Built(0, 1, "") + Tried("0 ", 0, 1) + none + "*NOT the Same Error: RESTORING *\n" +
      Built(1, 1, "") +
      "ARG#0: snip_with_test_clock\nARG#1: -c\nARG#2: /Zs\nARG#3: /Od\nARG#4: x.fut.c\n" + kEnd;
  EXPECT_EQ(outcome.err.substr(outcome.err.find("Matching")), expected);
}

TEST(Criteria, ComeFromTheNamedFile) {
  const Workspace work;
  work.SetRules("rule\nout x(1) : error\nout it \"broke\" here\nexit 1\n");
  work.Write("criteria", "A remark: \"it \\\"broke\\\"\"\r\n");
  work.Write("x.c", "a;");
  const Outcome outcome = work.Isolate("x.c", {"/ERRORMATCH=criteria", "/VERBOSE"});
  EXPECT_NE(outcome.err.find("Pre FormatLine LineString: it \"broke\" here\n"), std::string::npos);
  EXPECT_EQ(outcome.out.back(), '1');
}

}  // namespace
}  // namespace snipwell::testing
