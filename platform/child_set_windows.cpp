// One completion port is told of everything: of output by the children's pipes, of their ends by
// waits that threads of the system make, of signals.

#include "platform/child_set.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

#include "platform/environment_windows.h"
#include "platform/job_windows.h"
#include "platform/launch_windows.h"
#include "platform/output_pipe_windows.h"
#include "platform/programs_windows.h"
#include "platform/signals.h"
#include "platform/signals_windows.h"
#include "platform/status_windows.h"

namespace snipwell::platform {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// Has a packet without an operation put to a completion port when a process has ended.
class EndNotice {
 public:
  EndNotice() = default;
  ~EndNotice() { Cancel(); }
  EndNotice(const EndNotice&) = delete;
  EndNotice& operator=(const EndNotice&) = delete;

  void Order(const Handle& process, HANDLE toPort, long forKey) {
    port = toPort;
    key = forKey;
    ::RegisterWaitForSingleObject(&wait, process.Get(), Post, this, INFINITE, WT_EXECUTEONLYONCE);
  }

  void Cancel() {
    if (wait != nullptr) ::UnregisterWaitEx(std::exchange(wait, nullptr), INVALID_HANDLE_VALUE);
  }

 private:
  static void CALLBACK Post(void* notice, BOOLEAN /*timedOut*/) {
    const auto* const self = static_cast<EndNotice*>(notice);
    ::PostQueuedCompletionStatus(self->port, 0, static_cast<ULONG_PTR>(self->key), nullptr);
  }

  HANDLE wait = nullptr;
  HANDLE port = nullptr;
  long key = 0;
};

Handle OpenNothing() {
  return Handle(::CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_EXISTING, 0, nullptr));
}

/// Without a console of this process's, each child would open a window of its own. With one, a
/// group of its own keeps Ctrl-C from it.
DWORD ConsoleFlags() { return ::GetConsoleCP() == 0 ? CREATE_NO_WINDOW : CREATE_NEW_PROCESS_GROUP; }

DWORD Milliseconds(std::optional<double> seconds) {
  constexpr double kLongest = 1e6;  // then the caller waits again
  if (!seconds) return INFINITE;
  return static_cast<DWORD>(std::ceil(std::clamp(*seconds, 0.0, kLongest) * 1000));
}

}  // namespace

struct Child::Process {
  explicit Process(Child& child) : output(child.output, kMostOutput) {}

  Job job;
  Handle process;
  OutputPipe output;
  EndNotice notice;
};

Child::Child() : process(std::make_unique<Process>(*this)) {}

Child::~Child() = default;

struct ChildSet::System {
  SignalsHeldBack heldBack;
  Handle port{::CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1)};
  long lastId = 0;

  System() { TellSignalsTo(port.Get()); }
  ~System() { TellSignalsTo(nullptr); }
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  /// Takes in one thing that has happened. False when there was none in this time.
  bool TakeIn(ChildSet& set, DWORD milliseconds) const {
    DWORD bytes = 0;
    ULONG_PTR key = 0;
    OVERLAPPED* operation = nullptr;
    const bool came =
        ::GetQueuedCompletionStatus(port.Get(), &bytes, &key, &operation, milliseconds) != 0;
    if (!came && operation == nullptr) return false;
    // What belongs to a child that has ended meanwhile is known already.
    Child* const child = set.Find(static_cast<long>(key));
    if (child == nullptr) return true;
    if (operation == nullptr) {
      set.Finish(*child);
    } else if (child->process->output.Take()) {
      child->hasNews = true;
    }
    return true;
  }
};

ChildSet::ChildSet() : system(std::make_unique<System>()) {}

ChildSet::~ChildSet() { EndAll(); }

int ChildSet::Spawn(Child& child, const ChildCommand& command) {
  if (command.arguments.empty()) return ENOENT;
  Child::Process& parts = *child.process;
  child.id = ++system->lastId;
  const Handle writeEnd = parts.output.Open(system->port.Get(), child.id);
  const Handle nothing = OpenNothing();
  if (!writeEnd.IsOpen() || !nothing.IsOpen()) return EMFILE;
  Launch launch;
  launch.program = FindProgram(command.arguments.front(), command.folder);
  if (launch.program.empty()) return ENOENT;
  launch.arguments = command.arguments;
  launch.folder = command.folder;
  launch.environment = EnvironmentBlock(command);
  launch.standard = {nothing.Get(), writeEnd.Get(), writeEnd.Get()};
  launch.flags = ConsoleFlags() | CREATE_SUSPENDED;
  PROCESS_INFORMATION made{};
  if (const DWORD reason = platform::Start(launch, made)) return ErrnoOf(reason);
  parts.process = Handle(made.hProcess);
  parts.job = Job(command.memoryBytes);
  if (!parts.job.Run(parts.process, Handle(made.hThread))) return EPERM;
  parts.notice.Order(parts.process, system->port.Get(), child.id);
  return 0;
}

void ChildSet::Kill(Child& child) { child.process->job.Kill(); }

bool ChildSet::AskToEnd(Child& /*child*/) { return false; }

void ChildSet::Finish(Child& child) {
  Child::Process& parts = *child.process;
  Kill(child);
  ::WaitForSingleObject(parts.process.Get(), INFINITE);
  parts.notice.Cancel();
  DWORD status = 0;
  ::GetExitCodeProcess(parts.process.Get(), &status);
  child.end.signal = SignalOf(status);
  child.end.status = static_cast<int>(status);
  child.end.seconds = Seconds(Clock::now() - child.start).count();
  child.ended = child.hasNews = true;
  parts.job.Await();
  parts.output.TakeRest();
}

void ChildSet::Look(std::optional<double> seconds) {
  constexpr int kMostAtOnce = 64;  // then the caller hears of it
  if (!system->TakeIn(*this, Milliseconds(seconds))) return;
  for (int i = 1; i < kMostAtOnce && system->TakeIn(*this, 0); ++i) {
  }
}

}  // namespace snipwell::platform
