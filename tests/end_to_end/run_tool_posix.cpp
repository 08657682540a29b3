#include <sys/wait.h>

#include <cstdlib>

#include "tests/end_to_end/run_tool.h"

namespace snipwell::testing {

const bool kTextHasCarriageReturns = false;

namespace {

std::string Quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

std::string CleanEnvironment() {
  const char* const path = std::getenv("PATH");
  return "env -i TZ=UTC LC_ALL=C PATH=" +
         Quoted(std::string(SNIP_FOLDER) + ':' + TEST_PROGRAM_FOLDER + ':' + (path ? path : ""));
}

}  // namespace

std::filesystem::path TestProgramFolder() { return TEST_PROGRAM_FOLDER; }

int RunTool(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
            const Start& start) {
  std::string command = "cd " + Quoted(folder.string()) + " && " + start.prefix + ' ' +
                        CleanEnvironment() + ' ' + start.program;
  for (const std::string& argument : arguments) command += ' ' + Quoted(argument);
  command += " </dev/null >test_out 2>test_err " + start.redirections;
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace snipwell::testing
