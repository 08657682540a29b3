#include "compile/test_command.h"

#include <filesystem>
#include <system_error>

namespace snipwell {

namespace {

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + '\'';
}

}  // namespace

std::vector<std::string> TestWords(const std::string& command) {
  namespace fs = std::filesystem;
  const std::string program = command.substr(0, command.find(' '));
  std::error_code error;
  if (program.find('/') == std::string::npos || !fs::exists(program, error)) {
    return {"/bin/sh", "-c", command};
  }
  const std::string rest = command.substr(program.size());
  return {"/bin/sh", "-c", Quoted(fs::absolute(program).string()) + rest};
}

}  // namespace snipwell
