#pragma once

#include <optional>

#include "driver/run_settings.h"

namespace snipwell {

/// Fills `settings`, but for the start time, from the arguments of the process; the words of
/// argument files ("@name") take the place of their argument. Writes its own messages. Returns
/// nothing when the run goes on, else the code that ends it: help shown, or a required option
/// missing or malformed.
std::optional<RunResult> ParseCommandLine(int argc, const char* const* argv, RunSettings& settings);

/// The arguments with every argument file replaced by its words, and traced on standard output.
/// Argument 0 is the program's name: when it begins with "@", nothing is expanded. An argument file
/// that names itself, directly or through others, is reported where it does and dropped there.
StringArray ExpandArgumentFiles(const StringArray& arguments);

}  // namespace snipwell
