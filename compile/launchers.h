#pragma once

#include <string>
#include <vector>

namespace snipwell {

/// A command without what starts it.
struct PlainCommand {
  std::vector<std::string> words;        ///< the compiler first; empty when there is none
  std::vector<std::string> environment;  ///< "NAME=value", set before it or by "env"
};

/// Finds the compiler behind programs that only start it: compiler caches, distributors of
/// compilations, "env", "nice", "time", "libtool" and the like, with their own options, in any
/// order and number. What shells are given in one word, as in `sh -c "g++ x.cpp"`, is taken apart.
PlainCommand FindCompiler(std::vector<std::string> words);

}  // namespace snipwell
