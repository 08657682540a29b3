#pragma once

#include <stdexcept>
#include <string>

namespace snipwell {

/// How the program ends.
enum ExitStatus : int {
  Reduced = 0,        ///< the result is smaller, or as small as it was, and was checked
  DoesNotFail = 1,    ///< the command does not fail
  BadUsage = 2,       ///< the command line cannot be understood
  CannotHold = 3,     ///< the failure cannot be held on to
  Surroundings = 4,   ///< no such compiler, no place to write, ...
  Interrupted = 130,  ///< stopped by somebody; what there was is delivered
};

/// Ends the run with a status and a sentence for the user, who has to know what to do next.
class RunEnd : public std::runtime_error {
 public:
  RunEnd(ExitStatus exitStatus, const std::string& sentence)
      : std::runtime_error(sentence), status(exitStatus) {}

  ExitStatus Status() const { return status; }

 private:
  ExitStatus status;
};

}  // namespace snipwell
