#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "snipwell/line_map.h"

namespace snipwell {

/// The size of the program when a stage had ended.
struct StageSize {
  std::string stage;  ///< in words: "preprocessed"
  std::size_t bytes;
  std::size_t tokens;
};

/// Another crash of the compiler, met on the way.
struct OtherCrash {
  std::string headline;
  std::string file;  ///< in which the program that causes it was kept
};

/// The size of the program from a moment on.
struct SizePoint {
  double seconds;  ///< since the start, not less than that of the point before
  std::size_t bytes;
};

/// All that a report tells. The texts are any bytes; the reports see to it that they stay in their
/// places.
struct Findings {
  std::string headline;                      ///< of the failure, one line
  std::string kind;                          ///< of failure, in words: "The compiler crashes."
  std::vector<std::string> compilerVersion;  ///< lines, version and target in its own words
  std::vector<std::string> command;          ///< words, as given
  std::vector<std::string> reducedCommand;   ///< words, for the reduced source
  std::string sourceName;                    ///< of the reduced source
  std::string source;                        ///< the reduced source
  std::string acceptedBy;         ///< name of a compiler that accepts it; empty when none is known
  std::string output;             ///< what the compiler writes on it
  std::vector<StageSize> stages;  ///< the first is the start
  std::size_t compilations = 0;
  double seconds = 0;
  std::vector<LineRange> origin;   ///< where the reduced source comes from
  std::vector<std::string> notes;  ///< sentences
  std::vector<OtherCrash> otherCrashes;
  std::vector<SizePoint> history;
  std::string version;  ///< of this program: "1.0.0"
};

}  // namespace snipwell
