#pragma once

#include <string>
#include <string_view>

#include "snipwell/html_report.h"

namespace snipwell {

/// The text for a place between tags or within a quoted attribute; readable, as `ReadableText`.
std::string Escaped(std::string_view text);

/// What the page's `style` element holds.
extern const char* const kHtmlStyle;

/// The source with its comments, literals and keywords marked.
std::string HtmlSource(std::string_view source);

/// The file with the lines that are left marked, what is far from them folded away, and a strip
/// that shows where in the file they are.
std::string HtmlFile(const ViewedFile& file);

/// The plot of the size over the time, the size on a logarithmic scale. Empty when the history has
/// less than two points.
std::string HtmlPlot(const Findings& findings);

}  // namespace snipwell
