#pragma once

#include <string>
#include <vector>

namespace snipwell::platform {

/// One argument as it must stand in the command line of a Windows program to arrive as it is,
/// blanks, quotes and backslashes included, by the rules that C runtimes take a command line apart
/// with.
std::string QuoteArgument(const std::string& argument);
/// The same between quotes, be they needed or not.
std::string PutInQuotes(const std::string& argument);

/// The command line of a program: the arguments, each quoted where it must be, parted by blanks.
/// The command interpreter is not told its command by those rules: behind "/s /c" it takes off the
/// outer pair of quotes and has the rest as it stands.
std::string MakeCommandLine(const std::vector<std::string>& arguments);

/// The command line with which the command interpreter runs a batch file with the arguments
/// after the first. Empty when they would not all arrive as they are: the interpreter has no
/// way to quote a double quote or a percent sign, and takes only so many characters.
std::string MakeBatchCommandLine(const std::string& batchFile,
                                 const std::vector<std::string>& arguments);

}  // namespace snipwell::platform
