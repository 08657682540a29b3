#pragma once

#include <string>

namespace snipwell::platform {

/// One argument as it must stand in the command line of a Windows program to arrive as it is,
/// blanks, quotes and backslashes included, by the rules that C runtimes take a command line apart
/// with.
std::string QuoteArgument(const std::string& argument);

/// The command line of a program: the arguments, each quoted where it must be, parted by blanks.
std::string MakeCommandLine(char* const* argv);

/// The command line with which the command interpreter runs a batch file with the arguments of
/// `argv` after the first. Empty when they would not all arrive as they are: the interpreter has no
/// way to quote a double quote or a percent sign, and takes only so many characters.
std::string MakeBatchCommandLine(const std::string& batchFile, char* const* argv);

}  // namespace snipwell::platform
