#include "platform/machine.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <system_error>
#include <thread>

namespace snipwell::platform {

std::size_t Processors() { return std::max(1U, std::thread::hardware_concurrency()); }

std::uint64_t MemoryBytes() {
  const long pages = ::sysconf(_SC_PHYS_PAGES);
  const long size = ::sysconf(_SC_PAGESIZE);
  return pages > 0 && size > 0
             ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(size)
             : 0;
}

std::filesystem::path ProgramFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

bool IsProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return ::access(name.c_str(), X_OK) == 0;
  const char* path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "/bin:/usr/bin" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (::access((folder + '/' + name).c_str(), X_OK) == 0) return true;
  }
  return false;
}

std::filesystem::path ProgramFile(const std::string& name) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (name.find('/') != std::string::npos) return fs::canonical(name, error);
  const char* const variable = std::getenv("PATH");
  const std::string path = variable != nullptr ? variable : "";
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find(':', start), path.size());
    const fs::path file = fs::canonical(fs::path(path.substr(start, end - start)) / name, error);
    if (!error) return file;
    start = end + 1;
  }
  return fs::path();
}

}  // namespace snipwell::platform
