#pragma once

#include <string>

#include "refine/program.h"

namespace snipwell {

/// The text of a program laid out for people: a statement a line, indented by its braces, lines of
/// at most 80 columns where that can be. Its tokens are those of the program in their order, any
/// bytes are taken; a line feed ends the text where that leaves its last token as it is.
std::string LaidOut(const Program& program);

}  // namespace snipwell
