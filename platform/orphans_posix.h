#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace snipwell::platform {

/// What a process that a child has left behind is known by.
struct Family {
  pid_t group;                  ///< the child's process group
  std::string temporaryFolder;  ///< its TMPDIR; empty when it has none of its own
};

/// Makes this process the parent of whatever its children leave behind, in any session; or no
/// longer. On Linux only.
void AdoptOrphans(bool adopt);

/// Kills and awaits what has been adopted, and what that leaves behind. What belongs to a family
/// that still runs is left alone.
void EndOrphans(const std::vector<Family>& running);

}  // namespace snipwell::platform
