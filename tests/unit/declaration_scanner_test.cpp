#include "source/declaration_scanner.h"

#include <gtest/gtest.h>

#include "texts.h"

namespace snipwell {

using namespace std::string_literals;

TEST(DeclarationScanner, TellsVariablesAndFunctionsApart) {
  ExpectObjects(
      Level::File,
      {{"initialised by a call", {"Declaration|int x = f(1);"}},
       {"pointer to function", {"Prototype|int (*p)(int) = 0;"}},
       {"enumeration", {"Declaration|enum E { A, class, B };"}},
       {"prototype", {"Prototype|void f(int a = 1)\n ;", "Prototype| void g() = 0;"}},
       {"operator", {"Function{}|A operator+(A a) { }", "Prototype| operator = x;"}},
       {"operator wins over class", {"Prototype|class A& operator=(B);"}},
       {"struct in the list", {"Struct{}|f(struct S s) { } int x;"}},
       {"semicolon in parentheses", {"Prototype|f(a;", "Declaration| b);"}},
       {"word behind the list", {"FunctionTrailer{}|int f() const { return 1; }"}},
       {"old style", {"FunctionTrailer{}|int f(a) int a; { }"}},
       {"trailer passes a prototype", {"FunctionTrailer{}|int g() const; int f() { }", "None| x"}},
       {"trailer without a body", {"FunctionTrailer{}|int f() const;"}}});
}

TEST(DeclarationScanner, KnowsScopesClassesAndStructs) {
  const std::string word(300, 'w');
  ExpectObjects(
      Level::File,
      {{"class name", {"ClassDeclaration|class A;"}},
       {"class", {"Class{}|class A : public B { int x; } a;"}},
       {"template", {"Class{}|template <class T> void f(T t) { } x;"}},
       {"struct", {"Struct{}|struct S { int x; };", "Struct| struct T f();"}},
       {"initialised struct", {"Declaration|struct S s = { 1 };"}},
       {"namespace", {"Scope{}|namespace N { int x = 1; }", "Declaration| namespace A = B;"}},
       {"linkage", {"Scope{}|extern \"C\" { int x; }", "Scope| extern int f(void);"}},
       {"other words",
        {"Declaration|Class a;", "Declaration| classy b;", "Declaration| class9 c;"}},
       {"class behind 300 characters", {"ClassDeclaration|" + word + "class;"}},
       {"declspec", {"Declaration|__declspec \n(x;) y;", "Declaration| __declspec(a;(8)) z;"}},
       {"declspec inside braces", {"Declaration|{ __declspec(; };"}}});
}

TEST(DeclarationScanner, EndsADirectiveWithItsLine) {
  ExpectObjects(
      Level::File,
      {{"next letter is not classified", {"Directive|#include <a.h>\n", "Declaration|class A;"}},
       {"two in a row", {"Directive|#a\\\n", "Declaration|#b\nint x;"}},
       {"empty line behind", {"Directive|#a\n", "Directive|\n#\n", "Declaration|\nint x;"}},
       {"without line feed", {"Directive|#a"}},
       {"behind what decides nothing", {"Directive|/* a */ int #b\n", "Declaration|x;"}},
       {"inside an object", {"Function{}|void f() #a\n{ }"}}});
}

TEST(DeclarationScanner, PassesOverCommentsLiteralsAndUnknownBytes) {
  ExpectObjects(Level::File,
                {{"comments", {"Declaration|// \\ ;\\\n/*/ ; { */ /*;**/ /*\n// ;*/ int x;"}},
                 {"literals", {"Declaration|f \";{\\\";\" ';' '{' g;"}},
                 {"parenthesis behind a slash", {"Declaration|a/(b);"}},
                 {"any byte", {"Declaration|int \x80\0\xff;"s}}});
}

TEST(DeclarationScanner, GivesTheRestOfTheFileToALastObject) {
  ExpectObjects(Level::File, {{"nothing left", {"Declaration|int x;"}},
                              {"comment", {"Declaration|int x;", "None| // a\n"}},
                              {"declaration without end", {"Declaration|int x;", "None| int y"}},
                              {"unclosed comment", {"Declaration|int x;", "None| /* y;"}},
                              {"unclosed literal", {"Declaration|char* s = \"a;"}},
                              {"unclosed declspec", {"None|__declspec(a;"}}});
}

TEST(DeclarationScanner, NeverCountsBelowZero) {
  ExpectObjects(Level::File, {{"brace", {"Declaration|} int x;", "Function{}| } void f() { }"}},
                              {"parenthesis", {"Prototype|) ) int f();", "Declaration| x;"}},
                              {"brace ends a scope", {"Scope|extern }", "Declaration| int x;"}}});
}

TEST(DeclarationScanner, MarksParametersHeaderAndBody) {
  ExpectMarks(Level::File,
              {{"int x;\nint y;", 1, "0:0 0:0 | 0:7 | 0:7 0:7 | 1:5"},
               {"void f(int a)\n{\n  g();\n}\n", 0, "0:7 0:13 | 0:14 | 1:1 2:6 | 3:0"},
               {"int f((int)) {}", 0, "0:6 0:12 | 0:13 | 0:15 0:14 | 0:15"},
               {"void f() { {} }", 0, "0:7 0:8 | 0:9 | 0:11 0:14 | 0:15"},
               {"void f() { { }", 0, "0:7 0:8 | 0:9 | 0:11 0:0 | 0:14"},
               {"operator { }", 0, "0:0 0:0 | 0:9 | 0:11 0:11 | 0:12"},
               {"int f() const { return 1; }", 0, "0:6 0:7 | 0:14 | 0:16 0:26 | 0:27"},
               {"int g() const; int h() { }", 0, "0:6 0:7 | 0:23 | 0:25 0:25 | 0:26"},
               {"int f() ;", 0, "0:6 0:7 | 0:8 | 0:9 0:0 | 0:9"},
               {"int a[] = { 1, 2 };", 0, "0:0 0:0 | 0:0 | 0:12 0:17 | 0:19"},
               {"class A : public B { int x; };", 0, "0:0 0:0 | 0:8 | 0:21 0:28 | 0:30"},
               {"class A : B(x:y) { };", 0, "0:0 0:0 | 0:8 | 0:19 0:19 | 0:21"},
               {"template <class A::B> struct S { };", 0, "0:0 0:0 | 0:31 | 0:33 0:33 | 0:35"},
               {"struct A : B { };", 0, "0:0 0:0 | 0:13 | 0:15 0:15 | 0:17"},
               {"int x;\nclass A { };", 1, "0:0 0:0 | 1:7 | 1:9 1:9 | 1:11"}});
}

}  // namespace snipwell
