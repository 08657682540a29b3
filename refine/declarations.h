#pragma once

#include <cstdint>
#include <vector>

#include "refine/program.h"
#include "refine/tree.h"

namespace snipwell {

/// A statement that declares a name: "struct A;", "template <class T> int f(T) { ... }".
struct Declaration {
  Range item;
  std::uint32_t name;  ///< the last one before parameters, bases, body or end; Tree::kNone for none
  std::uint32_t body;  ///< the brace that opens it, or Tree::kNone
  bool isType;
};

inline bool IsDefinedType(const Declaration& one) {
  return one.isType && one.name != Tree::kNone && one.body != Tree::kNone;
}

/// What all statements declare, in the order of the lists.
std::vector<Declaration> Declarations(const Program& program, const Tree& tree);

}  // namespace snipwell
