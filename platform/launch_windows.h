#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

namespace snipwell::platform {

/// What a process is started with.
struct Launch {
  std::string program;                 ///< path of the program or batch file
  std::vector<std::string> arguments;  ///< entry 0 included, as it stands
  std::string folder;                  ///< current directory; empty means this process's own
  std::wstring environment;            ///< block of variables; empty means this process's own
  std::array<HANDLE, 3> standard{};    ///< all that it inherits; null where there is none
  DWORD flags = 0;                     ///< further ones of CreateProcess
};

/// Starts a process. Returns 0, or the system's error number when it cannot be started; `process`
/// then is left alone, else the caller closes both its handles.
DWORD Start(const Launch& launch, PROCESS_INFORMATION& process);

}  // namespace snipwell::platform
