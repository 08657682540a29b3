#pragma once

#include <string>
#include <vector>

namespace snipwell {

/// The words that run a test command of the user's with the shell of this system. A script in it
/// that is named relative to the current directory is found from another one too.
std::vector<std::string> TestWords(const std::string& command);

/// The same for Windows, where the suffix of the command's first word, or of the file that it is
/// short for, tells what runs it: "check.ps1" and "check" alike start PowerShell. Whatever has none
/// of the known suffixes is for the command interpreter, to which its operators are operators in
/// quotes too.
std::vector<std::string> WindowsTestWords(const std::string& command);

}  // namespace snipwell
