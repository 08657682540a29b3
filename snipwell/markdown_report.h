#pragma once

#include <string>
#include <string_view>

#include "snipwell/findings.h"

namespace snipwell {

/// The first line of a report, by which a later run recognises its own results.
inline constexpr std::string_view kReportMarker = "<!-- snipwell report -->";

/// A report to be pasted into a bug tracker, in CommonMark with tables and as valid UTF-8. Text
/// that could be read as markup stands in code spans and in fences that it cannot close.
std::string MarkdownReport(const Findings& findings);

}  // namespace snipwell
