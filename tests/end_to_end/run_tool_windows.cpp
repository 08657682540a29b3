#include <windows.h>

#include <cstdlib>
#include <stdexcept>

#include "platform/command_line_windows.h"
#include "tests/end_to_end/run_tool.h"

namespace snipwell::testing {

const bool kTextHasCarriageReturns = true;

namespace {

namespace fs = std::filesystem;

/// The tool stands in the folder above that of the programs of the tests. The tool and the fake
/// compiler are found in PATH, and the time zone is a known one.
void SetEnvironment() {
  const fs::path folder = TestProgramFolder();
  std::string system(MAX_PATH, '\0');
  system.resize(::GetSystemDirectoryA(system.data(), MAX_PATH));
  const std::string path = folder.string() + ';' + folder.parent_path().string() + ';' + system;
  ::SetEnvironmentVariableA("PATH", path.c_str());
  ::SetEnvironmentVariableA("TZ", "UTC");
}

HANDLE Open(const std::string& name, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  const HANDLE file = ::CreateFileA(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    &inherited, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot open " + name);
  return file;
}

std::string PathOf(const std::string& program) {
  for (const fs::path& folder : {TestProgramFolder().parent_path(), TestProgramFolder()}) {
    const fs::path path = folder / (program + ".exe");
    if (fs::exists(path)) return path.string();
  }
  throw std::runtime_error("no program " + program);
}

std::string CommandLine(const std::string& program, const std::vector<std::string>& arguments) {
  std::string line = platform::QuoteArgument(program);
  for (const std::string& argument : arguments) line += ' ' + platform::QuoteArgument(argument);
  return line;
}

}  // namespace

fs::path TestProgramFolder() {
  std::string path(MAX_PATH, '\0');
  path.resize(::GetModuleFileNameA(nullptr, path.data(), MAX_PATH));
  return fs::path(path).parent_path();
}

int RunTool(const fs::path& folder, const std::vector<std::string>& arguments, const Start& start) {
  if (!start.redirections.empty() || !start.prefix.empty()) {
    throw std::logic_error("there is no POSIX shell here");
  }
  SetEnvironment();
  std::string line = CommandLine(start.program, arguments);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = Open("NUL", GENERIC_READ, OPEN_EXISTING);
  startup.hStdOutput = Open((folder / "test_out").string(), GENERIC_WRITE, CREATE_ALWAYS);
  startup.hStdError = Open((folder / "test_err").string(), GENERIC_WRITE, CREATE_ALWAYS);
  PROCESS_INFORMATION process{};
  const bool started =
      ::CreateProcessA(PathOf(start.program).c_str(), line.data(), nullptr, nullptr, TRUE, 0,
                       nullptr, folder.string().c_str(), &startup, &process) != 0;
  for (const HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError}) {
    ::CloseHandle(handle);
  }
  if (!started) return -1;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  DWORD status = 0;
  ::GetExitCodeProcess(process.hProcess, &status);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return static_cast<int>(status);
}

}  // namespace snipwell::testing
