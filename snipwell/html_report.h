#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "snipwell/findings.h"

namespace snipwell {

/// One of the user's files as it was, to be shown with what is left of it.
struct ViewedFile {
  std::string name;
  std::string text;
  std::vector<std::uint32_t> lines;  ///< that are left: from 1, sorted, each once
};

/// The findings as one page that needs nothing else, no script and no network: the files beside the
/// reduced source, and the size over the time. It is valid UTF-8, and follows the reader's choice
/// of light or dark.
std::string HtmlReport(const Findings& findings, const std::vector<ViewedFile>& files);

}  // namespace snipwell
