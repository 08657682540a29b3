#include "source/body_scanner.h"

#include <gtest/gtest.h>

#include "texts.h"

namespace snipwell {

using namespace std::string_literals;

TEST(BodyScanner, CutsABodyIntoStatements) {
  ExpectObjects(Level::Body,
                {{"expression", {"Statement|x = 1;", "Statement| case 1: x;"}},
                 {"for", {"Statement|for (i = 0; i < n; i++) s += i;"}},
                 {"for with a block", {"BlockStatement{}|for (;;) { a; }", "Statement| b;"}},
                 {"else", {"BlockStatement{}|if (a) { b(); }", "BlockStatement{}| else { c(); }"}},
                 {"blocks inside", {"BlockStatement{}|{ a; { do; } c; }"}},
                 {"initialiser ends", {"BlockStatement{}|int a[] = { 1 }", "None|;"}},
                 {"block in parentheses", {"BlockStatement{}|f({ a; }", "Statement|);"}},
                 {"comments", {"Statement|a /* ; */ // ;\n;"}},
                 {"literals", {"Statement|a \";{\\\";\" ';' '{';"}},
                 {"any byte", {"Statement|\x80\0\xff;"s}},
                 {"white space at the end", {"Statement|x;", "None|\n"}},
                 {"statement without end", {"None|x"}},
                 {"unclosed block", {"BlockStatement{}|{ a;"}}});
}

TEST(BodyScanner, RunsADoStatementToTheEndOfItsCondition) {
  ExpectObjects(Level::Body,
                {{"block", {"DoStatement{}|do { x++; } while (x < 3);", "Statement| y;"}},
                 {"no block", {"DoStatement|do x++;", "Statement| while (x);"}},
                 {"other word", {"Statement|double x;", "BlockStatement{}| { }"}},
                 {"first letter was read before", {"Statement|x;", "BlockStatement{}|do { }"}},
                 {"inside a block", {"BlockStatement{}|{ do { } while (0); }", "None| "}}});
}

TEST(BodyScanner, KeepsAccessLabels) {
  ExpectObjects(Level::Body,
                {{"public", {"Statement!|public:", "Statement| int x;"}},
                 {"private", {"Statement|int x;", "Statement!| private:", "Statement| y;"}},
                 {"blank before the colon", {"Statement!|public ", "Statement|:x;"}},
                 {"end of the text", {"Statement!|public"}},
                 {"protected changes nothing", {"Statement|protected: int x;"}},
                 {"other word", {"Statement|publicity = 1;"}},
                 {"inside a block", {"BlockStatement{}|struct { public: int x; }", "None|;"}},
                 {"inside parentheses", {"Statement!|f(public)", "None|;"}},
                 {"behind do", {"Statement{}!|do { } private:", "Statement| x;"}}});
}

TEST(BodyScanner, EndsADirectiveWithItsLine) {
  ExpectObjects(Level::Body, {{"directive", {"Directive|#if A\n", "Statement| x;"}},
                              {"two in a row", {"Directive|#a\n", "Statement|#b\nx;"}},
                              {"behind what decides nothing", {"Directive|x #a\n", "None|;"}},
                              {"inside a block", {"BlockStatement{}|{ #a\n }"}}});
}

TEST(BodyScanner, CountsBelowZeroUntilALaterOpenerBringsTheCountBack) {
  ExpectObjects(
      Level::Body,
      {{"end of the body behind a comment", {"Statement|a;", "None| /* b */ } int y;"}},
       {"function behind it", {"Statement|a;", "Statement| // b\n} void g() { a;", "None| } x;"}},
       {"two braces", {"Statement|} } { a; { b;", "None| } c;"}},
       {"brace back at 0 ends", {"BlockStatement{}|} { { a; }", "Statement| x;"}},
       {"words below 0", {"Statement|} public: do ; x { y;"}},
       {"parenthesis", {"Statement|a); b; (c;", "Statement| d;"}},
       {"parenthesis behind a slash", {"None|x = a/(b); y;"}}});
}

TEST(BodyScanner, MarksHeaderAndBody) {
  ExpectMarks(Level::Body, {{"f(x);", 0, "0:0 0:0 | 0:0 | 0:0 0:0 | 0:5"},
                            {"if (a) { b(); }", 0, "0:0 0:0 | 0:7 | 0:9 0:14 | 0:15"},
                            {"{ { } }", 0, "0:0 0:0 | 0:0 | 0:2 0:6 | 0:7"},
                            {"{ { }", 0, "0:0 0:0 | 0:0 | 0:2 0:0 | 0:5"},
                            {"x;\n{\n}", 1, "0:0 0:0 | 0:3 | 1:1 1:1 | 2:0"},
                            {"do { x++; } while (x < 3);", 0, "0:0 0:0 | 0:3 | 0:5 0:10 | 0:26"},
                            {"do { } { } while (0);", 0, "0:0 0:0 | 0:7 | 0:9 0:9 | 0:21"},
                            {"x; public:\ny;", 1, "0:0 0:0 | 0:3 | 0:3 0:3 | 0:10"},
                            {"} { a;", 0, "0:0 0:0 | 0:0 | 0:0 0:0 | 0:6"},
                            {"} { { a; }", 0, "0:0 0:0 | 0:4 | 0:6 0:9 | 0:10"}});
}

TEST(BodyScanner, StartsWhereTheReaderStands) {
  TextReader in = TextReader::OverMemory("void f()\n{ a; b;\n}\n");
  Position position;
  while (position < Position(1, 1)) position.Get(in);  // the first character of the body
  const char* const ends[] = {"1:3", "1:6"};
  const char* const nextStarts[] = {"1:4", "1:7"};
  for (int i = 0; i < 2; ++i) {
    ObjOrg object(position, i);
    object.ScanBody(1, in, position);
    EXPECT_EQ(At(object.GetEnd()), ends[i]);
    EXPECT_EQ(At(object.GetCurrent()), nextStarts[i]);
    EXPECT_EQ(At(position), nextStarts[i]);
  }
}

}  // namespace snipwell
