#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "failure/deciding_line.h"
#include "platform/child_set.h"
#include "snip_cc/options.h"

namespace snipwell::snip_cc {

/// What a command wrote, and how it ended.
struct RunResult {
  std::vector<std::string> lines;  ///< without colours; the first 16 MB
  /// Of the line that decides; an error decides only when the options ask for a valid program.
  LineMeaning meaning = LineMeaning::None;
  platform::ChildEnd end;  ///< stopped when the line that decides was not to be outlived
  int interruptedBy = 0;   ///< the signal that this process was sent meanwhile, or 0
};

/// Runs a command with `folder` as its temporary folder, as the options ask, and comes back when
/// nothing of it is left. An empty `currentFolder` is this process's own.
RunResult RunCommand(std::vector<std::string> arguments, const Options& options,
                     const std::filesystem::path& folder,
                     const std::filesystem::path& currentFolder = {});

}  // namespace snipwell::snip_cc
