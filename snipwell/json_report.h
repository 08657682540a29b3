#pragma once

#include <string>

#include "snipwell/findings.h"

namespace snipwell {

/// The findings for machines: one JSON object, indented, whose keys are the names of the fields and
/// which ends with a line feed. Bytes that are no UTF-8 become U+FFFD; times that are no number
/// become null. "acceptedBy" is null when no compiler is known that accepts the source.
std::string JsonReport(const Findings& findings);

}  // namespace snipwell
