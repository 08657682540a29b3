#pragma once

#include <csignal>

namespace snipwell::platform {

/// The signals that a wait for children must let in, while `SignalsHeldBack` lives: those that are
/// held back, and that of a child's end.
sigset_t AwaitedSignals();

}  // namespace snipwell::platform
