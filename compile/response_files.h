#pragma once

#include <string>
#include <vector>

#include "compile/command_words.h"
#include "compile/word_splitting.h"

namespace snipwell {

/// The words with each response file "@name" replaced by the words in it, which may name further
/// ones. Names are relative to `folder`, as compilers take them (empty: the process's own). A file
/// starts in UTF-8, or in UTF-16 with a byte order mark. A word that names no file stays as it is,
/// as compilers keep it. A file that names itself, by others too, is a complaint, and so are files
/// that name each other thousands of times.
CommandWords ReadResponseFiles(const std::vector<std::string>& words, const std::string& folder,
                               Quoting quoting);

}  // namespace snipwell
