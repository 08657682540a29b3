#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace snipwell {

/// Whose rules a text is taken apart into words by. All part words at blanks and line ends.
enum class Quoting {
  Gnu,      ///< argument files of gcc and clang: a backslash keeps any character, even in quotes
  Windows,  ///< C runtimes of Windows: double quotes only; a backslash counts before one of them
  Shell,    ///< POSIX shells: nothing in single quotes is special; nothing is expanded
};

/// By those of the system's shell, for what users write.
Quoting UsersQuoting();

/// The words of a text, without the quotes around them. A quote that is not closed ends with the
/// text; empty quotes are an empty word.
std::vector<std::string> SplitWords(std::string_view text, Quoting quoting);

}  // namespace snipwell
