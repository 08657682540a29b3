#include "platform/command_line_windows.h"

#include <algorithm>
#include <cstring>

namespace snipwell::platform {

std::string QuoteArgument(const std::string& argument) {
  if (!argument.empty() && argument.find_first_of(" \t\n\v\"") == std::string::npos) {
    return argument;
  }
  return PutInQuotes(argument);
}

std::string PutInQuotes(const std::string& argument) {
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

std::string MakeCommandLine(const std::vector<std::string>& arguments) {
  std::string line;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const bool isCommand = i >= 2 && arguments[i - 2] == "/s" && arguments[i - 1] == "/c";
    if (!line.empty()) line += ' ';
    line += isCommand ? '"' + arguments[i] + '"' : QuoteArgument(arguments[i]);
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

/// Blanks beyond ASCII part words too.
bool IsPlain(const std::string& argument) {
  return !argument.empty() && std::all_of(argument.begin(), argument.end(), [](char c) {
    return c > ' ' && c < 0x7F && std::strchr("&|<>()^,;=!'`~[]{}@+", c) == nullptr;
  });
}

}  // namespace

std::string MakeBatchCommandLine(const std::string& batchFile,
                                 const std::vector<std::string>& arguments) {
  // The interpreter takes 8191 characters; some are left for what the batch file makes of them.
  constexpr std::size_t kLongest = 8000;
  // It takes off the outer pair of quotes. Between quotes it leaves every sign alone but the
  // percent sign and the quote itself, as long as "!" has no meaning.
  std::string line = "cmd.exe /d /v:off /e:on /s /c \"\"" + batchFile + '"';
  if (batchFile.find('%') != std::string::npos) return std::string();
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument.find_first_of("\"%\r\n") != std::string::npos) return std::string();
    line += ' ';
    line += IsPlain(argument) ? argument : QuoteForBatch(argument);
  }
  return line.size() < kLongest ? line + '"' : std::string();
}

}  // namespace snipwell::platform
