#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "refine/program.h"
#include "refine/tree.h"

namespace snipwell {

/// What of a file, or of its namespaces, uses what, as far as names tell. Units are the statements
/// of the file and of namespaces and linkage blocks, which are no units themselves; directives are
/// none either. A unit uses all that is declared, anywhere, under a name that stands in it: that
/// is more than it needs, but what it does not use it can hardly need.
class References {
 public:
  References(const Program& wholeProgram, const Tree& wholeTree);

  const std::vector<Range>& Units() const { return units; }
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

  void AddUnits(const List& list);
  void AddItem(Range item);
  std::uint32_t ContainerBody(Range item) const;
  void Declare();
  void FindNames();
  std::vector<std::string_view> DeclaredNames(Range unit) const;
  bool Declares(std::uint32_t at, std::uint32_t end) const;
  std::string_view NameFor(std::uint32_t at) const;
  void AddNames(Range range, std::vector<std::string_view>& found) const;
  void FindRoots();
  bool IsDeclaredBy(std::uint32_t name, std::uint32_t unit) const;

  const Program& program;
  const Tree& tree;
  std::map<std::uint32_t, const List*> listAt;  // by the first word inside
  std::vector<Range> units;
  std::vector<Container> containers;  // inner ones before those around them
  std::unordered_map<std::string_view, std::uint32_t> numbers;  // of the names that are declared
  std::vector<std::vector<std::uint32_t>> declarers;            // units by name
  std::vector<std::vector<std::uint32_t>> names;                // by unit, each name once
  std::vector<std::uint32_t> roots;
};

}  // namespace snipwell
