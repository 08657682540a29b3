#pragma once

#include <string>

namespace snipwell {

/// Puts into parentheses, which the tool overlooks, what differs between two compilations that fail
/// in the same way, and leaves what identifies the failure:
///
/// - the place at the start of a line, and after "In file included from" and its "from" lines:
///   "file:12:5:" becomes "file(12,5):", "file:12:" becomes "file(12):";
/// - addresses ("0x" and at least six hexadecimal digits, but for an offset, "+0x...");
/// - process numbers ("==123==", "pid 123");
/// - names of files in `temporaryFolder`.
///
/// A line too long for the tool to take in one piece is cut where it does not depend on the number
/// of digits of the place.
/// The line must be without colours.
std::string RewriteLine(const std::string& line, const std::string& temporaryFolder);

/// What a message says, without what differs between two compilations that fail in the same way:
/// the line and column of a place in it ("a lambda at x.c:12:5" becomes "a lambda at x.c"), the
/// number in the name of a lambda ("<lambda_12ab>" becomes "<lambda_>"), and all from an address
/// on.
std::string WithoutPlaces(const std::string& message);

/// The line without the sequences that colour a terminal, which stand within the words of a
/// message.
std::string WithoutColours(const std::string& line);

}  // namespace snipwell
