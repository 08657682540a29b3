#pragma once

#include <string>
#include <vector>

namespace snipwell {

/// One line that tells a crash of the compiler from another crash, made from what the compiler
/// wrote: the text of a failed assertion or of a fatal error, else the functions on top of the
/// stack dump that are not the signal handler's. It begins with "snip-cc: internal error: ". Empty
/// when the output tells of no crash. Brackets stand for parentheses, which the tool overlooks.
std::string CrashHeadline(const std::vector<std::string>& lines, bool endedBySignal = false);

}  // namespace snipwell
