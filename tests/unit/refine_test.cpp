// The second stage without a compiler: what must hold for every text, and searches with judges
// that only look at the text.

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <iterator>
#include <map>
#include <random>

#include "refine/search.h"
#include "refine_invariants.h"

namespace snipwell {

namespace {

/// Tries `text` and every text that goes on from it by up to `more` pieces.
void TryEveryText(const std::vector<std::string>& pieces, int more, const std::string& text = "") {
  ASSERT_EQ(ComplaintAboutRefining(text), "") << testing::PrintToString(text);
  for (const std::string& piece : pieces) {
    if (more > 0 && !testing::Test::HasFailure()) TryEveryText(pieces, more - 1, text + piece);
  }
}

}  // namespace

TEST(RefineInvariants, HoldForEveryShortText) {
  TryEveryText(
      {"a", "0", "\"", "'", "/", "*", "\\", "#", "\n", " ", "R\"(", ")", "{", "<", ">", ":"}, 3);
  TryEveryText({"struct A", "template", "int f", "(", ")", "{", "}", "<", ">>", ",", ";",
                "::", "\n#define X", "\n", "= 1"},
               3);
}

TEST(RefineInvariants, HoldForRandomPrograms) {
  const std::string pieces[] = {"struct ",
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
                                ",",
                                "int ",
                                "=",
                                "return ",
                                "::",
                                "1",
                                "\"x\"",
                                "class ",
                                ":",
                                "\n",
                                "x",
                                "*",
                                "->",
                                "A {};",
                                "*B",
                                "typedef ",
                                "namespace ",
                                "{};",
                                "a=1;",
                                "B;",
                                ".",
                                "template<>",
                                "requires ",
                                "#include <a>\n",
                                "f(A x){x",
                                "f(1)",
                                "class A{};",
                                "class C:A{",
                                "A()",
                                "using a",
                                "#define M(a) a\n"};
  std::mt19937 random(1);
  std::map<std::string, std::size_t> edits;
  for (int i = 0; i < 150; ++i) {
    std::string text;
    for (int length = 0; length < 60; ++length) text += pieces[random() % std::size(pieces)];
    ASSERT_EQ(ComplaintAboutRefining(text), "") << text;
    const Program program(text);
    for (const Pass& pass : Passes()) edits[pass.name] += pass.edits(program, Tree(program)).Size();
  }
  for (const auto& [pass, count] : edits) {
    // One is for large programs only.
    EXPECT_TRUE(count > 0 || pass == "large items") << pass;
  }
}

namespace {

const Pass& PassOf(const std::string& name) {
  const auto isIt = [&](const Pass& pass) { return pass.name == name; };
  return *std::find_if(Passes().begin(), Passes().end(), isIt);
}

/// What each edit of a pass makes of a program, a line each, blanks only where they must be.
std::string AllOf(const std::string& pass, const std::string& source) {
  Program program(source);
  const EditList edits = PassOf(pass).edits(program, Tree(program));
  std::string all = "\n";
  for (std::size_t i = 0; i < edits.Size(); ++i) {
    Draft draft(program, edits);
    draft.Make(i);
    all += draft.Render() + "\n";
  }
  return all;
}

}  // namespace

TEST(RefinePasses, MakeTheEditsTheyAreNamedFor) {
  const struct {
    const char* pass;
    const char* source;
    const char* result;  // of one of the edits
  } table[] = {
      {"unused", "struct A{};struct B{A a;};struct C{};", "struct C{};"},
      {"unused", "struct A;int A::f(){}int g();", "int g();"},
      {"unused", "template<class T>struct A{};template<>struct A<int>{};int b;", "int b;"},
      {"unused", "template<class>struct A{};struct B{};template<>struct A<B>{};A<B>b;int c;",
       "template<class>struct A{};struct B{};template<>struct A<B>{};A<B>b;"},
      {"unused", "template<class>struct A{};struct B{};template<>struct A<B>{};A<int>b;",
       "template<class>struct A{};A<int>b;"},
      {"unused", "struct A{};int f(A);int f(B);int f(C);int f(D);int f(E);int b;A a=f(1);",
       "int b;"},
      {"unused", "struct A;struct B{A*a;};struct A{B*b;};int c;",
       "struct A;struct B{A*a;};struct A{B*b;};"},
      {"unused", "typedef int a;namespace b{using::a;}int c;b::a d;", "int c;"},
      {"unused", "struct A;int c;template<class T>concept B=requires{{f()}->A;};B b;", "int c;"},
      {"unused", "struct size{};int f(){return a.size;}", "int f(){return a.size;}"},
      {"unused", "int f();int g(){f();}int h();", "int h();"},
      {"unused", "namespace a{}inline namespace b{int c;}int d;",
       "namespace a{}inline namespace b{}int d;"},
      {"includes", "#include <a>\n#if 1\n#include \"b\"\n#endif\nint a;", "#if 1\n#endif\nint a;"},
      {"items", "template<class T>requires requires{T();}struct A;int b;", "int b;"},
      {"items", "int a;int b;int c;", "int b;int c;"},
      {"items", "f(a,b,c);", "f(a,b);"},
      {"empty groups", "int f(int a){return a;}", "int f(int a);"},
      {"groups unwrapped", "if(a){b();}", "b();"},
      {"template heads", "template<class T>T f();int a=f<int>();", "T f();int a=f();"},
      {"template heads", "template<class T=A,int n>T f(){n;}T a;", "int f(){0;}T a;"},
      {"parameters", "void f(int a,int b){}int c=f(1,2);", "void f(int b){}int c=f(2);"},
      {"everywhere", "a::b c(a::d);", "b c(d);"},
      {"everywhere", "F(a)F(b)c", "c"},
      {"everywhere", "int*a;a->b;", "int a;a.b;"},
      {"everywhere", "int a;f(a,b);", "f(b);"},
      {"brackets", "a=(b);", "a=b;"},
      {"brackets", "struct A:B<C>{};", "struct A:C{};"},
      {"values", "f(a+b,1);", "f(0,1);"},
      {"values", "return f(1);", "return 0;"},
      {"types", "std::vector<int>::iterator a;", "int a;"},
      {"types", "typename A::template B<int>::C a;", "int a;"},
      {"classes", "struct A{};template<class T>struct B{};B<int>::C c;",
       "struct A{};template<class T>struct B{};A c;"},
      {"classes", "struct A{};A a=f(1,2);", "struct A{};A a=A();"},
      {"namespaces", "namespace a{int b;}int c=a::b;", "int b;int c=b;"},
      {"namespaces", "inline namespace std{int b;}int c=std::b;", "int b;int c=b;"},
      {"scopes joined", "namespace a{int b;}namespace a{int c;}", "namespace a{int b;int c;}"},
      {"scopes", "struct A{int b;};int f(){A a;a.b=a.b;}", "int b;int f(){b=b;}"},
      {"inlining", "typedef int A;A a;", "int a;"},
      {"inlining", "#define A (1)\nint a=A;", "int a=(1);"},
      {"inlining", "using A=B<int>;A a;", "B<int>a;"},
      {"inlining", "int a{1};f(a);", "f(1);"},
      {"inlining", "int f(){int a=1;a;}int g(){int a=2;a;}", "int f(){int a=1;a;}int g(){2;}"},
      {"inlining", "a=b+1;f(a);", "f(b+1);"},
      {"arguments", "int f(int a,int b){return a;}f(1,2);", "int f(int b){return 1;}f(2);"},
      {"declarations", "struct A;A*a;struct A{};", "struct A{};A*a;"},
      {"declarations", "template<class=int>struct A;template<class T>struct A{};",
       "template<class=int>struct A{};"},
      {"bodies", "struct A{A():b(1){}};", "struct A{A();};"},
      {"bodies", "int f()requires requires{a;}{b;}", "int f()requires requires{a;};"},
      {"bodies", "struct A{[[nodiscard]]friend int f(){}};", "struct A{friend int f();};"},
      {"bodies", "int A::f(){return 1;}int g();", "int g();"},
      {"other bodies", "void f(){}void g(){h();}", "void f(){h();}"},
      {"bases", "struct A{int a;};struct B:public n::A{int b;};", "struct B{int a;int b;};"},
      {"bases", "template<class T>requires requires{T();}struct A<T>{int a;};struct B:A<int>{};",
       "struct B{int a;};"},
      {"objects", "struct A{int a;};int b=A().a;", "struct{int a;}A;int b=A.a;"},
      {"other types", "struct A{};struct B{};B b;", "struct A{};A b;"},
      {"other types", "struct A{};struct B{};A b;", "struct B{};B b;"},
      {"other types", "struct A;struct A{};A b;", "int b;"},
      {"pairs", "struct A*b;b->c;", "struct A b;b.c;"},
      {"short names", "int count=1;count;", "int a=1;a;"},
  };
  for (const auto& [pass, source, result] : table) {
    const std::string all = AllOf(pass, source);
    EXPECT_NE(all.find("\n" + std::string(result) + "\n"), std::string::npos) << source << all;
  }
}

/// Twice the program may have a little more than twice the cuts, for the halves of the whole.
TEST(RefinePasses, GrowWithTheProgram) {
  const std::string flat =
      "struct A;struct A{int a=1;};typedef A B;int f(){A a=g(a);a.b;return a->c::d(1,\"x\");}\n"
      "namespace n{}namespace n{template<class T,int N>T h(T t){}}\n";
  const auto count = [](const Pass& pass, const std::string& text) {
    const Program program(text);
    const EditList edits = pass.edits(program, Tree(program));
    std::size_t cuts = edits.Size();
    for (std::size_t i = 0; i < edits.Size(); ++i) cuts += edits[i].end() - edits[i].begin();
    return cuts;
  };
  const auto times = [](int number, const std::string& text) {
    std::string all;
    while (number-- > 0) all += text;
    return all;
  };
  for (const Pass& pass : Passes()) {
    const std::size_t once = count(pass, times(50, flat));
    EXPECT_LE(count(pass, times(100, flat)), once * 5 / 2 + 10) << pass.name;
    const std::size_t deep = count(pass, times(50, "struct A{A a=(1,") + times(50, ");};"));
    EXPECT_LE(count(pass, times(100, "struct A{A a=(1,") + times(100, ");};")), deep * 5 / 2 + 10)
        << pass.name << ", nested";
  }
}

namespace {

/// Judges by the text alone, and answers open questions in a random order.
class TextJudge : public Judge {
 public:
  TextJudge(std::size_t placeCount, unsigned seed, std::function<bool(const std::string&)> judging)
      : places(placeCount), random(seed), judge(std::move(judging)) {}

  std::size_t Places() const override { return places; }
  void Ask(std::size_t place, const std::string& program) override {
    open.push_back({place, judge(program)});
  }
  void Drop(std::size_t place) override {
    const auto isAt = [place](const Answer& answer) { return answer.place == place; };
    open.erase(std::remove_if(open.begin(), open.end(), isAt), open.end());
  }
  std::optional<Answer> Await() override {
    if (answers-- == 0) return std::nullopt;
    std::swap(open.at(random() % open.size()), open.back());
    const Answer answer = open.back();
    open.pop_back();
    return answer;
  }

 private:
  std::size_t places;
  std::mt19937 random;
  std::function<bool(const std::string&)> judge;
  std::vector<Answer> open;

 public:
  std::size_t answers = SIZE_MAX;  ///< to give before it stops the search
};

bool HoldsInOrder(const std::vector<std::string>& wanted, const std::string& text) {
  const Program program(text);
  std::size_t next = 0;
  for (std::size_t i = 0; i < program.Size() && next < wanted.size(); ++i) {
    if (program.Text(i) == wanted[next]) ++next;
  }
  return next == wanted.size();
}

/// All programs that a search accepts, joined.
std::string Accepted(const std::string& source, const std::vector<std::string>& wanted,
                     std::size_t places, unsigned seed) {
  TextJudge judge(places, seed,
                  [&](const std::string& text) { return HoldsInOrder(wanted, text); });
  std::string all;
  Search search(judge, Program(source),
                [&](const Program&, const std::string& text) { all += text + "\n--\n"; });
  EXPECT_TRUE(search.Run(Passes()));
  const Program& result = search.Result();
  EXPECT_EQ(TextsOf(result, result.Words()), wanted);
  return all;
}

const char kSource[] =
    "#include <vector>\n#define TWICE(x) x x\n"
    "namespace one { template <class T> struct Pool { T item; int size() const { return 3; } }; }\n"
    "int sum(int first, int second) { for (int i = 0; i < second; ++i) { first += i; } return "
    "first; }\n"
    "struct Job : one::Pool<int> { Job() : priority(1) {} int priority; };\n"
    "int main() { Job job; return sum(job.priority, \"text\"[0]) + one::Pool<Job>().size(); }\n";

}  // namespace

TEST(RefineSearch, LeavesJustWhatIsWanted) {
  const Program program(kSource);
  std::vector<std::string> plain;  // what brackets and directives do not hold together
  for (const Word& word : program.Words()) {
    const std::string text(program.Text(word));
    if (std::string("#()[]{}<>\n<vector>").find(text) == std::string::npos) plain.push_back(text);
  }
  std::mt19937 random(2);
  for (unsigned round = 0; round < 20; ++round) {
    std::vector<std::string> wanted;
    for (const std::string& text : plain) {
      if (random() % 12 == 0) wanted.push_back(text);
    }
    const std::string accepted = Accepted(kSource, wanted, 1, round);
    for (const std::size_t places : {2, 7}) {
      EXPECT_EQ(Accepted(kSource, wanted, places, round), accepted) << places << " places";
    }
  }
}

TEST(RefineSearch, LeavesSmallItemsOfALargeProgramForLater) {
  std::string source;
  for (int i = 0; i < 20; ++i) source += kSource;
  Program program(source);
  const EditList edits = PassOf("large items").edits(program, Tree(program));
  std::size_t tried = 0;
  for (std::size_t i = 0; i < edits.Size(); ++i) tried += !edits.IsLeftOut(i, program.Size());
  EXPECT_GT(tried, 100U);
  EXPECT_LT(tried, edits.Size() / 4);
  const std::vector<std::string> wanted = {"class", "item", "for", "first", "job"};
  EXPECT_EQ(Accepted(source, wanted, 3, 1), Accepted(source, wanted, 1, 2));
}

TEST(RefineSearch, LeavesWhatHoldsWheneverItIsStopped) {
  const std::vector<std::string> wanted = {"template", "class", "item", "for", "first", "job"};
  std::size_t smallest = SIZE_MAX;
  for (std::size_t answers = 0; answers < 400; answers += 1 + answers / 20) {
    TextJudge judge(3, 1, [&](const std::string& text) { return HoldsInOrder(wanted, text); });
    judge.answers = answers;
    std::string last = Program(kSource).Render();
    Search search(judge, Program(kSource),
                  [&](const Program&, const std::string& text) { last = text; });
    if (search.Run(Passes())) {
      EXPECT_EQ(TextsOf(search.Result(), search.Result().Words()), wanted) << answers;
    }
    EXPECT_EQ(search.Result().Render(), last) << answers;
    EXPECT_TRUE(HoldsInOrder(wanted, last)) << answers;
    EXPECT_LE(search.Result().Size(), smallest) << answers;
    smallest = search.Result().Size();
  }
}

}  // namespace snipwell
