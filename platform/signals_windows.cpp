// The console tells of Ctrl-C, Ctrl-Break and its own end on a thread that the system makes.

#include "platform/signals_windows.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#include "platform/signals.h"

namespace snipwell::platform {

namespace {

std::atomic<int> caught{0};
std::atomic<HANDLE> listener{nullptr};
int living = 0;  // objects that hold signals back

int SignalOf(DWORD event) {
  if (event == CTRL_C_EVENT) return SIGINT;
  return event == CTRL_BREAK_EVENT ? SIGBREAK : SIGTERM;
}

BOOL WINAPI Catch(DWORD event) {
  caught = SignalOf(event);
  if (listener != nullptr) ::PostQueuedCompletionStatus(listener, 0, 0, nullptr);
  // When the console closes, the system ends the process as soon as this returns; until then it has
  // some seconds to clean up, and ends itself.
  if (caught == SIGTERM) ::Sleep(INFINITE);
  return TRUE;
}

}  // namespace

struct SignalsHeldBack::Before {};

SignalsHeldBack::SignalsHeldBack() {
  if (living++ == 0) ::SetConsoleCtrlHandler(Catch, TRUE);
}

SignalsHeldBack::~SignalsHeldBack() {
  if (--living > 0) return;
  ::SetConsoleCtrlHandler(Catch, FALSE);
  if (const int signal = TakeSignal()) EndBySignal(signal);
}

int TakeSignal() { return caught.exchange(0); }

void EndBySignal(int signal) {
  constexpr DWORD kInterrupted = 0xC000013A;  // what the system ends a process with at Ctrl-C
  std::_Exit(signal == SIGTERM ? EXIT_FAILURE : static_cast<int>(kInterrupted));
}

void TellSignalsTo(HANDLE port) { listener = port; }

}  // namespace snipwell::platform
