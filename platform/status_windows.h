#pragma once

namespace snipwell::platform {

/// The status of processes that this one ends.
constexpr unsigned long kKilledStatus = 0xC0DE0009;

/// The signal that a process with this exit status would have ended by on a POSIX system, or 0.
int SignalOf(unsigned long status);

/// The number that C gives to an error of the system's.
int ErrnoOf(unsigned long reason);

}  // namespace snipwell::platform
