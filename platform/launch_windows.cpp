#include "platform/launch_windows.h"

#include <algorithm>

#include "platform/command_line_windows.h"
#include "platform/programs_windows.h"
#include "platform/unicode_windows.h"

namespace snipwell::platform {

namespace {

/// The open handles, each once, as a process can inherit them.
std::vector<HANDLE> Inheritable(const std::array<HANDLE, 3>& handles) {
  std::vector<HANDLE> open(handles.begin(), handles.end());
  std::sort(open.begin(), open.end());
  open.erase(std::unique(open.begin(), open.end()), open.end());
  open.erase(std::remove(open.begin(), open.end(), nullptr), open.end());
  for (const HANDLE handle : open) {
    ::SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  }
  return open;
}

/// The standard handles of a process, and the list of those it inherits.
class StartupInformation {
 public:
  explicit StartupInformation(const std::array<HANDLE, 3>& standard)
      : inherited(Inheritable(standard)) {
    SIZE_T size = 0;
    ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    attributes.resize(size);
    information.StartupInfo.cb = sizeof information;
    information.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    information.StartupInfo.hStdInput = standard[0];
    information.StartupInfo.hStdOutput = standard[1];
    information.StartupInfo.hStdError = standard[2];
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
  LPSTARTUPINFOW Get() { return &information.StartupInfo; }

 private:
  std::vector<HANDLE> inherited;
  std::vector<char> attributes;
  STARTUPINFOEXW information{};
  bool complete = false;
};

/// The full path, since the system would take a relative one for a name to look up.
std::wstring FullPath(const std::string& path) {
  const std::wstring wide = ToWide(path);
  std::wstring full(::GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(
      ::GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

}  // namespace

DWORD Start(const Launch& launch, PROCESS_INFORMATION& process) {
  const std::wstring path = FullPath(launch.program);
  const bool isBatch = IsBatchFile(launch.program);
  const std::string program = isBatch ? CommandInterpreter() : ToUtf8(path);
  std::wstring line = ToWide(isBatch ? MakeBatchCommandLine(ToUtf8(path), launch.arguments)
                                     : MakeCommandLine(launch.arguments));
  if (line.empty()) return ERROR_BAD_ARGUMENTS;
  StartupInformation startup(launch.standard);
  if (!startup.IsComplete()) return ERROR_OUTOFMEMORY;
  std::wstring environment = launch.environment;
  const std::wstring folder = ToWide(launch.folder);
  // The child inherits this: a compiler that crashes must not wait for somebody to close a window.
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  const DWORD flags = launch.flags | EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT;
  const bool started =
      ::CreateProcessW(SystemName(program).c_str(), line.data(), nullptr, nullptr, TRUE, flags,
                       environment.empty() ? nullptr : environment.data(),
                       folder.empty() ? nullptr : folder.c_str(), startup.Get(), &process) != 0;
  return started ? 0 : ::GetLastError();
}

}  // namespace snipwell::platform
