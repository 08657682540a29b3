#pragma once

#include <string>
#include <vector>

namespace snipwell::platform {

/// True where the system's shell takes a command apart by the rules of POSIX.
extern const bool kShellIsPosix;

/// The words that run a command line of the user's with the system's shell: sh, on Windows the
/// command interpreter.
std::vector<std::string> ShellWords(const std::string& command);

/// The words as one command line for that shell, quoted where that is needed. Those of `ShellWords`
/// are on Windows the command that they run.
std::string ShellCommand(const std::vector<std::string>& words);

/// A POSIX shell that can be started; empty when there is none.
std::string PosixShell();

/// The words as one command line for that.
std::string PosixCommand(const std::vector<std::string>& words);

/// The full path of what the shell would find as the program `name` from the current directory, but
/// not from another one; empty when there is no such file.
std::string ProgramForShell(const std::string& name);

}  // namespace snipwell::platform
