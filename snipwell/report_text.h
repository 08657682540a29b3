#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace snipwell {

/// The words as one command line for the system's shell, quoted where that is needed.
std::string CommandLine(const std::vector<std::string>& words);

/// The text as valid UTF-8, with U+FFFD for what is none and for control characters other than tab
/// and line feed. A carriage return before a line feed goes.
std::string ReadableText(std::string_view text);

/// The same on one line, for a place that has no other.
std::string ReadableLine(std::string_view text);

/// The text by its lines, at most `most` (at least 3) of them and none of more than 1,000 bytes.
/// Where lines are left out in the middle, a line tells how many; an "[...]" ends a line cut short.
std::vector<std::string> ShortenedLines(std::string_view text, std::size_t most);

/// "1,234,567".
std::string Grouped(std::size_t number);

/// "1 compilation", "1,234 compilations".
std::string Counted(std::size_t number, const std::string& noun);

/// "0.4 s", "12 s", "3 min 20 s", "2 h 5 min".
std::string Duration(double seconds);

}  // namespace snipwell
