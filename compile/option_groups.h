#pragma once

#include <string>
#include <vector>

#include "compile/compiler_name.h"
#include "compile/option_table.h"

namespace snipwell {

/// An option with its value, or a word that is no option: a file.
struct OptionGroup {
  std::vector<std::string> words;  ///< at least one
  bool isFile = false;
  OptionRole role = OptionRole::Compile;
  std::string value;        ///< joined or separate; empty when there is none
  bool lacksValue = false;  ///< the words ended before its value
};

/// Parts the arguments of a compiler into options and files. `frontEnd`: they are those of clang
/// -cc1. What stands behind "--" are files.
std::vector<OptionGroup> GroupOptions(const std::vector<std::string>& arguments,
                                      CompilerStyle style, bool frontEnd);

}  // namespace snipwell
