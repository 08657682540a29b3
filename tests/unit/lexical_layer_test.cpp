#include "source/lexical_layer.h"

#include <gtest/gtest.h>

#include "texts.h"

namespace snipwell {

namespace {

using namespace std::string_literals;

/// A text, and where a step that starts on its first character leaves the layer: the step's answer,
/// then between bars what is still to be classified.
struct Row {
  std::string text, after;
};

template <typename Step, std::size_t count>
void ExpectAfter(Step step, const Row (&rows)[count]) {
  for (const Row& row : rows) {
    TextReader in = TextReader::OverMemory(row.text);
    Position position;
    ObjOrg object(position, 0);
    LexicalLayer layer(in, object, position);
    layer.Advance();
    std::string after = step(layer) + "|";
    for (; layer.IsGood(); layer.Advance()) after += layer.GetChar();
    EXPECT_EQ(after + "|", row.after) << row.text;
    EXPECT_EQ(layer.GetChar(), '\0') << row.text;
  }
}

std::string YesOrNo(bool answer) { return answer ? "yes" : "no"; }

}  // namespace

TEST(LexicalLayer, PutsEveryCharacterIntoItsClass) {
  const std::string characters[] = {
      "\0"s,       "",           "",
      "#",         "/",          "\"",
      "'",         "0123456789", "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$",
      " \t\v\f\r", "\n",         ";",
      "{",         "=",          ":",
      "}",         "(",          ")"};
  for (int code = 0; code < 256; ++code) {
    int expected = 2;
    for (int i = 0; i < 18; ++i) {
      if (characters[i].find(static_cast<char>(code)) != std::string::npos) expected = i;
    }
    EXPECT_EQ(static_cast<int>(ClassOf(static_cast<char>(code))), expected) << "code " << code;
  }
}

TEST(LexicalLayer, ReadsAWordOfAtMost300Characters) {
  const std::string longest(300, 'w');
  const Row rows[] = {{"int x", "yes int| x|"},
                      {"_a$9+b", "yes _a$9|+b|"},
                      {"9lives ", "yes 9lives| |"},
                      {"a\xe9", "yes a|\xe9|"},
                      {"a\0b"s, "yes a|\0b|"s},
                      {"\xe9t", "no |\xe9t|"},
                      {"+a", "no |+a|"},
                      {longest, "yes " + longest + "||"},
                      {longest + "xy;", "yes " + longest + "|xy;|"}};
  const auto readWord = [](LexicalLayer& layer) {
    const std::string answer = YesOrNo(layer.ReadWord());
    return answer + " " + layer.GetWord();
  };
  ExpectAfter(readWord, rows);
}

TEST(LexicalLayer, SkipsAnyRunOfWhiteSpace) {
  const Row rows[] = {
      {" \n\n\ty", "yes|y|"}, {"\n \n z", "yes|z|"},    {"\v\f\r\tx ", "yes|x |"}, {"\n", "yes||"},
      {"x ", "no|x |"},       {"\xa0 x", "no|\xa0 x|"}, {"\0 x"s, "no|\0 x|"s},
  };
  ExpectAfter([](LexicalLayer& layer) { return YesOrNo(layer.SkipWhiteSpace()); }, rows);
}

TEST(LexicalLayer, SkipsACommentOrTheCharacterBehindALoneSlash) {
  const Row rows[] = {
      {"// a\nz", "yes|z|"},  {"//\n/", "yes|/|"}, {"// a\\\nz", "yes|z|"}, {"// a", "yes||"},
      {"/*a*b*/c", "yes|c|"}, {"/**/c", "yes|c|"}, {"/***/c", "yes|c|"},    {"/*/ a */c", "yes|c|"},
      {"/*\n// *", "yes||"},  {"/=2", "no|2|"},    {"/(b)", "no|b)|"},      {"/", "no||"},
  };
  ExpectAfter([](LexicalLayer& layer) { return YesOrNo(layer.SkipComment()); }, rows);
}

TEST(LexicalLayer, SkipsALiteralUpToItsUnescapedQuote) {
  const Row rows[] = {
      {"\"a\\\"b\";", "|;|"}, {"\"\\\\\";", "|;|"}, {"'\\'\"';", "|;|"}, {"\"\";", "|;|"},
      {"\"'\n\";", "|;|"},    {"\"a", "||"},        {"\"a\\", "||"},
  };
  ExpectAfter([](LexicalLayer& layer) { return layer.SkipQuoted(), ""s; }, rows);
}

TEST(LexicalLayer, SkipsALineThatNoBackslashContinues) {
  const Row rows[] = {
      {"# a\nint", "|int|"},    {"#\n\nx", "|\nx|"}, {"\n a\nb", "|b|"},
      {"#a\\\nb\nc", "|b\nc|"}, {"#a", "||"},
  };
  ExpectAfter([](LexicalLayer& layer) { return layer.SkipLine(), ""s; }, rows);
}

TEST(LexicalLayer, EndsADeclspecAtItsFirstClosingParenthesis) {
  const Row rows[] = {
      {" (dllimport) int", "| int|"},
      {"(align(8)) int", "|) int|"},
      {"\n int (x)", "|int (x)|"},
      {"(a", "||"},
  };
  ExpectAfter([](LexicalLayer& layer) { return layer.SkipDeclspec(), ""s; }, rows);
}

}  // namespace snipwell
