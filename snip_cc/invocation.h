#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "snip_cc/options.h"

namespace snipwell::snip_cc {

/// The command line of the compilation: the compiler, the options that keep it from writing crash
/// reports and put its output into `folder` unless one of its arguments says where, and its
/// arguments.
std::vector<std::string> CompilerCommand(const Options& options,
                                         const std::filesystem::path& folder);

/// The name under which the user knows the file to compile: the tool's candidate "big.fut.cpp" is
/// "big.cpp". Without a folder.
std::string SourceName(const std::string& file);

}  // namespace snipwell::snip_cc
