#pragma once

#include <string>
#include <vector>

namespace snipwell::snip_cc {

/// What the command line asks for.
struct Options {
  std::string compiler;     ///< to run; empty with `testCommand`
  std::string testCommand;  ///< shell command to run instead of a compiler; empty means none
  double limitSeconds = 0;  ///< for one compilation; 0 means none
  /// An error of the program counts before a crash of the compiler. This and the next are for
  /// compilers only.
  bool mustBeValid = false;
  bool firstLine = false;  ///< the compiler is to be ended at the line that decides
  std::string refused;     ///< the option that is to be refused unseen; empty when there is none
  std::vector<std::string> arguments;  ///< the compiler's, the source last
  bool speaksCl = false;               ///< the compiler takes the options of cl
  std::string source;                  ///< file to compile; empty when there is none
  std::string complaint;               ///< why the options cannot be used; empty when they can
};

/// Takes the adapter's own options out of the arguments of the process (after argument 0) and puts
/// "/Zs", "/Od" and "/c" into the words of gcc and clang; cl, and clang in its cl mode, given by
/// "--driver-mode=cl" or the name "clang-cl", understand them.
Options ParseOptions(const std::vector<std::string>& arguments);

}  // namespace snipwell::snip_cc
