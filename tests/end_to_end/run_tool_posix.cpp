#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "tests/end_to_end/run_tool.h"

namespace snipwell::testing {

namespace fs = std::filesystem;

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

std::string ToolName(const std::string& tool) { return Quoted(SNIP_FOLDER "/" + tool); }

void AddProgram(const fs::path& folder, const std::string& name, const fs::path& program) {
  // A link would be the same compiler by another name.
  if (fs::exists(program)) {
    fs::copy_file(program, folder / name);
  } else {
    fs::create_symlink("/usr/bin" / program.filename(), folder / name);
  }
}

/// They were started with the folder in their environment.
std::string ProcessesOf(const fs::path& folder) {
  std::string processes;
  for (const auto& entry : fs::directory_iterator("/proc")) {
    std::ifstream in(entry.path() / "environ", std::ios::binary);
    const std::string environment{std::istreambuf_iterator<char>(in), {}};
    if (environment.find("FAKE_GCC=" + folder.string()) != std::string::npos) {
      processes += entry.path().filename().string() + ' ';
    }
  }
  return processes;
}

fs::path TestProgramFolder() { return TEST_PROGRAM_FOLDER; }

int RunTool(const fs::path& folder, const std::vector<std::string>& arguments, const Start& start) {
  std::string command = "cd " + Quoted(folder.string()) + " && ";
  if (!start.processFile.empty()) command += "echo $$ >" + Quoted(start.processFile) + "; exec ";
  command += start.prefix + ' ' + CleanEnvironment() + ' ';
  for (const std::string& variable : start.environment) command += Quoted(variable) + ' ';
  command += start.program;
  for (const std::string& argument : arguments) command += ' ' + Quoted(argument);
  command += " </dev/null >test_out 2>test_err " + start.redirections;
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace snipwell::testing
