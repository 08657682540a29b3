#include "platform/command_line_windows.h"

namespace snipwell::platform {

std::string QuoteArgument(const std::string& argument) {
  if (!argument.empty() && argument.find_first_of(" \t\n\v\"") == std::string::npos) {
    return argument;
  }
  std::string quoted = "\"";
  std::size_t backslashes = 0;
  for (const char c : argument) {
    // Backslashes count as such only before a double quote, so only there are they doubled.
    if (c == '"') quoted.append(backslashes + 1, '\\');
    backslashes = c == '\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  quoted.append(backslashes, '\\');
  return quoted + '"';
}

std::string MakeCommandLine(char* const* argv) {
  std::string line;
  for (; *argv != nullptr; ++argv) {
    if (!line.empty()) line += ' ';
    line += QuoteArgument(*argv);
  }
  return line;
}

std::string MakeBatchCommandLine(const std::string& batchFile, char* const* argv) {
  // The interpreter takes off the outer pair of quotes. Between quotes it leaves every sign alone
  // but these two.
  std::string line = "cmd.exe /d /s /c \"\"" + batchFile + '"';
  if (batchFile.find('%') != std::string::npos) return std::string();
  for (char* const* rest = *argv == nullptr ? argv : argv + 1; *rest != nullptr; ++rest) {
    const std::string argument = *rest;
    if (argument.find_first_of("\"%\r\n") != std::string::npos) return std::string();
    const bool plain =
        !argument.empty() && argument.find_first_of(" \t&|<>()^,;=!'`~[]{}@+") == std::string::npos;
    line += plain ? ' ' + argument : " \"" + argument + '"';
  }
  return line + '"';
}

}  // namespace snipwell::platform
