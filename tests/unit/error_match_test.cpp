#include "failure/error_match.h"

#include <gtest/gtest.h>

#include <iostream>

#include "printed.h"
#include "temp_folder.h"

namespace snipwell {

namespace {

using namespace std::string_literals;

/// A folder with the compiler's output, and what is written on standard error.
class ErrorMatchTest : public testing::Test {
 protected:
  ErrorMatch Make(const std::string& criteria, bool verbose = false) {
    ErrorMatch made(folder.NameOf("output"), folder.Write("criteria", criteria), verbose);
    error.Clear();
    return made;
  }

  bool Scan(ErrorMatch& errorMatch, bool first, const std::string& output) {
    folder.Write("output", output);
    return errorMatch.Scan(first);
  }

  TempFolder folder;
  Capture error{std::cerr};
};

}  // namespace

TEST_F(ErrorMatchTest, LoadsTheFirstSourceOfCriteriaThatOpens) {
  const std::string builtIn =
      "|: error|\n|internal error :|\n|internal error:|\n|Illegal READ|\n|Illegal WRITE|\n"
      "|compiler error:|\n|: catastrophic error:|\n|Catastrophic error:|\n8";
  const std::string fromDefault = "file \"ErrorMatch.txt\"";
  constexpr const char* missing = nullptr;
  const struct {
    const char* name;
    const char* given;
    const char* givenFile;
    const char* defaultFile;
    std::string source, strings;
  } rows[] = {
      {"none", "", missing, missing, "default strings", builtIn},
      {"default file", "", missing, "\"b\"", fromDefault, "|b|\n1"},
      {"given file", "given", "\"a\"", "\"b\"", "file given", "|a|\n1"},
      {"given file is missing", "given", missing, "\"b\"", fromDefault, "|b|\n1"},
      {"both are missing", "given", missing, missing, "default strings", builtIn},
      {"given file is empty", "given", "", "\"b\"", "file given", "0"},
      {"default file without quotes", "", missing, "b", fromDefault, "0"},
      {"remark", "given", "x\n\" a \"\"b\\\"\n\" \"a\" \"a\"", missing, "file given",
       "| a |\n|b\"\n|\n|a|\n|a|\n4"},
  };
  for (const auto& row : rows) {
    for (const bool verbose : {false, true}) {
      const TempFolder fresh;
      const CurrentFolder current(fresh);
      if (row.givenFile != missing) fresh.Write("given", row.givenFile);
      if (row.defaultFile != missing) fresh.Write("ErrorMatch.txt", row.defaultFile);
      const Capture output(std::cout);
      error.Clear();
      const ErrorMatch errorMatch("output", row.given, verbose);
      EXPECT_EQ(error.Text(), "Matching Criteria from " + row.source +
                                  "\nStringArray Contents\n--------------------\n" + row.strings +
                                  " Strings Total\n\n")
          << row.name;
      EXPECT_EQ(output.Text(), "") << row.name;
    }
  }
}

TEST_F(ErrorMatchTest, TakesTheFirstLineThatHoldsACriterion) {
  const std::string either = "\": error\"\"internal error:\"";
  const std::string other = "\"internal error:\"\": error\"";
  const auto x = [](std::size_t count) { return std::string(count, 'x'); };
  const struct {
    const char* name;
    std::string criteria, output, line;  // no line: none matches
  } rows[] = {
      {"first line", either, "a\nb\nc : error\nd\ninternal error: e\n", "c : error\n"},
      {"other order", other, "a\nb\nc : error\nd\ninternal error: e\n", "c : error\n"},
      {"last line without line feed", either, "a\nb : error", "b : error"},
      {"carriage returns", either, "a\r\nb\rc : error\r\n", "b\rc : error\n"},
      {"any byte", either, "\x80\0\xff: error\n"s, "\x80\0\xff: error\n"s},
      {"line feed in a criterion", "\"end\n\"", "end of\nthe end\n", "the end\n"},
      {"300 characters", either, x(292) + ": error\n", x(292) + ": error\n"},
      {"line feed does not fit", either, x(293) + ": error\n", x(293) + ": error"},
      {"second piece", either, x(300) + ": error" + x(143) + "\n", ": error" + x(143) + "\n"},
      {"third piece", either, x(600) + ": error\n", ": error\n"},
      {"cut by the end of a piece", either, x(294) + ": error\n", ""},
      {"case differs", either, "Internal Error: a\n: ERROR\n", ""},
      {"no match over a line break", "\"a\nb\"", "a\nb\n", ""},
      {"no criteria", "", "a : error\n", ""},
      {"empty output", either, "", ""},
  };
  for (const auto& row : rows) {
    ErrorMatch errorMatch = Make(row.criteria, true);
    EXPECT_EQ(Scan(errorMatch, true, row.output), !row.line.empty()) << row.name;
    EXPECT_EQ(error.Text(), row.line.empty()
                                ? "No matching errors found!\n"
                                : "Pre FormatLine LineString: " + row.line +
                                      "\nPost FormatLine LineString: " + row.line + "\n")
        << row.name;
  }
}

TEST_F(ErrorMatchTest, ComparesTheNormalisedLineWithTheReference) {
  const struct {
    const char* name;
    std::string reference, output;
    bool same;
  } rows[] = {
      {"other line number", "x.c(12) : error C1: 'y'\n", "x.c(40) : error C1: 'y'\n", true},
      {"other address", ": error at addr 0x12ab\n", ": error at addr 0xff\n", true},
      {"other lines around it", ": error 1\n", "a\nb\n: error 1\n: error 2\n", true},
      {"other line ends", ": error 1\n", "a\r\n: error 1\r\n", true},
      {"other text", ": error 1\n", ": error 2\n", false},
      {"longer", ": error 1\n", ": error 1 \n", false},
      {"other file name", "x.c(12) : error\n", "y.c(12) : error\n", false},
      {"line feed is missing", ": error 1\n", ": error 1", false},
      {"no matching line", ": error 1\n", "fine\n", false},
      {"another error comes first", ": error 1\n", ": error 2\n: error 1\n", false},
  };
  for (const auto& row : rows) {
    ErrorMatch errorMatch = Make("\": error\"");
    EXPECT_FALSE(Scan(errorMatch, false, row.reference)) << row.name << ": no reference yet";
    EXPECT_TRUE(Scan(errorMatch, true, row.reference)) << row.name;
    EXPECT_EQ(Scan(errorMatch, false, row.output), row.same) << row.name;
    EXPECT_TRUE(Scan(errorMatch, false, row.reference)) << row.name << ": reference changed";
    EXPECT_EQ(error.Text(), "") << row.name;
  }
}

TEST_F(ErrorMatchTest, ReplacesTheReferenceOfOneCopyOnly) {
  ErrorMatch original = Make("\"mine\"");
  EXPECT_FALSE(original.Scan(true)) << "there is no output file yet";
  EXPECT_TRUE(Scan(original, true, "mine 1\n"));
  EXPECT_FALSE(Scan(original, true, "fine\n")) << "keeps the reference";
  ErrorMatch copy(original);
  ErrorMatch assigned = Make("\"other\"");
  assigned = original;
  EXPECT_TRUE(Scan(original, true, "mine 2\n"));
  EXPECT_TRUE(original.Scan(false));
  EXPECT_FALSE(copy.Scan(false) || assigned.Scan(false));
  EXPECT_TRUE(Scan(copy, false, "mine 1\n") && assigned.Scan(false));
  EXPECT_FALSE(original.Scan(false));
}

TEST_F(ErrorMatchTest, FormatsALine) {
  const std::pair<std::string, std::string> rows[] = {
      {"x.c(12) : error C2065: 'y' : undeclared\n", "x.c : error C2065: 'y' : undeclared\n"},
      {"Illegal READ at addr 0x12ab\n", "Illegal READ at "},
      {"a)(b\n", "a)"},
      {"a) x(b)\n", "a) x"},
      {"f((a)b)\n", "fb)\n"},
      {"a(b)c()d\n", "acd\n"},
      {"a(b)c(d\n", "ac(d\n"},
      {"a)b\n", "a)b\n"},
      {"a addr 0x1 b addr 0x2\n", "a "},
      {"a addr (1)0x2 b\n", "a "},
      {"(addr 0x1)a\n", "a\n"},
      {"a Addr 0x1 addr 0X2\n", "a Addr 0x1 addr 0X2\n"},
      {"\xff\0(\x80)\xff"s, "\xff\0\xff"s},
      {"", ""},
  };
  for (const auto& [line, formatted] : rows) {
    EXPECT_EQ(Make("").FormatLine(line), formatted) << line;
    EXPECT_EQ(error.Text(), "");
    EXPECT_EQ(Make("", true).FormatLine(line), formatted) << line;
    EXPECT_EQ(error.Text(), "Pre FormatLine LineString: " + line +
                                "\nPost FormatLine LineString: " + formatted + "\n");
  }
}

}  // namespace snipwell
