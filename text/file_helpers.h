#pragma once

#include <string>

namespace snipwell {

/// Writes the line "ERROR: " message, a blank and the detail on standard error.
void ReportError(const char* message, const char* detail);

/// Makes the file `to`, created or truncated, a copy of the file `from`. Problems are reported with
/// `ReportError`; a `from` that cannot be opened leaves `to` empty. Nothing is done when both names
/// are equal or lead to one file, which truncating would destroy. False when the system refused to
/// write a part of `to`.
bool CopyTextFile(const std::string& from, const std::string& to);

/// Deletes the file `name` when it is a link, one of several names of a file, or a pipe, so that
/// writing it anew changes no other file, the source above all. When the system refuses, reports
/// that and ends the process with exit status 1.
void DetachFile(const std::string& name);

/// The same for a file that the tool makes for a source. When what is written into it would reach
/// that all the same, reports it and ends the process with exit status 1.
void ClaimFile(const std::string& name, const std::string& sourceName);

}  // namespace snipwell
