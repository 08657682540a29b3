#include "platform/signals.h"

#include <cstdlib>
#include <map>

#include "platform/signals_posix.h"

namespace snipwell::platform {

namespace {

constexpr int kHeldBack[] = {SIGINT, SIGHUP, SIGTERM, SIGQUIT, SIGALRM, SIGUSR1, SIGUSR2, SIGXCPU};

volatile std::sig_atomic_t caught = 0;

void Catch(int signal) { caught = signal; }
void Overlook(int /*signal*/) {}  // it still ends a wait, which an ignored one would not

bool IsIgnored(int signal) {
  struct sigaction handling {};
  return ::sigaction(signal, nullptr, &handling) == 0 && handling.sa_handler == SIG_IGN;
}

sigset_t SignalsToTake() {
  sigset_t signals;
  ::sigemptyset(&signals);
  for (const int signal : kHeldBack) {
    if (!IsIgnored(signal)) ::sigaddset(&signals, signal);
  }
  return signals;
}

}  // namespace

struct SignalsHeldBack::Before {
  sigset_t mask{};
  std::map<int, struct sigaction> handling;

  void Handle(int signal, void (*handler)(int)) {
    struct sigaction now {};
    now.sa_handler = handler;
    now.sa_flags = SA_NOCLDSTOP;
    ::sigaction(signal, &now, &handling[signal]);
  }
};

SignalsHeldBack::SignalsHeldBack() : before(std::make_unique<Before>()) {
  // Ignored, it would make the system forget how a child ended.
  before->Handle(SIGCHLD, Overlook);
  const sigset_t signals = AwaitedSignals();
  ::sigprocmask(SIG_BLOCK, &signals, &before->mask);
  for (const int signal : kHeldBack) {
    if (!IsIgnored(signal)) before->Handle(signal, Catch);
  }
}

SignalsHeldBack::~SignalsHeldBack() {
  for (const auto& [signal, handling] : before->handling) ::sigaction(signal, &handling, nullptr);
  ::sigprocmask(SIG_SETMASK, &before->mask, nullptr);
}

int TakeSignal() {
  // Without that of a child's end, which would no longer end the wait that follows.
  const sigset_t signals = SignalsToTake();
  sigset_t mask;
  ::sigprocmask(SIG_UNBLOCK, &signals, &mask);  // what has come is delivered now
  ::sigprocmask(SIG_SETMASK, &mask, nullptr);
  const int signal = caught;
  caught = 0;
  return signal;
}

sigset_t AwaitedSignals() {
  sigset_t signals = SignalsToTake();
  ::sigaddset(&signals, SIGCHLD);
  return signals;
}

void EndBySignal(int signal) {
  std::signal(signal, SIG_DFL);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::raise(signal);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace snipwell::platform
