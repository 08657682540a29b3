#include "compile/whole_file.h"

#include <cstddef>

#include "platform/descriptor.h"
#include "platform/files.h"

namespace snipwell {

std::optional<std::string> ReadWholeFile(const std::string& fileName) {
  const platform::Descriptor file = platform::OpenForReading(fileName);
  if (!file.IsOpen()) return std::nullopt;
  std::string text;
  constexpr std::size_t kBlock = std::size_t{1} << 16;
  for (std::ptrdiff_t count = 1; count > 0;) {
    const std::size_t size = text.size();
    text.resize(size + kBlock);
    count = platform::ReadSome(file.Number(), text.data() + size, kBlock);
    if (count < 0) return std::nullopt;
    text.resize(size + static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace snipwell
