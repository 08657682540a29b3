#pragma once

#include <string>
#include <vector>

namespace snipwell {

/// The words that run a test command of the user's with the shell. A script in it that is named
/// relative to the current directory is found from another one too.
std::vector<std::string> TestWords(const std::string& command);

}  // namespace snipwell
