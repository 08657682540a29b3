#pragma once

#include <memory>

namespace snipwell::platform {

/// Keeps interrupt, hang-up, terminate and the like back as long as it lives, so that one that
/// comes ends the process only when everything has been cleaned up. Signals that were ignored stay
/// so. One may live within another; the last that goes lets the signals through. For a process of
/// one thread.
class SignalsHeldBack {
 public:
  SignalsHeldBack();
  ~SignalsHeldBack();
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  struct Before;
  std::unique_ptr<Before> before;
};

/// The last signal that was held back since the previous call, or 0. It then counts as dealt with:
/// whoever takes it should clean up and end the process by it.
int TakeSignal();

/// Ends this process by `signal`, as if it had never been caught.
[[noreturn]] void EndBySignal(int signal);

}  // namespace snipwell::platform
