#include "platform/shell.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/command_line_windows.h"
#include "platform/programs_windows.h"

namespace snipwell::platform {

const bool kShellIsPosix = false;

namespace {

namespace fs = std::filesystem;

/// The words before the command.
std::vector<std::string> InterpreterWords() { return {CommandInterpreter(), "/d", "/s", "/c"}; }

bool IsPlain(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return std::isalnum(byte) != 0 || std::string_view("_@%+=:,./-\\").find(c) != std::string::npos;
}

/// The interpreter gives a meaning to more characters than programs do; between quotes to none but
/// the percent sign. It takes every quote for the end of what is quoted, so in a word that has one,
/// carets stand before all that it would see.
std::string Quoted(const std::string& word) {
  if (std::all_of(word.begin(), word.end(), IsPlain)) return QuoteArgument(word);
  const std::string quoted = PutInQuotes(word);
  if (word.find('"') == std::string::npos) return quoted;
  std::string line;
  for (const char c : quoted) {
    line += std::string_view("\"&|<>()^").find(c) == std::string_view::npos ? "" : "^";
    line += c;
  }
  return line;
}

}  // namespace

std::vector<std::string> ShellWords(const std::string& command) {
  std::vector<std::string> words = InterpreterWords();
  words.push_back(command);
  return words;
}

std::string ShellCommand(const std::vector<std::string>& words) {
  const std::vector<std::string> start = InterpreterWords();
  const bool isShell =
      words.size() == start.size() + 1 && std::equal(start.begin(), start.end(), words.begin());
  if (isShell) return words.back();
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + Quoted(word);
  return line;
}

std::string PosixShell() { return FindProgram("sh"); }

std::string ProgramForShell(const std::string& name) {
  std::error_code error;
  const std::string program = FindProgram(name);
  const std::string file = program.empty() && fs::is_regular_file(name, error) ? name : program;
  return file.empty() ? file : fs::absolute(file, error).string();
}

}  // namespace snipwell::platform
