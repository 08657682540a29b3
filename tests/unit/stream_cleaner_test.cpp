#include "text/stream_cleaner.h"

#include <gtest/gtest.h>

#include "texts.h"

namespace snipwell {

namespace {

using namespace std::string_literals;

struct Row {
  const char* name;
  std::string text, cleaned;
};

void ExpectCleaned(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(Cleaned(row.text), row.cleaned) << row.name;
}

}  // namespace

TEST(StreamCleaner, CollapsesWhiteSpace) {
  ExpectCleaned({{"between words", "a \t  b\tc", "a b c"},
                 {"other blanks", "a\v\f\rb\rc", "a b c"},
                 {"empty lines and indentation", "a  \n\n \n   b", "a\nb"},
                 {"backslash at the end of a line", "a \\\n  b", "a \\\nb"},
                 {"at both ends", "  a \n", " a\n"},
                 {"blanks only", " \t ", " "},
                 {"line feed among blanks", " \n ", "\n"},
                 {"nothing", "", ""},
                 {"any byte", "\x80 \xa0  \0 \xff"s, "\x80 \xa0 \0 \xff"s}});
}

TEST(StreamCleaner, DropsCommentsWithoutATrace) {
  ExpectCleaned({{"joins the next line", "a // c\nb", "a b"},
                 {"joins a preprocessor line", "a;// c\n#b  c\n", "a;#b  c\n"},
                 {"line of its own", "a\n// b\nc", "a\nc"},
                 {"joins words", "a/* */b", "ab"},
                 {"blanks on both sides", "a /* b */ c", "a  c"},
                 {"shortest", "a/**/b/***/c", "abc"},
                 {"the opening star does not close", "/*/ a */b", "b"},
                 {"no nesting", "/* /* // */ */", " */"},
                 {"backslash does not continue", "// /* a\\\nb", "b"},
                 {"quotes in comments", "/* ' \" */a  // it's \"\nb", "a b"},
                 {"directive in a comment", "/*\n#a  b\n*/c  d", "c d"},
                 {"never closed", "a /* b *", "a "},
                 {"at the end", "a//b", "a"}});
}

TEST(StreamCleaner, LeavesTheCharacterBehindALoneSlashAlone) {
  ExpectCleaned({{"blank", "a /   b", "a /  b"},
                 {"line feed", "a /\n\n\nb", "a /\n\nb"},
                 {"quotes", "/\"a  b/'  c", "/\"a b/' c"},
                 {"number sign", "/#a  b", "/#a b"},
                 {"end", "a/", "a/"}});
}

TEST(StreamCleaner, CopiesLiterals) {
  ExpectCleaned({{"comments and escaped quote", R"("//  \" /* "  b)", R"("//  \" /* " b)"},
                 {"escaped apostrophe", R"('\''  a)", R"('\'' a)"},
                 {"escaped backslash", R"("\\"  a)", R"("\\" a)"},
                 {"other quote", R"("'"  '"'  a)", R"("'" '"' a)"},
                 {"empty", R"(""  ''  a)", R"("" '' a)"},
                 {"line feeds, number sign", "\"a\n\n  #b\"  c", "\"a\n\n  #b\" c"},
                 {"side by side", R"("a  ""b  "  c)", R"("a  ""b  " c)"},
                 {"never closed", "\"a  //\n\n", "\"a  //\n\n"},
                 {"backslash at the end", R"("a  \)", R"("a  \)"},
                 {"backslash outside", R"(\"a  b")", R"(\"a  b")"},
                 {"any byte", "'\x80  \0'"s, "'\x80  \0'"s}});
}

TEST(StreamCleaner, CopiesPreprocessorLines) {
  ExpectCleaned({{"with its comment", "#a  // b\n  c", "#a  // b\n c"},
                 {"continued line is ordinary text", "#a  \\\n   b  c", "#a  \\\n b c"},
                 {"empty line behind", "#a\n\n\n#b  c", "#a\n\n#b  c"},
                 {"in the middle of a line", "a  #b  c\nd  e", "a #b  c\nd e"},
                 {"nothing goes on", "#a /* \"  b\nc  d", "#a /* \"  b\nc d"},
                 {"without line feed", "#a  b", "#a  b"},
                 {"number sign alone", "#\n  a", "#\n a"}});
}

}  // namespace snipwell
