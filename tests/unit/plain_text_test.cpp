// Texts made plain: what must hold for every text, the rules in tables, and a compiler's word that
// the meaning stays.

#include "snipwell/plain_text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "refine/tokenizer.h"
#include "temp_folder.h"

namespace snipwell {

namespace {

using Change = std::optional<std::string> (*)(std::string_view);

std::string After(Change change, const std::string& text) { return change(text).value_or(text); }

struct Piece {
  TokenKind kind;
  std::string text;
};

std::vector<Piece> Pieces(const std::string& text) {
  std::vector<Piece> pieces;
  for (const Token& token : Tokenize(text)) {
    if (IsBetweenTokens(token.kind)) continue;
    pieces.push_back({token.kind, text.substr(token.begin, token.length)});
  }
  return pieces;
}

/// True when both texts have the same tokens, but for the spelling of those that a step is for.
bool HaveSameTokens(const std::string& one, const std::string& other) {
  const std::vector<Piece> left = Pieces(one);
  const std::vector<Piece> right = Pieces(other);
  bool same = left.size() == right.size();
  for (std::size_t i = 0; same && i < left.size(); ++i) {
    const bool touched = left[i].text.find_first_of("%<:>R") != std::string::npos;
    same = left[i].kind == right[i].kind && (touched || left[i].text == right[i].text);
  }
  return same;
}

std::string WithoutAnySplice(std::string text) {
  for (const char* splice : {"\\\n", "\\\r\n"}) {
    for (std::size_t at = 0; (at = text.find(splice, at)) != std::string::npos;) {
      text.erase(at, std::string(splice).size());
    }
  }
  return text;
}

/// What is wrong with what the steps make of a text, or "".
std::string ComplaintAboutPlainText(const std::string& text) {
  for (const PlainTextStep& step : PlainTextSteps()) {
    const std::string once = After(step.change, text);
    if (step.change(text) == text) return std::string(step.name) + ": changes nothing";
    if (step.change(once).has_value()) return std::string(step.name) + ": never ends";
    const bool joins = step.change == WithoutSplices;
    const bool kept =
        joins ? WithoutAnySplice(once) == WithoutAnySplice(text) : HaveSameTokens(text, once);
    if (!kept) return std::string(step.name) + ": takes more than it should";
  }
  return "";
}

void TryEveryText(const std::vector<std::string>& pieces, int more, const std::string& text = "") {
  ASSERT_EQ(ComplaintAboutPlainText(text), "") << testing::PrintToString(text);
  for (const std::string& piece : pieces) {
    if (more > 0 && !testing::Test::HasFailure()) TryEveryText(pieces, more - 1, text + piece);
  }
}

}  // namespace

TEST(PlainText, RulesHoldForEveryShortText) {
  TryEveryText({"\\", "\n", "\r", "/", "*", "\"", "R\"(", ")\"", "?", "#", "a"}, 4);
  TryEveryText({"<", ":", "%", ">", "#", "\n", "a", "R\"(", ")\"", "\\\n"}, 4);
}

TEST(PlainText, RewritesWhatEachStepIsFor) {
  const struct {
    Change change;
    std::string text;
    std::string expected;
  } rows[] = {
      {WithoutSplices, "in\\\nt a; // b\\\r\nc\n\"d\\\ne\" +\\\n+", "int a; // bc\n\"de\" ++"},
      {WithoutSplices, "R\"(a\\\nb)\" \\\n c /* \\\n */", "R\"(a\\\nb)\"  c /*  */"},
      {WithoutSplices, "#define A \\\n  b\\\n\n", "#define A   b\n"},
      {WithoutSplices, "\\\\\n\n", "\\\\\n\n"},
      {WithUsualBrackets, "a<:1:> <% %> \"<%\" '<:'", "a[1] { } \"<%\" '<:'"},
      {WithUsualBrackets, "%:define A(b) %:b b%:%:c", "#define A(b) #b b##c"},
      {WithUsualBrackets, "#define A %:#\n#define B ##%:", "#define A # #\n#define B ## #"},
      {WithUsualBrackets, "a<::b> c<:::b:>; // <:", "a<::b> c[::b]; // <:"},
      {WithPlainStrings, "R\"(a\\\"b)\"", "\"a\\\\\\\"b\""},
      {WithPlainStrings, "u8R\"x()\"\t)x\"_s", "u8\")\\\"\\011\"_s"},
      {WithPlainStrings, "LR\"(\n\r\n\r1??\?/)\"", "L\"\\n\\n\\0151?\\?\\?/\""},
      {WithPlainStrings, "#define A R\"(\n)\" b\n", "#define A \"\\n\" b\n"},
      {WithPlainStrings, "R\"(a", "R\"(a"},
      {WithPlainStrings, "\"R\\\"(a)\" 'R' // R\"(a)\"", "\"R\\\"(a)\" 'R' // R\"(a)\""},
      {WithLinesBehindDirectives, "a\n#if 1\n", "a\n#if 1\n"},
      {WithLinesBehindDirectives, "#if 1\n#endif\na\n#if 1\n\n#endif",
       "#if 1\n\n#endif\n\na\n#if 1\n\n#endif"},
      {WithLinesBehindDirectives, "#define A \\\n b /*\n*/\r\nc",
       "#define A \\\n b /*\n*/\r\n\r\nc"},
  };
  for (const auto& row : rows) EXPECT_EQ(After(row.change, row.text), row.expected) << row.text;
}

namespace {

const char kSource[] = R"source(%:include <string>
%:define JOIN(a, b) a%:%:b
#define QUO\
TED R"x("\n")x" "?" "?="
std::string texts<::> = <%QUOTED, R"(1
2\
3)", u8R"()", R"(??=	)", "spliced\
 string" /* R"( */, R"(tab	)" "1" %>; // a comm\
ent
template <class T> struct A <% T a<:2:>; %>;
struct B <% %>;
::A<::B> joined;
#if 1
wchar_t wi\
de = *LR"(\)"; int JOIN(o, ne) = 1 <\
< 2;
#endif
)source";

/// What g++ makes of a source.
std::string Compiled(const TempFolder& folder, const std::string& source) {
  const std::string name = folder.Write("in", source);
  const std::string out = folder.NameOf("out");
  std::system(("g++ -std=c++14 -x c++ -S -o " + out + " - < " + name).c_str());
  return folder.Read("out");
}

}  // namespace

TEST(PlainText, MeansTheSameToTheCompiler) {
  if (std::system("g++ --version > /dev/null 2>&1") != 0) GTEST_SKIP() << "no g++ here";
  const TempFolder folder;
  const std::string expected = Compiled(folder, kSource);
  ASSERT_NE(expected.find("?\?="), std::string::npos) << expected;
  std::string all = kSource;
  for (const PlainTextStep& step : PlainTextSteps()) {
    EXPECT_TRUE(step.change(kSource).has_value()) << step.name;
    EXPECT_EQ(Compiled(folder, After(step.change, kSource)), expected) << step.name;
    all = After(step.change, all);
  }
  EXPECT_EQ(Compiled(folder, all), expected) << all;
}

}  // namespace snipwell
