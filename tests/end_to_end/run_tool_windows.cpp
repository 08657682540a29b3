#include <windows.h>

#include <tlhelp32.h>  // needs the one above

#include <fstream>
#include <stdexcept>

#include "platform/command_line_windows.h"
#include "platform/environment_windows.h"
#include "platform/handle_windows.h"
#include "platform/unicode_windows.h"
#include "tests/end_to_end/run_tool.h"

namespace snipwell::testing {

const bool kTextHasCarriageReturns = true;

namespace {

namespace fs = std::filesystem;
using platform::Handle;
using platform::ToWide;

/// The tool stands in the folder above that of the programs of the tests. The tool and the fake
/// compiler are found in PATH, and the time zone is a known one.
std::wstring Environment(const Start& start) {
  const fs::path folder = TestProgramFolder();
  std::wstring system(MAX_PATH, L'\0');
  system.resize(::GetSystemDirectoryW(system.data(), MAX_PATH));
  platform::ChildCommand command;
  command.environment = {"PATH=" + folder.string() + ';' + folder.parent_path().string() + ';' +
                             platform::ToUtf8(system),
                         "TZ=UTC"};
  command.environment.insert(command.environment.end(), start.environment.begin(),
                             start.environment.end());
  return platform::EnvironmentBlock(command);
}

Handle Open(const fs::path& name, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  Handle file(::CreateFileW(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                            disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) throw std::runtime_error("cannot open " + name.string());
  return file;
}

fs::path PathOf(const std::string& program) {
  for (const fs::path& folder : {TestProgramFolder().parent_path(), TestProgramFolder()}) {
    if (fs::exists(folder / (program + ".exe"))) return folder / (program + ".exe");
  }
  throw std::runtime_error("no program " + program);
}

/// The path of a process's program; empty when the system does not tell.
fs::path ProgramOf(DWORD process) {
  const Handle open(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
  std::wstring path(1 << 15, L'\0');
  auto size = static_cast<DWORD>(path.size());
  if (!open.IsOpen() || !::QueryFullProcessImageNameW(open.Get(), 0, path.data(), &size)) return {};
  return path.substr(0, size);
}

/// Waits for the process, which is let run once its number is known to others.
int Await(const PROCESS_INFORMATION& made, const std::string& processFile) {
  const Handle process(made.hProcess);
  const Handle thread(made.hThread);
  if (!processFile.empty()) std::ofstream(fs::path(processFile)) << made.dwProcessId;
  ::ResumeThread(thread.Get());
  ::WaitForSingleObject(process.Get(), INFINITE);
  DWORD status = 0;
  ::GetExitCodeProcess(process.Get(), &status);
  return static_cast<int>(status);
}

}  // namespace

std::string ToolName(const std::string& tool) { return tool; }

void AddProgram(const fs::path& folder, const std::string& name, const fs::path& program) {
  fs::copy_file(program.string() + ".exe", folder / (name + ".exe"));
}

/// Their programs stand in the folder.
std::string ProcessesOf(const fs::path& folder) {
  std::string processes;
  const Handle all(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL found = ::Process32FirstW(all.Get(), &entry); found != 0;
       found = ::Process32NextW(all.Get(), &entry)) {
    const std::string program = ProgramOf(entry.th32ProcessID).string();
    if (program.rfind(folder.string(), 0) == 0) processes += program + ' ';
  }
  return processes;
}

fs::path TestProgramFolder() {
  std::wstring path(1 << 15, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return fs::path(path).parent_path();
}

int RunTool(const fs::path& folder, const std::vector<std::string>& arguments, const Start& start) {
  if (!start.redirections.empty() || !start.prefix.empty()) {
    throw std::logic_error("there is no POSIX shell here");
  }
  std::vector<std::string> words = {start.program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::wstring line = ToWide(platform::MakeCommandLine(words));
  std::wstring environment = Environment(start);
  const Handle standard[] = {Open("NUL", GENERIC_READ, OPEN_EXISTING),
                             Open(folder / "test_out", GENERIC_WRITE, CREATE_ALWAYS),
                             Open(folder / "test_err", GENERIC_WRITE, CREATE_ALWAYS)};
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = standard[0].Get();
  startup.hStdOutput = standard[1].Get();
  startup.hStdError = standard[2].Get();
  constexpr DWORD kFlags = CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT;
  PROCESS_INFORMATION process{};
  const bool started =
      ::CreateProcessW(PathOf(start.program).c_str(), line.data(), nullptr, nullptr, TRUE, kFlags,
                       environment.data(), folder.c_str(), &startup, &process) != 0;
  return started ? Await(process, start.processFile) : -1;
}

}  // namespace snipwell::testing
