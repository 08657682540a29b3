#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace snipwell {

/// What the command line asks for.
struct Settings {
  std::vector<std::string> words;   ///< the compiler's command, or the file to work on
  std::string database;             ///< compilation database that holds the command, or its folder
  std::string test;                 ///< command of a test that takes the compiler's place
  std::string wrongCode;            ///< another compiler's command; programs must differ
  std::string match;                ///< text of the line that stands for the failure
  std::string acceptedBy;           ///< command of a compiler that accepts the program
  std::string output;               ///< file for the result; empty means beside the source
  std::string html;                 ///< file for the report as a page; empty means none
  std::string json;                 ///< file for the report for machines; empty means none
  std::string trace;                ///< file that gets a line for each accepted program
  std::string launch;               ///< command before every compilation of the token stage
  std::string work;                 ///< where the folders of the tries are made; empty: temporary
  std::vector<std::string> stages;  ///< names in their order
  bool list = false;                ///< only list the lines that can stand for the failure
  bool allowErrors = false;         ///< errors may come to stand before a crash
  bool force = false;               ///< write over files that are no earlier results
  bool resume = false;              ///< go on from an earlier result
  bool quiet = false;
  bool verbose = false;
  std::size_t jobs = 0;       ///< compilations at a time
  double timeoutSeconds = 0;  ///< for the whole run; 0 means none
  double limitSeconds = 60;   ///< for the first compilation; one that takes longer hangs
  int repeat = 1;             ///< how often a program has to fail
};

/// Parses the arguments of the process. Returns the exit status when there is nothing more to do
/// than what was written (help, version, a complaint).
std::optional<int> ParseSettings(int argc, const char* const* argv, Settings& settings);

}  // namespace snipwell
