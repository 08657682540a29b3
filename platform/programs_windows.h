#pragma once

#include <string>

namespace snipwell::platform {

/// The path of the program that `name` means, or "": the name as given if there is such a program,
/// else, when it has no directory part, the first one in the directories of PATH. In each place the
/// suffixes of programs are tried behind it. A relative name is one of `folder`, or of the current
/// directory when that is empty. A folder or a file that cannot be started is no program. The
/// search ends at the first program: one that then cannot be started must not give way to another
/// compiler.
std::string FindProgram(const std::string& name, const std::string& folder = "");

/// The full path of the command interpreter.
std::string CommandInterpreter();

/// True when the command interpreter has to start it.
bool IsBatchFile(const std::string& path);

}  // namespace snipwell::platform
