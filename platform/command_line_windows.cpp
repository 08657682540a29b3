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

namespace {

/// Between quotes. Backslashes before the closing one are doubled for the program that gets the
/// argument in the end; the interpreter does not mind.
std::string QuoteForBatch(const std::string& argument) {
  const std::size_t last = argument.find_last_not_of('\\') + 1;  // 0 when there is none
  return '"' + argument + std::string(argument.size() - last, '\\') + '"';
}

}  // namespace

std::string MakeBatchCommandLine(const std::string& batchFile, char* const* argv) {
  // The interpreter takes 8191 characters; some are left for what the batch file makes of them.
  constexpr std::size_t kLongest = 8000;
  // It takes off the outer pair of quotes. Between quotes it leaves every sign alone but the
  // percent sign and the quote itself, as long as "!" has no meaning.
  std::string line = "cmd.exe /d /v:off /e:on /s /c \"\"" + batchFile + '"';
  if (batchFile.find('%') != std::string::npos) return std::string();
  for (char* const* rest = *argv == nullptr ? argv : argv + 1; *rest != nullptr; ++rest) {
    const std::string argument = *rest;
    if (argument.find_first_of("\"%\r\n") != std::string::npos) return std::string();
    const bool plain =
        !argument.empty() &&
        argument.find_first_of(" \t\v\f\xFF&|<>()^,;=!'`~[]{}@+") == std::string::npos;
    line += ' ';
    line += plain ? argument : QuoteForBatch(argument);
  }
  return line.size() < kLongest ? line + '"' : std::string();
}

}  // namespace snipwell::platform
