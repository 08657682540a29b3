#pragma once

#include <string>

#include "platform/child_set.h"

namespace snipwell::platform {

/// The variables of a child as a block for the system: this process's, and in their place those of
/// the command.
std::wstring EnvironmentBlock(const ChildCommand& command);

}  // namespace snipwell::platform
