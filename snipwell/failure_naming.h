#pragma once

#include <string>

#include "snipwell/job.h"

namespace snipwell {

/// The failure's kind as a sentence.
const char* KindInWords(FailureKind kind);

/// What tells it from others, as compilers write it.
std::string HeadlineInWords(const Failure& failure);

/// Compiles the source twice, says how it fails, and has that asked from then on. Throws RunEnd
/// when it does not fail, or not in the same way each time.
void NameFailure(Job& job);

/// Writes the lines of the compiler's output that can stand for the failure.
void ListFailures(Job& job);

}  // namespace snipwell
