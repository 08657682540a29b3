#pragma once

#include <optional>
#include <string>

namespace snipwell {

/// The bytes of a file; nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& fileName);

}  // namespace snipwell
