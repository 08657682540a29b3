#pragma once

#include "compile/argument_vector.h"
#include "failure/error_match.h"
#include "snip/run_settings.h"

namespace snipwell {

/// Isolates a confirmed failure: builds the reduction engine, makes the preliminary checks, reduces
/// the program, appends the completion line to the log file and writes the verdict. `match` holds
/// the reference error of the first compilation; `vector` is that compilation's; the engine
/// replaces its last entry, which is no longer valid afterwards. Returns the `RunResult` of the
/// run; ends the process with exit status 1 when the engine cannot start the compiler.
int Isolate(const RunSettings& settings, ArgumentVector& vector, const ErrorMatch& match);

}  // namespace snipwell
