#pragma once

#include <string>

#include "compile/command_words.h"

namespace snipwell {

/// Finds the command that compiles `source` in a compilation database: a file as
/// "compile_commands.json", or a folder that holds one of that name. The source is found by its
/// path (relative to the current directory), or else by the end of its path when only one source
/// ends so. Of several commands for it the first is taken. Paths of Windows are the same however
/// their slashes lean and their letters are written, and commands there are parted by the rules of
/// Windows, on every system.
///
/// Complains of a database that cannot be read or is none, and of a source that is not in it; then
/// it names some that are called alike.
CommandWords FindInDatabase(const std::string& database, const std::string& source);

}  // namespace snipwell
