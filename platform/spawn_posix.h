#pragma once

#include <sys/types.h>

#include "platform/child_set.h"
#include "platform/descriptor.h"

namespace snipwell::platform {

/// Starts the program of `command` as the leader of a process group, with empty standard input and
/// with both other streams to `output`. Returns 0, or the system's error number when it cannot be
/// started; `child` is then left alone.
int Spawn(const ChildCommand& command, const Descriptor& output, pid_t& child);

}  // namespace snipwell::platform
