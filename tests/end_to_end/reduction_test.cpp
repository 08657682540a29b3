// Which candidates are tried, in which order, and what is left.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {
namespace {

using Texts = std::vector<std::string>;

// The driver's compilation, the engine's, and the three preliminary checks.
constexpr std::size_t kFirstTry = 6;

struct SearchCase {
  const char* name;
  const char* source;  ///< one that cleaning does not change
  std::vector<std::string> needed;
  Texts tries;
  const char* isolated;
};

const SearchCase kSearches[] = {
    {"everything can go at once", "a;b;c;", {}, {""}, ""},
    {"an empty source has nothing to try", "", {}, {}, ""},
    {"white space at the end is one more object", "a;b;\n", {"b"}, {"", "a;b;", "a;", "b;"}, "b;"},
    {"one needed candidate alone ends its level",
     "void f(){ a;b;}",
     {"b"},
     {""},
     "void f(){ a;b;}"},
    {"six candidates are not split",
     "a;b;c;d;e;f;",
     {"a"},
     {"", "a;b;c;d;e;", "a;b;c;d;", "a;b;c;", "a;b;", "a;", ""},
     "a;"},
    {"both halves hold a needed object",
     "a;b;c;d;e;f;g;",
     {"b", "f"},
     {"", "a;b;c;", "a;b;c;d;e;f;", "a;b;c;d;e;", "a;b;c;d;f;", "a;b;c;f;", "f;", "a;b;f;", "a;f;",
      "b;f;"},
     "b;f;"},
    {"a half of seven is split again",
     "a;b;c;d;e;f;g;h;i;j;k;l;m;n;",
     {"h"},
     {"", "a;b;c;d;e;f;g;", "a;b;c;d;e;f;g;h;i;j;", "a;b;c;d;e;f;g;h;i;", "a;b;c;d;e;f;g;h;",
      "a;b;c;d;e;f;g;", "h;"},
     "h;"},
    {"the first character of a body stays",
     "void f(){a;b;}x;",
     {"f"},
     {"", "void f(){a;b;}", "", "void f(){a}"},
     "void f(){a}"},
    {"an access label stays and is no candidate",
     "class A{ public: a;b;};x;",
     {"b;"},
     {"", "class A{ public: a;b;};", "", "class A{ public:};", "class A{ public: a;};",
      "class A{ public:b;};"},
     "class A{ public:b;};"},
    {"an empty body costs no try", "void f(){}x;", {"f"}, {"", "void f(){}", ""}, "void f(){}"},
    {"a namespace in a namespace holds declarations",
     "namespace m{ namespace n{ struct S { a;}s; t; }u; }x;",
     {"t;"},
     {"", "namespace m{ namespace n{ struct S { a;}s; t; }u; }", "", "namespace m{  }",
      "namespace m{ namespace n{ struct S { a;}s; t; } }", "namespace m{  }",
      "namespace m{ namespace n{  } }", "namespace m{ namespace n{ struct S { a;}s; } }",
      "namespace m{ namespace n{  t; } }"},
     "namespace m{ namespace n{  t; } }"},
    // The scan that lists the objects passes the brace after "a;" unclassified; the scan of the
    // parent for its body begins one character earlier and takes that brace for the body's.
    {"the parent is scanned again from one character earlier",
     "a;{ void f(){ b;c;}",
     {"c"},
     {"", "a;", "a;{ ", "{ void f(){ b;c;}"},
     "{ void f(){ b;c;}"},
    // The cut of ":\n}" takes the parent's closing brace along; its body is then taken to end
    // before it starts, so the list is empty, and the ID that still waits names nothing.
    {"an ID that no object carries removes nothing",
     ";<class}{x(b);:\n}",
     {"b"},
     {"", ";", ";<class}{x", ";<class}{x(b);", ";<class}{x(b);", "<class}{x(b);"},
     "<class}{x(b);"},
    {"bodies in bodies are levels of their own",
     "void f(){ if(a){ b;c; }d;}x;",
     {"c"},
     {"", "void f(){ if(a){ b;c; }d;}", "", "void f(){ }", "void f(){ if(a){ b;c; }}",
      "void f(){ }", "void f(){ if(a){  }}", "void f(){ if(a){ b; }}", "void f(){ if(a){ c; }}"},
     "void f(){ if(a){ c; }}"},
};

TEST(Reduction, TriesTheCandidatesInOrder) {
  for (const SearchCase& row : kSearches) {
    SCOPED_TRACE(row.name);
    const Workspace work;
    work.FailWhileItHas(row.needed);
    work.Write("x.c", row.source);
    const Outcome outcome = work.Isolate("x.c");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(work.Texts(kFirstTry), row.tries);
    EXPECT_EQ(work.Read("x.tsf.c"), row.isolated);
    EXPECT_EQ(work.Read("x.c"), row.source);
  }
}

struct CheckCase {
  const char* refused;  ///< condition lines of the compilation that shows no error
  const char* lastArguments;
  const char* isolated;
  Texts traces;
};

// The rule for the failing program comes second, so `refused` decides first.
const CheckCase kChecks[] = {
    {"run 99", "snip -c /Zs /Od x.fut.c", "f( a ); \ng;", {}},
    {"lacks /*", "snip -c /Zs /Od x.fut.c", "f( a  ); /* c */\ng;", {}},
    {"arg /Zs", "snip -c /Od x.fut.c", "f( a ); \ng;", {}},
    {"arg /Od", "snip -c /Zs x.fut.c", "f( a ); \ng;", {}},
    {"run 3\nrule\narg /Zs\nrule\narg /Od",
     "snip -c x.fut.c",
     "f( a  ); /* c */\ng;",
     {"found!\n*NOT the Same Error: RESTORING *\nNot removing excess from stream\n",
      "found!\nUsing full compiler\n", "found!\nUsing given optimizations\nNum List"}},
};

TEST(PreliminaryChecks, KeepWhatKeepsTheError) {
  for (const CheckCase& row : kChecks) {
    SCOPED_TRACE(row.refused);
    const Workspace work;
    work.SetRules("rule\n" + std::string(row.refused) +
                  "\nrule\nhas f\nhas g\nout {file}(1) : error\nexit 1\n");
    work.Write("x.c", "f( a  ); /* c */\ng;");
    const Outcome outcome = work.Isolate("x.c", {"/VERBOSE"});
    EXPECT_EQ(work.Runs().back().arguments, row.lastArguments);
    EXPECT_EQ(work.Read("x.tsf.c"), row.isolated);
    for (const std::string& trace : row.traces) {
      EXPECT_NE(outcome.err.find(trace), std::string::npos) << trace;
    }
  }
}

TEST(PreliminaryChecks, CompileWhatTheyShould) {
  const Workspace work;
  work.SetRules("rule\narg /Zs\nexit 1\nrule\nhas f\nout {file}(1) : error\nexit 1\n");
  work.Write("x.c", "f ;  /* c */g;");
  work.Isolate("x.c", {"-O2", "/c"});
  std::string runs;
  for (const CompilerRun& run : work.Runs()) runs += run.arguments + " | " + run.text + '\n';
  EXPECT_EQ(runs.substr(0, runs.find("/Od x.fut.c | \n")),
            "snip -O2 /c x.c | f ;  /* c */g;\nsnip -O2 /c x.fut.c | f ;  /* c */g;\n"
            "snip -O2 /c x.fut.c | f ; g;\nsnip -O2 /c /Zs x.fut.c | f ; g;\n"
            "snip -O2 /c /Od x.fut.c | f ; g;\nsnip -O2 /c ");
}

// A flag is carried by place: of a, b, c, e with c flagged at place 2, the cut of b puts e there.
TEST(Reduction, CarriesErrorFlagsByPlace) {
  const Workspace work;
  work.FailWhileItHas({"c", "e"});
  work.Write("x.c", "a;b;c;d;e;");
  const Outcome outcome = work.Isolate("x.c", {"/VERBOSE"});
  EXPECT_EQ(Matches(outcome.err, "Current ErrAll: (.*)\n"), (Texts{"", "", "", "2 ", ""}));
}

// The parent is scanned anew after every accepted cut, so its body ends where it now ends.
TEST(Reduction, ListsABodyAsItNowStands) {
  const Workspace work;
  work.FailWhileItHas({"c;"});
  work.Write("x.c", "class B : public A { a;b;c; };x;");
  const Outcome outcome = work.Isolate("x.c", {"/VERBOSE"});
  EXPECT_EQ(Matches(outcome.err, "Num List Nodes Created: (.*)\n"),
            (Texts{"2", "2", "1", "3", "2", "1", "1"}));
  EXPECT_EQ(work.Read("x.tsf.c"), "class B : public A { c; };");
}

TEST(Reduction, NamesItsFilesAfterTheLastDot) {
  const struct {
    const char* source;
    const char* isolated;
    const char* candidate;
  } rows[] = {{"a.b.cpp", "a.b.tsf.cpp", "a.b.fut.cpp"},
              {"my prog", "my progtsf", "my progfut"},
              {"./prog.c", "./prog.tsf.c", "./prog.fut.c"},
              {"lib.old/prog", "lib.tsf.old/prog", "lib.fut.old/prog"}};
  for (const auto& row : rows) {
    const Workspace work;
    for (const char* folder : {"lib.old", "lib.tsf.old", "lib.fut.old"}) {
      std::filesystem::create_directory(work.Folder() / folder);
    }
    work.FailWhileItHas({"b"});
    work.Write(row.source, "a;b;c;");
    work.Isolate(row.source, {"two words"});
    EXPECT_EQ(work.Read(row.isolated), "b;");
    EXPECT_EQ(work.Runs().back().arguments,
              std::string("snip two words -c /Zs /Od ") + row.candidate);
    EXPECT_TRUE(work.Exists(std::string(row.source) + ".ZEDRerrfile"));
  }
}

TEST(Reduction, CarriesEveryByteThrough) {
  const Workspace work;
  work.SetRules("rule\nhas keep\nout {file}(1) : error \\xFF\\xE9\nexit 1\n");
  const std::string kept = std::string("keep\x80\xFF\0\r\"\r\xC3\xA9\0\";", 15);
  work.Write("x.c", "a;" + kept + "b;");
  work.Isolate("x.c");
  // Cleaning takes the white space outside the literal.
  EXPECT_EQ(work.Read("x.tsf.c"), std::string("keep\x80\xFF\0 \"\r\xC3\xA9\0\";", 15));
}

}  // namespace
}  // namespace snipwell::testing
