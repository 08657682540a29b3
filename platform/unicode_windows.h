#pragma once

#include <string>
#include <string_view>

namespace snipwell::platform {

// Narrow text of the programs is UTF-8, whatever the system's code page is; names and arguments go
// to the system and come from it by its wide interface. That holds for std::filesystem::path too:
// what it is made from counts as `ToWide` takes it.

/// A text for the system. One that is no UTF-8 is taken to be in the system's code page, as other
/// programs write it.
std::wstring ToWide(std::string_view text);

/// A text of the system's as UTF-8.
std::string ToUtf8(std::wstring_view text);

/// The name of a file or folder for the system's calls, with the prefix of long names where it
/// would be too long otherwise.
std::wstring SystemName(std::string_view name);

/// A variable of the environment; empty when it is not set.
std::string Variable(const wchar_t* name);

}  // namespace snipwell::platform
