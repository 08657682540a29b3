#pragma once

#include <string_view>
#include <vector>

#include "refine/token.h"

namespace snipwell {

/// Takes a C or C++ text apart as compilers do before they know any names. Every byte belongs to
/// exactly one token, so the tokens joined are the text; any bytes are taken. A literal that is not
/// closed ends with its line, a comment or raw string that is not closed with the text. The text
/// must be shorter than 4 GB.
std::vector<Token> Tokenize(std::string_view text);

}  // namespace snipwell
