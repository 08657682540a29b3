#pragma once

#include <string>
#include <vector>

namespace snipwell {

/// A compiler's command as it was found somewhere.
struct CommandWords {
  std::vector<std::string> words;
  std::string folder;     ///< where it is meant to run; empty means the process's own
  std::string complaint;  ///< why there is none, and what to do; empty when there is one
};

}  // namespace snipwell
