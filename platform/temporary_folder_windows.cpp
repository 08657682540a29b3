#include "platform/temporary_folder.h"

#include <random>
#include <string>
#include <system_error>

#include "platform/files.h"

namespace snipwell::platform {

TemporaryFolder::TemporaryFolder(const std::filesystem::path& parent) {
  namespace fs = std::filesystem;
  constexpr int kTries = 100;
  std::random_device random;
  const fs::path where = fs::absolute(parent.empty() ? fs::temp_directory_path() : parent);
  std::error_code error;
  for (int i = 0; i < kTries; ++i) {
    path = where / ("snipwell-" + std::to_string(random()));
    if (fs::create_directory(path, error)) return;
    if (error) break;  // else there is one of that name
  }
  throw fs::filesystem_error("cannot make a temporary folder", path, error);
}

TemporaryFolder::~TemporaryFolder() { RemoveFolder(path.string()); }

}  // namespace snipwell::platform
