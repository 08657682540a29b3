#pragma once

#include <csignal>
#include <string>
#include <vector>

namespace snipwell::platform {

/// What a program that `RunLimited` runs is given.
struct LimitedRun {
  std::vector<std::string> arguments;  ///< the first one is the program, looked up in PATH
  std::string folder;                  ///< current directory; empty means this process's own
  std::string outputFile;              ///< gets standard output and standard error
  std::string temporaryFolder;         ///< TMPDIR of the program
  double limitSeconds = 0;             ///< wall time; 0 means no limit
};

/// How it ended.
struct LimitedEnd {
  bool started = false;
  int reason = 0;  ///< the system's error number when it could not be started, if it gave one
  bool timedOut = false;  ///< it was ended at the limit
  int signal = 0;         ///< the signal that ended it, or 0
  int status = 0;         ///< its exit status, when no signal did
  /// The signal (interrupt, hang-up, terminate or the like) that this process was sent meanwhile,
  /// or 0. The program has been ended then, and the caller should clean up and end by that signal.
  int interruptedBy = 0;
};

/// Keeps interrupt, hang-up, terminate and the like back as long as it lives, so that one that
/// comes ends the process only when everything has been cleaned up. Signals that were ignored stay
/// so.
class SignalsHeldBack {
 public:
  SignalsHeldBack();
  ~SignalsHeldBack();
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  sigset_t before{};
};

/// Runs a program and waits for it. It leads a process group of its own, and whatever of the group
/// still runs when the program has ended, the limit is passed or this process is interrupted, is
/// killed; on Linux also what has left the group. Its standard input is empty, it leaves no core
/// file, and it is told to write its messages in English. Signals must be held back meanwhile.
LimitedEnd RunLimited(const LimitedRun& run);

/// Ends this process by `signal`, as if it had never been caught.
[[noreturn]] void EndBySignal(int signal);

}  // namespace snipwell::platform
