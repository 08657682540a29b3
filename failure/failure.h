#pragma once

#include <string>

namespace snipwell {

enum class FailureKind {
  None,         ///< it compiles, or nothing tells why it does not
  Error,        ///< an error in the program, as the compiler sees it
  Crash,        ///< the compiler's own failure: an internal error, a failed assertion, a signal
  Hang,         ///< not ended at the limit
  OutOfMemory,  ///< ended for want of memory, which says nothing of the program
  Line,         ///< a line that the user has chosen, whatever it means
  Test,         ///< a test of the user's holds
};

/// How a compilation has failed.
struct Failure {
  FailureKind kind = FailureKind::None;
  /// What tells it from other failures of its kind; without places, addresses and process numbers.
  std::string headline;
  bool errorsBefore = false;  ///< a crash, and the compiler had found an error before

  bool IsSameAs(const Failure& other) const {
    return kind == other.kind && headline == other.headline;
  }
};

}  // namespace snipwell
