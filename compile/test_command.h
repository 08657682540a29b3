#pragma once

#include <string>
#include <vector>

namespace snipwell {

/// The words that run a test command of the user's with the shell of this system. A script that it
/// begins with, named relative to the current directory, is found from another one too.
std::vector<std::string> TestWords(const std::string& command);

/// What starts a script on Windows whose name has this end, where the command interpreter itself
/// does not: PowerShell for "check.ps1", sh for "check.sh". Empty for all others.
std::vector<std::string> ScriptStart(const std::string& program);

}  // namespace snipwell
