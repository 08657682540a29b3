#include "compile/test_command.h"

#include "platform/shell.h"

namespace snipwell {

std::vector<std::string> TestWords(const std::string& command) {
  const std::string program = command.substr(0, command.find(' '));
  const std::string path = platform::ProgramForShell(program);
  if (path.empty()) return platform::ShellWords(command);
  return platform::ShellWords(platform::ShellCommand({path}) + command.substr(program.size()));
}

}  // namespace snipwell
