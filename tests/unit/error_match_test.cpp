#include "failure/error_match.h"

#include <gtest/gtest.h>

#include <iostream>

#include "printed.h"
#include "temp_folder.h"

namespace snipwell {

namespace {

using namespace std::string_literals;

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
  const std::string fromDefault = "file \"ErrorMatch.txt\"";
  const struct {
    std::string given, file, content, source, strings;
  } rows[] = {
      {"given", "given", "\"a\"", "file given", "|a|\n1"},
      {"given", "given", "", "file given", "0"},
      {"given", "other", "", fromDefault, "|b|\n1"},
      {"", "ErrorMatch.txt", "x \"a\\\"\n\"", fromDefault, "|a\"\n|\n1"},
  };
  for (const auto& row : rows) {
    const TempFolder fresh;
    const CurrentFolder current(fresh);
    fresh.Write("ErrorMatch.txt", "\"b\"");
    fresh.Write(row.file, row.content);
    error.Clear();
    const ErrorMatch errorMatch("output", row.given, false);
    EXPECT_EQ(error.Text(), "Matching Criteria from " + row.source +
                                "\nStringArray Contents\n--------------------\n" + row.strings +
                                " Strings Total\n\n");
  }
}

TEST_F(ErrorMatchTest, TakesTheFirstLineThatHoldsACriterion) {
  const auto x = [](std::size_t count) { return std::string(count, 'x'); };
  const struct {
    std::string output, line;  // no line: none matches
  } rows[] = {
      {"a\nb\nc : error\nd\ninternal error: e\n", "c : error\n"},
      {"a\nb : error", "b : error"},
      {"\x80\r\0\xff: error\r\n"s, "\x80\r\0\xff: error\n"s},
      {"end of\nthe end\n", "the end\n"},
      {x(292) + ": error\n", x(292) + ": error\n"},
      {x(293) + ": error\n", x(293) + ": error"},
      {x(600) + ": error\n", ": error\n"},
      {x(294) + ": error\n", ""},  // cut by the end of a piece
      {"Internal Error: a\n: ERROR\n", ""},
      {"a\nb\n", ""},  // no match over a line break
  };
  ErrorMatch errorMatch = Make("\": error\"\"internal error:\"\"end\n\"\"a\nb\"", true);
  for (const auto& row : rows) {
    error.Clear();
    EXPECT_EQ(Scan(errorMatch, true, row.output), !row.line.empty()) << row.output;
    EXPECT_EQ(error.Text(), row.line.empty()
                                ? "No matching errors found!\n"
                                : "Pre FormatLine LineString: " + row.line +
                                      "\nPost FormatLine LineString: " + row.line + "\n");
  }
}

TEST_F(ErrorMatchTest, ComparesTheNormalisedLineWithTheReference) {
  const struct {
    std::string output;
    bool same;
  } rows[] = {
      {"x.c(40) : error 1 addr 0xff\n", true},
      {"a\r\nx.c(1) : error 1 addr 0x1\r\n: error 2\n", true},
      {"x.c(12) : error 1 addr 0x12ab", true},
      {"x.c(12) : error 1 addr 12ab\n", false},
      {"y.c(12) : error 1 addr 0x12ab\n", false},
      {"x.c(12) : error 1\n", false},
      {"fine\n", false},
      {": error 2\nx.c(12) : error 1 addr 0x12ab\n", false},
  };
  ErrorMatch errorMatch = Make("\": error\"");
  EXPECT_FALSE(errorMatch.Scan(true)) << "there is no output file yet";
  EXPECT_TRUE(Scan(errorMatch, true, "x.c(12) : error 1 addr 0x12ab\n"));
  EXPECT_FALSE(Scan(errorMatch, true, "fine\n")) << "keeps the reference";
  for (const auto& row : rows) EXPECT_EQ(Scan(errorMatch, false, row.output), row.same);
  ErrorMatch copy(errorMatch);
  EXPECT_TRUE(Scan(copy, true, ": error 2\n"));
  EXPECT_TRUE(!errorMatch.Scan(false) && copy.Scan(false)) << "the copy's own reference";
  EXPECT_EQ(error.Text(), "");
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
      {"a addr 0x1 b addr 0x2\n", "a "},
      {"a addr (1)0x2 b\n", "a "},
      {"(addr 0x1)a\n", "a\n"},
      {"a Addr 0x1 addr 0X2\n", "a Addr 0x1 addr 0X2\n"},
      {"\xff\0(\x80)\xff"s, "\xff\0\xff"s},
      {"", ""},
  };
  for (const auto& [line, formatted] : rows)
    EXPECT_EQ(Make("").FormatLine(line), formatted) << line;
}

}  // namespace snipwell
