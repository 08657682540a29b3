#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "refine/program.h"
#include "refine/tree.h"

namespace snipwell {

using Texts = std::unordered_set<std::string_view>;

inline bool IsIn(std::string_view text, const Texts& texts) { return texts.count(text) != 0; }

/// True for "struct" and the like, and "namespace": the words before a name and braces.
bool IsClassKey(std::string_view text);

/// True for what stands behind the "&" of a type that names no variable.
bool EndsAbstractType(std::string_view text);

/// What has to be known of a program before its words are looked at in their order. Borrows both.
class WordSurvey {
 public:
  WordSurvey(const Program& wholeProgram, const Tree& wholeTree);

  /// True for brackets with a ";" in them that no further bracket holds.
  bool HoldsSemicolon(std::uint32_t at) const { return holdsSemicolon[at]; }
  /// True for angles that only compare, whatever the tree takes them for.
  bool Compares(std::uint32_t angle) const { return compares[angle]; }
  /// True for names that are used as those of types somewhere.
  bool IsType(std::string_view name) const { return IsIn(name, types); }

 private:
  std::string_view Text(std::uint32_t index) const {
    return index < program.Size() ? program.Text(index) : std::string_view();
  }
  bool IsFreeName(std::uint32_t index) const;
  void Take(std::uint32_t index);
  void NoteType(std::uint32_t index);
  bool OnlyCompares(std::uint32_t index) const;
  void Unpair(std::uint32_t angle);

  const Program& program;
  const Tree& tree;
  std::vector<bool> holdsSemicolon;
  std::vector<bool> compares;
  Texts types;
  std::vector<std::uint32_t> open;
};

}  // namespace snipwell
