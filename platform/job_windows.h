#pragma once

#include <cstdint>

#include "platform/handle_windows.h"

namespace snipwell::platform {

/// A job object: a process with all that it starts. Nothing can leave it, and what runs in it ends
/// with its owner, even when that is ended by force.
class Job {
 public:
  Job() = default;
  /// Each process may commit so many bytes of memory; 0 means no limit.
  explicit Job(std::uint64_t memoryBytes);

  /// Puts a process that was made but does not run yet into it, and lets it run. False when the
  /// system refuses.
  bool Run(const Handle& process, const Handle& thread) const;
  /// Ends all processes of it.
  void Kill() const;
  /// Waits, at most for some seconds, until nothing of a killed job runs: until then it can hold
  /// files.
  void Await() const;

 private:
  Handle job;
};

}  // namespace snipwell::platform
