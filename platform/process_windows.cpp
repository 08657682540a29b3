#include "platform/process.h"

#include <io.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/command_line_windows.h"

namespace snipwell::platform {

namespace {

/// The standard handles, which are all that a child inherits.
class StandardHandles {
 public:
  StandardHandles() {
    for (int descriptor = 0; descriptor < 3; ++descriptor) {
      const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
      const bool open = handle != INVALID_HANDLE_VALUE &&
                        ::SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
      handles[static_cast<std::size_t>(descriptor)] = open ? handle : nullptr;
    }
  }

  HANDLE Get(std::size_t descriptor) const { return handles[descriptor]; }

  /// The open ones, each once.
  std::vector<HANDLE> Open() const {
    std::vector<HANDLE> open(handles.begin(), handles.end());
    std::sort(open.begin(), open.end());
    open.erase(std::unique(open.begin(), open.end()), open.end());
    open.erase(std::remove(open.begin(), open.end(), nullptr), open.end());
    return open;
  }

 private:
  std::array<HANDLE, 3> handles{};
};

/// What a process is started with: its standard handles, and the list of those it inherits.
class StartupInformation {
 public:
  StartupInformation() : inherited(standard.Open()) {
    SIZE_T size = 0;
    ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    attributes.resize(size);
    information.StartupInfo.cb = sizeof information;
    information.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    information.StartupInfo.hStdInput = standard.Get(0);
    information.StartupInfo.hStdOutput = standard.Get(1);
    information.StartupInfo.hStdError = standard.Get(2);
    information.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(attributes.data());
    complete = ::InitializeProcThreadAttributeList(information.lpAttributeList, 1, 0, &size) != 0 &&
               (inherited.empty() ||
                ::UpdateProcThreadAttribute(
                    information.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST,
                    inherited.data(), inherited.size() * sizeof(HANDLE), nullptr, nullptr) != 0);
  }
  ~StartupInformation() { ::DeleteProcThreadAttributeList(information.lpAttributeList); }
  StartupInformation(const StartupInformation&) = delete;
  StartupInformation& operator=(const StartupInformation&) = delete;

  bool IsComplete() const { return complete; }
  LPSTARTUPINFOA Get() { return &information.StartupInfo; }

 private:
  StandardHandles standard;
  std::vector<HANDLE> inherited;
  std::vector<char> attributes;
  STARTUPINFOEXA information{};
  bool complete = false;
};

bool IsFile(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool HasDirectoryPart(const std::string& name) {
  return name.find_first_of("/\\:") != std::string::npos;
}

constexpr const char* kProgramSuffixes[] = {".com", ".exe", ".bat", ".cmd"};

bool HasSuffix(const std::string& path, const std::string& suffix) {
  if (path.size() < suffix.size()) return false;
  return std::equal(
      suffix.begin(), suffix.end(), path.end() - static_cast<int>(suffix.size()),
      [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

/// The program that `name` means in one place, or "": itself when it has the suffix of a program,
/// or with such a suffix behind it.
std::string WithProgramSuffix(const std::string& name) {
  for (const char* suffix : kProgramSuffixes) {
    if (HasSuffix(name, suffix) && IsFile(name)) return name;
  }
  for (const char* suffix : kProgramSuffixes) {
    if (IsFile(name + suffix)) return name + suffix;
  }
  return std::string();
}

/// The first program called `name` in the directories of PATH, or "".
std::string FindInPath(const std::string& name) {
  const char* const variable = std::getenv("PATH");
  const std::string path = variable != nullptr ? variable : "";
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find(';', start), path.size());
    std::string directory = path.substr(start, end - start);
    directory.erase(std::remove(directory.begin(), directory.end(), '"'), directory.end());
    if (!directory.empty()) {
      const std::string found = WithProgramSuffix(directory + '\\' + name);
      if (!found.empty()) return found;
    }
    start = end + 1;
  }
  return std::string();
}

/// The path of the program that `name` means, or "". The search ends at the first program: one that
/// then cannot be started must not give way to another compiler.
std::string FindProgram(const std::string& name) {
  if (name.empty()) return std::string();
  const std::string found = WithProgramSuffix(name);
  if (!found.empty() || HasDirectoryPart(name)) return found;
  return FindInPath(name);
}

bool IsBatchFile(const std::string& path) {
  return HasSuffix(path, ".bat") || HasSuffix(path, ".cmd");
}

std::string CommandInterpreter() {
  std::string path(MAX_PATH, '\0');
  path.resize(::GetSystemDirectoryA(path.data(), MAX_PATH));
  return path + "\\cmd.exe";
}

/// The full path, since the system would take a relative one for a name to look up.
std::string FullPath(const std::string& path) {
  std::string full(::GetFullPathNameA(path.c_str(), 0, nullptr, nullptr), '\0');
  full.resize(
      ::GetFullPathNameA(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

/// Starts the program. Returns its process handle, or null when it cannot be started.
HANDLE Start(const std::string& path, char* const* argv) {
  const std::string fullPath = FullPath(path);
  const bool isBatch = IsBatchFile(fullPath);
  const std::string program = isBatch ? CommandInterpreter() : fullPath;
  std::string commandLine = isBatch ? MakeBatchCommandLine(fullPath, argv) : MakeCommandLine(argv);
  StartupInformation startup;
  if (commandLine.empty() || !startup.IsComplete()) return nullptr;
  // The child inherits this: a compiler that crashes must not wait for somebody to close a window.
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  PROCESS_INFORMATION process{};
  if (!::CreateProcessA(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                        EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr, startup.Get(), &process)) {
    return nullptr;
  }
  ::CloseHandle(process.hThread);
  return process.hProcess;
}

}  // namespace

ProgramEnd RunProgram(const char* program, char* const* argv) {
  const std::string path = FindProgram(program);
  const HANDLE process = path.empty() ? nullptr : Start(path, argv);
  if (process == nullptr) return ProgramEnd::NotStarted;
  ::WaitForSingleObject(process, INFINITE);
  DWORD status = EXIT_FAILURE;
  const bool known = ::GetExitCodeProcess(process, &status) != 0;
  ::CloseHandle(process);
  // A crash has a status of its own, such as that of an access violation.
  return known && status == 0 ? ProgramEnd::ExitedZero : ProgramEnd::Failed;
}

}  // namespace snipwell::platform
