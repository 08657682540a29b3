#pragma once

#include "snipwell/exit_status.h"
#include "snipwell/settings.h"

namespace snipwell {

/// One run, from the command that fails to the report. Throws RunEnd when it ends without a result.
ExitStatus Reduce(const Settings& settings);

}  // namespace snipwell
