// Programs laid out for people: the tokens stay whatever the program is, and the look is as written
// here.

#include "snipwell/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "refine/tokenizer.h"

namespace snipwell {

namespace {

std::string LaidOut(const std::string& text) { return LaidOut(Program(text)); }

/// The tokens of a text, each with what a compiler makes of the blanks before it: within a
/// directive there are some or none, elsewhere a directive begins or not.
std::vector<std::string> TokensOf(const std::string& text) {
  std::vector<std::string> tokens;
  bool inDirective = false;
  bool blank = false;
  for (const Token& token : Tokenize(text)) {
    if (token.kind == TokenKind::DirectiveEnd) inDirective = false;
    if (!IsBetweenTokens(token.kind) && token.kind != TokenKind::DirectiveEnd) {
      tokens.push_back((inDirective && blank ? " " : "") + text.substr(token.begin, token.length));
    }
    if (token.kind == TokenKind::DirectiveStart) {
      inDirective = true;
      tokens.back() += " starts";
    }
    blank = IsBetweenTokens(token.kind);
  }
  return tokens;
}

/// What is wrong with how a text is laid out, or "".
std::string ComplaintAboutLayout(const std::string& text) {
  const std::string laidOut = LaidOut(text);
  if (TokensOf(laidOut) != TokensOf(text)) return "other tokens: " + laidOut;
  // Literals that are not closed keep the blanks behind them, brackets can end in a directive.
  if (text.find_first_of("\\\"'#%") != std::string::npos) return "";
  if (laidOut.find(" \n") != std::string::npos) return "a line ends in a blank: " + laidOut;
  return LaidOut(laidOut) == laidOut ? "" : "laid out again it looks otherwise: " + laidOut;
}

void TryEveryText(const std::vector<std::string>& pieces, int more, const std::string& text = "") {
  ASSERT_EQ(ComplaintAboutLayout(text), "") << testing::PrintToString(text);
  for (const std::string& piece : pieces) {
    if (more > 0 && !testing::Test::HasFailure()) TryEveryText(pieces, more - 1, text + piece);
  }
}

}  // namespace

TEST(Layout, KeepsTheTokensOfEveryShortText) {
  TryEveryText({"a", "0", "\"", "/", "*", "\\", "#", "\n", " ", "R\"(", "<", ":"}, 4);
  TryEveryText({"template<", "int f", "(", "{", "}", ">>", ">", ";", "&&", "\n#define X ", "\n",
                "- -", "public:"},
               4);
}

TEST(Layout, KeepsTheTokensOfRandomPrograms) {
  const std::vector<std::string> pieces = {"struct ",
                                           "A",
                                           "B ",
                                           "f",
                                           "{",
                                           "}",
                                           "(",
                                           ")",
                                           "<",
                                           ">",
                                           ";",
                                           ";",
                                           ",",
                                           "int ",
                                           "=",
                                           "return ",
                                           "::",
                                           "1",
                                           "\"x\"",
                                           "\"",
                                           "template ",
                                           "class ",
                                           ":",
                                           "\n",
                                           "if(",
                                           "else ",
                                           "->",
                                           "...",
                                           "[",
                                           "]",
                                           "operator",
                                           "*",
                                           "&",
                                           "do ",
                                           "-",
                                           "+",
                                           "#",
                                           "## ",
                                           "enum E{a,}",
                                           "namespace ",
                                           "case ",
                                           "R\"(",
                                           ")\"",
                                           "\\",
                                           "?",
                                           "{{{",
                                           "}}}",
                                           ";};",
                                           "auto ",
                                           "\1",
                                           "\xc3",
                                           "\n#if M(",
                                           "\\\n",
                                           "//x\n",
                                           "%:",
                                           "<:",
                                           "catch(",
                                           "union ",
                                           "long_name_of_a_thing ",
                                           "typedef "};
  std::mt19937 random(3);
  for (int i = 0; i < 3000; ++i) {
    std::string text;
    for (auto length = random() % 90; length > 0; --length) {
      text += pieces[random() % pieces.size()];
    }
    ASSERT_EQ(ComplaintAboutLayout(text), "") << text;
  }
}

namespace {

const char kLaidOut[] = R"(#include <vector>
#define TWICE(x) x \
    x
#define F (x)

namespace one {
  template <class T>
  struct Pool {
    T item;
    int size() const { return 3; }
  };
}

template <class T> struct A;

template <>
struct A<int> {
  A() : b{1}, c(2) {}
  int b, c;
public:
  void f() &&;
  ~A();
};

template <typename T, typename... Ts>
auto g(T &&t, Ts &&...ts) -> decltype(t + 1) {
  if (t < 3 && t > 2) return (*t)->x;
  if (a) {
    t++;
    ++t;
  } else if (b) {
    g();
  } else {
    h();
  }
  for (int i = 0; i < 10; ++i) { f(-i); }
  for (const Job &job : jobs) f(job);
  switch (t) {
  case 1:
    return -2;
  default:
    break;
  }
  do { f(); } while (!a);
  return f(a * b) + (int)x - sizeof(int) * 3;
  try {
    f();
  } catch (...) {
    g();
  }
}

struct Job : one::Pool<int> {
  Job(const T &t) : priority(1) {}
  Job &operator=(const Job &) = delete;
  friend std::ostream &operator<<(std::ostream &o, const Job &job);
  bool operator()(int) const;
  int bits : 3;
};

enum class Colour { red, green = 3 };
int (*fp)(int, char **) = nullptr, A<int>::*pm;
std::vector<std::vector<int>> v = {{1, 2}, {3, 4}};
const char *s = "a" "b";
struct alignas(8) C : public A<int> { C(C &&) noexcept; };
int *p = new (place) int[3] + v[1][2], q = a < b;

int main(int argc, char **argv) {
  std::sort(v.begin(), v.end(), [&](auto &a, auto &b) {
    int c = a << 1;
    return c < b ? x : y;
  });
#if 1
  return sum(job.priority, "text"[0]) + ::one::Pool<Job>().size() +
      some_very_long_name(another_long_name, yet_another_name, 1234);
#endif
}
)";

}  // namespace

TEST(Layout, LooksAsPeopleWriteIt) {
  // Of the look of the source nothing must be left but its lines within directives.
  std::string source;
  std::istringstream lines(kLaidOut);
  for (std::string line; std::getline(lines, line);) {
    const bool directive = line[0] == '#' || (!line.empty() && line.back() == '\\');
    source += (line[0] == '#' ? "\n" : "") + line + (directive || line == "    x" ? "\n" : " ");
  }
  EXPECT_EQ(LaidOut(source), kLaidOut);
  std::string wide;
  for (const char c : std::string("int a(){b(c,d<e>::f);}struct A{int*p;};")) {
    wide += c;
    if (std::string("(){},;<>*").find(c) != std::string::npos) wide += "\n \t ";
  }
  EXPECT_EQ(LaidOut(wide), "int a() { b(c, d<e>::f); }\nstruct A { int *p; };\n");
}

TEST(Layout, TakesNoMoreTimeForDeepPrograms) {
  std::string deep;
  for (int i = 0; i < 30000; ++i) deep += "{a;f(b<";
  EXPECT_LT(LaidOut(deep + std::string(30000, '}')).size(), 100 * deep.size());
}

}  // namespace snipwell
