#pragma once

#include <string>
#include <vector>

namespace snipwell {

/// One line that tells a crash of the compiler from another crash, made from what the compiler
/// wrote, without colours: the text of a failed assertion, of a fatal error or of an internal
/// compiler error, else the functions on top of the stack dump that are not the signal handler's; a
/// function without a name is told as its place in its module. When the output tells of no crash, a
/// compiler that was ended by `signal` has crashed nevertheless; without one (0), the headline is
/// empty. Brackets stand for parentheses, which the tool overlooks.
std::string CrashHeadline(const std::vector<std::string>& lines, int signal = 0);

}  // namespace snipwell
