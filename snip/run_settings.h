#pragma once

#include <ctime>
#include <string>

#include "text/string_array.h"

namespace snipwell {

/// What `Run` returns and the tool writes as its last output. There is no code 5.
enum RunResult : int {
  NothingToIsolate = 0,  ///< help was shown, or the source compiled cleanly
  Isolated = 1,          ///< the isolation ended, or stopped on the time limit
  NoMatchingError = 2,   ///< the first compilation failed without a line that matches
  NoCompiler = 3,        ///< no usable compiler option
  NoLogFile = 4,         ///< no usable log-file option
  InvalidTimeout = 6,    ///< the time limit is not a number
};

/// The settings of one run, as parsed from the command line.
struct RunSettings {
  bool verbose = false;          ///< write the trace lines
  bool isCpp = false;            ///< the source is C++, else C
  std::string compilerPath;      ///< path or command name of the compiler
  std::string logFilePath;       ///< receives the completion line
  std::string criteriaFileName;  ///< matching criteria; empty means the default
  int timeoutMinutes = 0;        ///< time limit of the run in minutes; 0 means none
  /// The compiler's argument list: this program's own name, the arguments that were not consumed,
  /// in their order, and the source file last. Always holds "/c" or "-c".
  StringArray arguments;
  std::string errorFileName;  ///< the compiler-output file
  std::time_t startTime = 0;  ///< taken before anything else, in whole seconds
};

}  // namespace snipwell
