#include "platform/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace snipwell::platform {

TemporaryFolder::TemporaryFolder() {
  std::string name =
      std::filesystem::absolute(std::filesystem::temp_directory_path() / "snip-cc-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) {
    throw std::filesystem::filesystem_error("cannot make a temporary folder", name,
                                            std::error_code(errno, std::generic_category()));
  }
  path = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

}  // namespace snipwell::platform
