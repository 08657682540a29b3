#pragma once

#include "snipwell/job.h"

namespace snipwell {

/// Checks the result with the user's own command, and writes the reports.
void Deliver(Job& job);

}  // namespace snipwell
