#pragma once

#include <cstddef>
#include <vector>

#include "refine/edit.h"
#include "refine/program.h"
#include "refine/tree.h"

namespace snipwell {

/// One kind of change, tried all over a program. It looks at the program once; its edits are as
/// many as the program has words, times a constant at most.
struct Pass {
  const char* name;
  EditList (*edits)(const Program& program, const Tree& tree);
  /// Where it takes one of so many parts of a program, the passes begin anew behind it; with 0 they
  /// never do.
  std::size_t parts = 4;
  bool renames = false;  ///< it only gives names, so no other pass has more to gain behind it
};

/// All passes in their order, from coarse to fine.
const std::vector<Pass>& Passes();

// Each with what it makes of a line.

/// int f() { return 1; } int g() { return 2; }  ->  int f(); int g();
EditList RemoveBodies(const Program& program, const Tree& tree);
/// struct A {}; struct B { A a; }; struct C {};  ->  struct C {};
EditList RemoveUnused(const Program& program, const Tree& tree);
/// #include <a>\n #include <b>\n int a;  ->  int a;
EditList RemoveIncludes(const Program& program, const Tree& tree);
/// The same as for items, but only the large ones, and only in a large program.
EditList RemoveLargeItems(const Program& program, const Tree& tree);
/// int a; int b; int c;  ->  int b;
EditList RemoveItems(const Program& program, const Tree& tree);
/// int f(int a) { return a; }  ->  int f() {}  or  int f(int a);
EditList EmptyGroups(const Program& program, const Tree& tree);
/// if (a) { b(); }  ->  b();
EditList UnwrapGroups(const Program& program, const Tree& tree);
/// const int a = b + c;  ->  int a = b;
EditList RemoveNeighbours(const Program& program, const Tree& tree);
/// a = (b); c<d> e;  ->  a = b; c<d> e;  or  a = (b); d e;
EditList RemoveBrackets(const Program& program, const Tree& tree);

/// f(12, "text", a + b)  ->  f(0, "", 0)
EditList PlainValues(const Program& program, const Tree& tree);
/// std::vector<int>::iterator a; T b;  ->  int a; int b;
EditList PlainTypes(const Program& program, const Tree& tree);
/// struct A {}; a<int>::b c = f(1, 2);  ->  struct A {}; A c = f(1, 2);  or  ... c = A();
EditList PutInClasses(const Program& program, const Tree& tree);

/// void f(int a, int b); f(1, 2);  ->  void f(int b); f(2);
EditList RemoveParameters(const Program& program, const Tree& tree);
/// template <class T> T f(); f<int>();  ->  T f(); f();  or  int f(); f();
EditList RemoveTemplateHeads(const Program& program, const Tree& tree);
/// int a; int b = a; a = b;  ->  int b;  and  a::b c(a::d);  ->  b c(d);
/// F(a) F(b) c  ->  c                    and  int *a; a->b;  ->  int a; a.b;
EditList RemoveEverywhere(const Program& program, const Tree& tree);

/// namespace a { int b; } int c = a::b;  ->  int b; int c = b;
EditList FlattenNamespaces(const Program& program, const Tree& tree);
/// struct A { int b; }; int f() { A a; a.b; }  ->  int b; int f() { b; }
EditList FlattenScopes(const Program& program, const Tree& tree);
/// namespace a { int b; } namespace a { int c; }  ->  namespace a { int b; int c; }
EditList JoinScopes(const Program& program, const Tree& tree);
/// typedef int A; A a = 1; f(a);  ->  int a = 1; f(a);  ->  f(1);
/// #define A int  A a;  ->  int a;
EditList InlineNames(const Program& program, const Tree& tree);
/// int f(int a) { return a; } f(1);  ->  int f() { return 1; } f();
EditList InlineArguments(const Program& program, const Tree& tree);
/// struct A; int a; struct A {};  ->  struct A {}; int a;
EditList MergeDeclarations(const Program& program, const Tree& tree);
/// void f() {} void g() { h(); }  ->  void f() { h(); }
EditList MoveBodies(const Program& program, const Tree& tree);
/// struct A { int a; }; struct B : A { int b; };  ->  struct B { int a; int b; };
EditList PutInBases(const Program& program, const Tree& tree);
/// struct A {}; int a = f(A());  ->  struct {} A; int a = f(A);
EditList MakeObjects(const Program& program, const Tree& tree);
/// struct A {}; struct B {}; B b;  ->  struct A {}; A b;
EditList ReplaceTypes(const Program& program, const Tree& tree);

/// struct A *a; a->b;  ->  struct A a; a.b;
EditList RemovePairs(const Program& program, const Tree& tree);

/// counter = count_of(elements)  ->  a = b(c)
EditList ShortNames(const Program& program, const Tree& tree);

}  // namespace snipwell
