#include "platform/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

#include "platform/files.h"

namespace snipwell::platform {

TemporaryFolder::TemporaryFolder(const std::filesystem::path& parent) {
  namespace fs = std::filesystem;
  const fs::path where = parent.empty() ? fs::temp_directory_path() : parent;
  std::string name = fs::absolute(where / "snipwell-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) {
    throw std::filesystem::filesystem_error("cannot make a temporary folder", name,
                                            std::error_code(errno, std::generic_category()));
  }
  path = name;
}

TemporaryFolder::~TemporaryFolder() { RemoveFolder(path.string()); }

}  // namespace snipwell::platform
