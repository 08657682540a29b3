#pragma once

#include <filesystem>

namespace snipwell::platform {

/// A fresh folder that goes with everything in it. Throws std::filesystem::filesystem_error when it
/// cannot be made.
class TemporaryFolder {
 public:
  /// In `parent`, or where the system has temporary files when that is empty.
  explicit TemporaryFolder(const std::filesystem::path& parent = {});
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path; }

 private:
  std::filesystem::path path;
};

}  // namespace snipwell::platform
