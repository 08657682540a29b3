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

/// The interpreter gives a meaning to more characters than programs do; between quotes to none but
/// the percent sign.
std::string Quoted(const std::string& word) {
  const auto isPlain = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) != 0 || std::string_view("_@%+=:,./-\\").find(c) != std::string::npos;
  };
  if (std::all_of(word.begin(), word.end(), isPlain)) return QuoteArgument(word);
  const std::string quoted = QuoteArgument(word + ' ');  // a blank brings quotes
  return quoted.substr(0, quoted.size() - 2) + '"';
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
