#pragma once

#include <vector>

#include "refine/program.h"
#include "refine/tree.h"

namespace snipwell {

/// What a word is to the layout of a program. Names are not known, so an expression such as
/// "a * b" or "a < b" can be taken for a declaration; that costs a blank, never a token.
enum class Role : unsigned char {
  Word,          ///< name, number, literal
  Control,       ///< keyword that an operand or a parenthesis follows: "return", "if"
  Type,          ///< keyword of a type: "int", "const"
  Open,          ///< "(" or "["
  Close,         ///< ")" or "]"
  CloseControl,  ///< the ")" of "if (a)"
  CloseCast,     ///< the ")" of "(int)a"
  OpenAngle,     ///< of template arguments
  CloseAngle,
  OpenBlock,  ///< of statements, members, enumerators
  CloseBlock,
  OpenList,  ///< of initialisers
  CloseList,
  Comma,
  Semicolon,
  Label,     ///< the ":" of "public:"
  Joining,   ///< "::", ".", "->"
  Prefix,    ///< operator before its operand; the "*" and "&" of declarators
  Postfix,   ///< "++" or "--" behind its operand
  Binary,    ///< operator between operands
  Ellipsis,  ///< "..."
  Operator,  ///< what follows "operator"
  Stray      ///< what no rule is for: it keeps the blanks around it
};

/// The role of each word of a program.
std::vector<Role> RolesOf(const Program& program, const Tree& tree);

}  // namespace snipwell
