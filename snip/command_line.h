#pragma once

#include <optional>

#include "snip/run_settings.h"

namespace snipwell {

/// Fills `settings`, but for the start time, from the arguments of the process; the words of
/// argument files ("@name") take the place of their argument. Writes its own messages. Returns
/// nothing when the run goes on, else the code that ends it: help shown, or a required option
/// missing or malformed.
std::optional<RunResult> ParseCommandLine(int argc, const char* const* argv, RunSettings& settings);

}  // namespace snipwell
