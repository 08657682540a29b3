#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace snipwell {

/// What the preprocessor of gcc or clang has made of the headers of the GNU libraries, written so
/// that the other one understands it too, for a program that one of the two is to refuse and the
/// other to accept. Lines stay lines. Nothing when there is nothing to change.
std::optional<std::string> PortableText(std::string_view preprocessed);

}  // namespace snipwell
