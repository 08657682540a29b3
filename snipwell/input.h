#pragma once

#include <string>
#include <vector>

#include "compile/compile_command.h"
#include "snipwell/settings.h"
#include "snipwell/workshop.h"

namespace snipwell {

/// What a run starts from.
struct Input {
  std::vector<std::string> given;    ///< the command, word by word
  CompileCommand command;            ///< the same, understood; only `source` where a test decides
  std::vector<std::string> test;     ///< the command of the test that decides; empty: the compiler
  std::string source;                ///< path of the user's source from here
  std::string text;                  ///< of the source
  std::vector<std::string> remarks;  ///< sentences for the user
};

/// Finds the command and reads the source by whatever way they were given. Scripts and sources
/// that have to be made for that lie in the workshop's folder. Throws RunEnd with what to do when
/// something is missing or cannot be understood.
Input ReadInput(const Settings& settings, Workshop& workshop);

}  // namespace snipwell
