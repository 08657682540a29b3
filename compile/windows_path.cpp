#include "compile/windows_path.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "text/small_letters.h"

namespace snipwell {

namespace {

bool IsSlash(char c) { return c == '/' || c == '\\'; }

bool HasDrive(const std::string& path) {
  return path.size() > 1 && path[1] == ':' &&
         std::isalpha(static_cast<unsigned char>(path[0])) != 0;
}

}  // namespace

bool IsWindowsPath(const std::string& path) { return HasDrive(path) || path.rfind("\\\\", 0) == 0; }

std::string WindowsPathIn(const std::string& folder, const std::string& name) {
  if (IsWindowsPath(name)) return name;
  if (!name.empty() && IsSlash(name[0]))
    return HasDrive(folder) ? folder.substr(0, 2) + name : name;
  return folder + '/' + name;
}

std::string WindowsKey(const std::string& path) {
  std::string key = InSmallLetters(path);
  std::replace(key.begin(), key.end(), '\\', '/');
  return std::filesystem::path(key).lexically_normal().generic_string();
}

}  // namespace snipwell
