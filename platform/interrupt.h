#pragma once

namespace snipwell::platform {

/// Ignores the interrupt signal (Ctrl-C) as long as it lives, then gives the signal its default
/// handling, whatever the handling was before.
class InterruptIgnored {
 public:
  InterruptIgnored();
  ~InterruptIgnored();
  InterruptIgnored(const InterruptIgnored&) = delete;
  InterruptIgnored& operator=(const InterruptIgnored&) = delete;
};

}  // namespace snipwell::platform
