#include "compile/test_command.h"

#include <filesystem>

#include "platform/shell.h"
#include "text/small_letters.h"

namespace snipwell {

std::vector<std::string> TestWords(const std::string& command) {
  const std::string program = command.substr(0, command.find(' '));
  const std::string path = platform::ProgramForShell(program);
  if (path.empty()) return platform::ShellWords(command);
  std::vector<std::string> words;
  if (!platform::kShellIsPosix) words = ScriptStart(path);
  words.push_back(path);
  return platform::ShellWords(platform::ShellCommand(words) + command.substr(program.size()));
}

std::vector<std::string> ScriptStart(const std::string& program) {
  const std::string suffix = InSmallLetters(std::filesystem::path(program).extension().string());
  if (suffix == ".ps1") return {"powershell", "-NoProfile", "-ExecutionPolicy", "Bypass", "-File"};
  if (suffix == ".sh") return {"sh"};
  return {};
}

}  // namespace snipwell
