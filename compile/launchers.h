#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace snipwell {

/// Where the compiler is in a command.
struct CommandStart {
  std::size_t compilerAt = 0;            ///< the number of words when there is none
  std::vector<std::string> environment;  ///< "NAME=value", set before it or by "env"
};

/// Finds the compiler behind programs that only start it: compiler caches, distributors of
/// compilations, "env", "nice", "time", "libtool" and the like, with their own options, in any
/// order and number.
CommandStart FindCompiler(const std::vector<std::string>& words);

}  // namespace snipwell
