#pragma once

#include <cstdint>
#include <vector>

#include "snipwell/word_roles.h"

namespace snipwell {

/// Which words of a program stand apart when they are on one line. Borrows the program.
class Spacing {
 public:
  Spacing(const Program& wholeProgram, const Tree& tree)
      : program(wholeProgram), roles(RolesOf(wholeProgram, tree)) {}

  Role RoleOf(std::uint32_t index) const { return roles[index]; }

  /// True when a word and the one before it, two angles, are one token.
  bool ContinuesToken(std::uint32_t index) const;

  /// True when a blank stands before a word that is not the first one: as people would write it,
  /// and where two tokens would be read as others without one.
  bool IsApart(std::uint32_t index) const;

 private:
  bool AreNeighbours(std::uint32_t index) const;
  bool IsWantedApart(std::uint32_t index) const;
  bool IsBracketApart(std::uint32_t index) const;
  bool IsOpenApart(std::uint32_t index) const;
  bool IsSquareApart(std::uint32_t index) const;

  const Program& program;
  std::vector<Role> roles;
};

}  // namespace snipwell
