#pragma once

#include "text/string_array.h"

namespace snipwell {

/// The arguments with every argument file replaced by its words, and traced on standard output.
/// Argument 0 is the program's name: when it begins with "@", nothing is expanded. An argument file
/// that names itself, directly or through others, is reported where it does and dropped there.
StringArray ExpandArgumentFiles(const StringArray& arguments);

}  // namespace snipwell
