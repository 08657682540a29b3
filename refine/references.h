#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "refine/program.h"
#include "refine/tree.h"

namespace snipwell {

/// What of a file, or of its namespaces, uses what, as far as names tell. Units are the statements
/// of the file and of namespaces and linkage blocks, which are no units themselves; directives are
/// none either. A unit uses all that is declared, anywhere, under a name that stands in it, unless
/// as a member. That is more than it needs, and would be far too much in two cases, where a unit
/// comes in only when others use every name that its own name and what follows that in brackets
/// have: a specialisation, or a member that is defined outside, of classes that stay; and a
/// function of a name that many of them share, such as an operator, for parameters of types that
/// stay.
class References {
 public:
  References(const Program& wholeProgram, const Tree& wholeTree);

  /// The units that no other one uses, in the order of the text.
  const std::vector<std::uint32_t>& Roots() const { return roots; }
  /// Marks the units that are used, by way of others too, by the roots but for those numbered
  /// `first` to `last`, and these roots.
  std::vector<bool> UsedWithout(std::size_t first, std::size_t last) const;
  /// The words to take out so that just the units with a mark stay. Namespaces of which nothing
  /// stays go too, but not those that held nothing from the start.
  std::vector<Range> Without(const std::vector<bool>& staying) const;

 private:
  struct Container {
    Range item;
    std::uint32_t firstUnit;
    std::uint32_t endUnit;
  };

  class Spread;

  void AddUnits(const List& list);
  void AddItem(Range item);
  std::uint32_t ContainerBody(Range item) const;
  void Declare();
  void MakeConditional(std::vector<std::uint32_t>& all);
  bool Holds(Range unit, std::string_view text) const;
  bool IsFunction(Range unit) const;
  std::vector<std::string_view> DeclaredNames(Range unit, bool isFunction) const;
  bool Declares(std::uint32_t at, std::uint32_t end) const;
  Range Added(Range unit) const;
  std::uint32_t ClassOf(std::uint32_t at) const;
  bool IsSpecialised(std::uint32_t at) const;
  Range WithParameters(Range unit) const;
  void AddNames(Range range, std::vector<std::string_view>& names) const;
  std::vector<std::uint32_t> NumbersIn(Range range) const;
  bool IsMember(std::uint32_t at) const;
  void FindUses();
  void FindRoots();
  std::vector<bool> UsedUnits() const;

  const Program& program;
  const Tree& tree;
  std::map<std::uint32_t, const List*> listAt;  // by the first word inside
  std::set<std::string_view> namespaces;        // names of all containers
  std::vector<Range> units;
  std::vector<bool> functions;        // by unit
  std::vector<Container> containers;  // inner ones before those around them
  std::unordered_map<std::string_view, std::uint32_t> numbers;  // of names that are declared
  std::vector<std::vector<std::uint32_t>> declarers;            // units, by number of a name
  std::vector<std::vector<std::uint32_t>> uses;                 // numbers of names, by unit
  std::vector<Range> conditions;                                // by unit, mostly empty
  std::vector<std::vector<std::uint32_t>> conditionNames;       // numbers, by unit
  std::vector<std::vector<std::uint32_t>> waitingFor;           // units, by number of a name
  std::vector<std::uint32_t> roots;
};

}  // namespace snipwell
