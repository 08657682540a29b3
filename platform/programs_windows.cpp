#include "platform/programs_windows.h"

#include <windows.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "platform/unicode_windows.h"

namespace snipwell::platform {

namespace {

namespace fs = std::filesystem;

constexpr const char* kSuffixes[] = {".com", ".exe", ".bat", ".cmd"};

bool IsFile(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(SystemName(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool HasSuffix(const std::string& path, const std::string& suffix) {
  if (path.size() < suffix.size()) return false;
  return std::equal(
      suffix.begin(), suffix.end(), path.end() - static_cast<int>(suffix.size()),
      [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

/// True when the file can be started under its name: by its suffix, or, without one of those, by
/// what it holds.
bool IsProgramFile(const std::string& path) {
  if (!IsFile(path)) return false;
  for (const char* suffix : kSuffixes) {
    if (HasSuffix(path, suffix)) return true;
  }
  DWORD kind = 0;
  return ::GetBinaryTypeW(SystemName(path).c_str(), &kind) != 0;
}

/// The program that `path` means, or "": itself, or with a suffix behind it.
std::string WithProgramSuffix(const std::string& path) {
  if (IsProgramFile(path)) return path;
  for (const char* suffix : kSuffixes) {
    if (IsFile(path + suffix)) return path + suffix;
  }
  return std::string();
}

std::string In(const std::string& folder, const std::string& name) {
  return folder.empty() ? name : (fs::path(folder) / name).string();
}

/// The first program called `name` in the directories of PATH, or "".
std::string FindInPath(const std::string& name, const std::string& folder) {
  const std::string path = Variable(L"PATH");
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find(';', start), path.size());
    std::string directory = path.substr(start, end - start);
    directory.erase(std::remove(directory.begin(), directory.end(), '"'), directory.end());
    if (!directory.empty()) {
      const std::string found = WithProgramSuffix(In(folder, directory + '\\' + name));
      if (!found.empty()) return found;
    }
    start = end + 1;
  }
  return std::string();
}

}  // namespace

std::string FindProgram(const std::string& name, const std::string& folder) {
  if (name.empty()) return std::string();
  const std::string found = WithProgramSuffix(In(folder, name));
  const bool hasDirectoryPart = name.find_first_of("/\\:") != std::string::npos;
  return found.empty() && !hasDirectoryPart ? FindInPath(name, folder) : found;
}

std::string CommandInterpreter() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(::GetSystemDirectoryW(path.data(), MAX_PATH));
  return ToUtf8(path) + "\\cmd.exe";
}

bool IsBatchFile(const std::string& path) {
  return HasSuffix(path, ".bat") || HasSuffix(path, ".cmd");
}

}  // namespace snipwell::platform
