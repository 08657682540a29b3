#pragma once

#include <string>
#include <vector>

#include "compile/command_words.h"

namespace snipwell {

/// What the file holds that gcc writes when it crashes with -freport-bug ("ccX1Yz2a.out").
struct BugReport {
  /// A command of the driver, "g++" or "gcc", with the options that decide how a preprocessed
  /// source compiles. It names the source after the report, "ccX1Yz2a.ii" or ".i", which is not
  /// written.
  CommandWords command;
  /// Names under which the very compiler may be found, the most exact first, "g++" or "gcc" last.
  std::vector<std::string> compilers;
  std::string text;  ///< the preprocessed source
};

/// Reads such a file: comments with target, version and messages of gcc, a comment with the command
/// of the compiler behind the driver, and the source. Complains of a file that is none, or of
/// another language. The words of the command are not quoted there; of one with blanks, which only
/// names and macros have, the rest is lost.
BugReport ReadBugReport(const std::string& fileName);

}  // namespace snipwell
