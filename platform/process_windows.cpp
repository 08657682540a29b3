#include "platform/process.h"

#include <io.h>

#include <cstdlib>

#include "platform/descriptor.h"
#include "platform/launch_windows.h"
#include "platform/programs_windows.h"

namespace snipwell::platform {

namespace {

/// The standard handles, which are all that a child inherits.
std::array<HANDLE, 3> StandardHandles() {
  std::array<HANDLE, 3> handles{};
  for (int descriptor = 0; descriptor <= kStandardError; ++descriptor) {
    const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
    const bool open = handle != INVALID_HANDLE_VALUE &&
                      ::SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    handles[static_cast<std::size_t>(descriptor)] = open ? handle : nullptr;
  }
  return handles;
}

std::vector<std::string> Strings(char* const* argv) {
  std::vector<std::string> strings;
  for (; *argv != nullptr; ++argv) strings.emplace_back(*argv);
  return strings;
}

}  // namespace

ProgramEnd RunProgram(const char* program, char* const* argv) {
  Launch launch;
  launch.program = FindProgram(program);
  launch.arguments = Strings(argv);
  launch.standard = StandardHandles();
  PROCESS_INFORMATION process{};
  if (launch.program.empty() || Start(launch, process) != 0) return ProgramEnd::NotStarted;
  ::CloseHandle(process.hThread);
  ::WaitForSingleObject(process.hProcess, INFINITE);
  DWORD status = EXIT_FAILURE;
  const bool known = ::GetExitCodeProcess(process.hProcess, &status) != 0;
  ::CloseHandle(process.hProcess);
  // A crash has a status of its own, such as that of an access violation.
  return known && status == 0 ? ProgramEnd::ExitedZero : ProgramEnd::Failed;
}

}  // namespace snipwell::platform
