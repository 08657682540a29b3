#pragma once

#include "snip/run_settings.h"

namespace snipwell {

/// Compiles the unchanged source once and checks that the failure is there and matches the
/// criteria. A confirmed failure goes on to the isolation. Returns the `RunResult` of the run; ends
/// the process with exit status 1 when the compiler cannot be started.
int ConfirmFailure(const RunSettings& settings);

}  // namespace snipwell
