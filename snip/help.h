#pragma once

namespace snipwell {

/// Writes the help text on standard output.
void PrintHelp();

}  // namespace snipwell
