#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "platform/files.h"

namespace snipwell {

/// A fresh folder that goes with its contents. Files are written and read byte for byte.
class TempFolder {
 public:
  TempFolder() {
    std::random_device random;
    do {
      path = std::filesystem::temp_directory_path() / ("snipwell-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path));
  }
  ~TempFolder() { platform::RemoveFolder(path.string()); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& Path() const { return path; }
  std::string NameOf(const std::string& file) const { return (path / file).string(); }

  /// Writes a file and returns its name.
  std::string Write(const std::string& file, const std::string& bytes) const {
    std::ofstream(path / file, std::ios::binary) << bytes;
    return NameOf(file);
  }

  std::string Read(const std::string& file) const {
    std::ifstream in(path / file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }

 private:
  std::filesystem::path path;
};

/// Makes a folder the current directory, as long as it lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const TempFolder& folder) {
    std::filesystem::current_path(folder.NameOf(""));
  }
  ~CurrentFolder() { std::filesystem::current_path(before); }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  std::filesystem::path before = std::filesystem::current_path();
};

}  // namespace snipwell
