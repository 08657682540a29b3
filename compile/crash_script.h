#pragma once

#include <string>

#include "compile/command_words.h"

namespace snipwell {

/// Reads the script that clang leaves behind when it crashes ("pool-3f21aa.sh"): comments, and one
/// command, that of clang -cc1. The last line that is no comment is the command. The preprocessed
/// source that it names lies in the folder of the script. Complains of a file without a command.
CommandWords ReadCrashScript(const std::string& fileName);

}  // namespace snipwell
