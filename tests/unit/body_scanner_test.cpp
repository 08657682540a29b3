#include "source/body_scanner.h"

#include <gtest/gtest.h>

#include "texts.h"

namespace snipwell {

TEST(BodyScanner, CutsABodyIntoStatements) {
  ExpectObjects(Level::Body,
                {{"expression", {"Statement|x = 1;", "Statement| case 1: x;"}},
                 {"for with a block", {"BlockStatement{}|for (;;) { a; }", "Statement| b;"}},
                 {"else", {"BlockStatement{}|if (a) { b(); }", "BlockStatement{}| else { c(); }"}},
                 {"blocks inside", {"BlockStatement{}|{ a; { do; } c; }"}},
                 {"initialiser ends", {"BlockStatement{}|int a[] = { 1 }", "None|;"}},
                 {"block in parentheses", {"BlockStatement{}|f({ a; }", "Statement|);"}},
                 {"comments", {"Statement|a /* ; */ // ;\n;"}},
                 {"literals", {"Statement|a \";{\\\";\\\\\" ';\"' '{\\'';"}},
                 {"white space at the end", {"Statement|x;", "None|\n"}},
                 {"statement without end", {"None|x"}}});
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
                 {"blank before the colon", {"Statement!|private ", "Statement|:x;"}},
                 {"end of the text", {"Statement!|public"}},
                 {"protected changes nothing", {"Statement|protected: int x;"}},
                 {"other word", {"Statement|publicity = 1;"}},
                 {"inside a block", {"BlockStatement{}|struct { public: int x; }", "None|;"}},
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
       {"parenthesis", {"Statement|a); b; (c;", "Statement| d;"}}});
}

TEST(BodyScanner, MarksHeaderAndBody) {
  ExpectMarks(Level::Body, {{"if (a) { b(); }", 0, "0:0 0:0 | 0:7 | 0:9 0:14 | 0:15"},
                            {"{ { } }", 0, "0:0 0:0 | 0:0 | 0:2 0:6 | 0:7"},
                            {"{ { }", 0, "0:0 0:0 | 0:0 | 0:2 0:0 | 0:5"},
                            {"x;\n{\n}", 1, "0:0 0:0 | 0:3 | 1:1 1:1 | 2:0"},
                            {"do { x++; } while (x < 3);", 0, "0:0 0:0 | 0:3 | 0:5 0:10 | 0:26"},
                            {"do { } { } while (0);", 0, "0:0 0:0 | 0:7 | 0:9 0:9 | 0:21"},
                            {"x; public:\ny;", 1, "0:0 0:0 | 0:3 | 0:3 0:3 | 0:10"},
                            {"} { { a; }", 0, "0:0 0:0 | 0:4 | 0:6 0:9 | 0:10"}});
}

}  // namespace snipwell
