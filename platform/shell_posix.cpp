#include "platform/shell.h"

#include <filesystem>
#include <system_error>

namespace snipwell::platform {

const bool kShellIsPosix = true;

std::vector<std::string> ShellWords(const std::string& command) {
  return {"/bin/sh", "-c", command};
}

std::string ShellCommand(const std::vector<std::string>& words) { return PosixCommand(words); }

std::string PosixShell() { return "/bin/sh"; }

std::string ProgramForShell(const std::string& name) {
  std::error_code error;
  const bool isPath = name.find('/') != std::string::npos;
  if (!isPath || !std::filesystem::exists(name, error)) return std::string();
  return std::filesystem::absolute(name, error).string();
}

}  // namespace snipwell::platform
