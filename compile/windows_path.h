#pragma once

#include <string>

namespace snipwell {

/// True for a path of Windows from the root: "C:\x", "c:/x", "\\server\x".
bool IsWindowsPath(const std::string& path);

/// Where `name` is for somebody in `folder`, a path of Windows from the root. Nothing is asked of
/// the system, so this holds on others too.
std::string WindowsPathIn(const std::string& folder, const std::string& name);

/// The same text for all spellings of a path of Windows, whatever its slashes and its letters,
/// without "." and "..".
std::string WindowsKey(const std::string& path);

}  // namespace snipwell
