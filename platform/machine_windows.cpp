#include "platform/machine.h"

#include <windows.h>

#include <algorithm>
#include <thread>

#include "platform/programs_windows.h"
#include "platform/unicode_windows.h"

namespace snipwell::platform {

std::size_t Processors() { return std::max(1U, std::thread::hardware_concurrency()); }

std::uint64_t MemoryBytes() {
  MEMORYSTATUSEX memory{};
  memory.dwLength = sizeof memory;
  return ::GlobalMemoryStatusEx(&memory) != 0 ? memory.ullTotalPhys : 0;
}

std::filesystem::path ProgramFolder() {
  constexpr DWORD kLongest = 1 << 15;
  std::wstring path(kLongest, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), kLongest));
  return std::filesystem::path(path).parent_path();
}

bool IsProgram(const std::string& name) { return !FindProgram(name).empty(); }

std::filesystem::path ProgramFile(const std::string& name) { return FindProgram(name); }

}  // namespace snipwell::platform
