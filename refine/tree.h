#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "refine/program.h"

namespace snipwell {

/// What a pair of brackets holds, or the file, or a part of an item that commas divide.
struct List {
  Range inside;              ///< without the brackets
  std::uint32_t depth;       ///< 0 for the file
  bool commas;               ///< commas stand between the items; else each has its end within it
  std::vector<Range> items;  ///< in their order
};

/// The brackets of a program and the lists in them. Brackets that do not match are plain words. The
/// angles of a template's arguments count as brackets when they look like such, and a directive,
/// from its "#" to its line feed, does too.
class Tree {
 public:
  static constexpr std::uint32_t kNone = UINT32_MAX;

  explicit Tree(const Program& program);

  /// The partner of a bracket; kNone for every other word.
  std::uint32_t Partner(std::uint32_t index) const { return partner[index]; }
  bool Opens(std::uint32_t index) const {
    return partner[index] != kNone && partner[index] > index;
  }
  bool Closes(std::uint32_t index) const { return partner[index] < index; }
  /// The word behind this one, or behind the group that it opens.
  std::uint32_t Next(std::uint32_t index) const {
    return (Opens(index) ? partner[index] : index) + 1;
  }
  /// The first word of what ends just before `index`: a word, or a group.
  std::uint32_t Previous(std::uint32_t index) const {
    return Closes(index - 1) ? partner[index - 1] : index - 1;
  }

  /// All lists, a list before those in it, otherwise in the order of the text.
  const std::vector<List>& Lists() const { return lists; }

 private:
  void MakeLists(const Program& program);
  void AddList(const Program& program, Range inside, std::uint32_t depth, std::string_view bracket);
  void AddHeads(const Program& program, std::size_t index);

  std::vector<std::uint32_t> partner;
  std::vector<List> lists;
};

/// The words to take out of a list so that its items `first` to `last` go, with a comma where one
/// is too many.
Range WithoutItems(const List& list, std::size_t first, std::size_t last);

}  // namespace snipwell
