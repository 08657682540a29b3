#include "platform/child_set.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "platform/descriptor.h"
#include "platform/orphans_posix.h"
#include "platform/signals.h"
#include "platform/signals_posix.h"
#include "platform/spawn_posix.h"

namespace snipwell::platform {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

// What a pipe holds, unless the child has made it larger, up to sixteen times as large.
constexpr std::size_t kPipeSize = std::size_t{64} * 1024;
constexpr int kLargestPipe = 16;

/// The descriptor under a number that no standard one has.
Descriptor AboveStandard(int number) {
  Descriptor descriptor(number);
  if (number < 0 || number > kStandardError) return descriptor;
  return Descriptor(::fcntl(number, F_DUPFD_CLOEXEC, kStandardError + 1));
}

/// Opens a pipe whose end to read never waits. Returns 0 or the system's error number.
int OpenPipe(Descriptor& readEnd, Descriptor& writeEnd) {
  int ends[2] = {-1, -1};
  if (::pipe2(ends, O_CLOEXEC) != 0) return errno;
  readEnd = AboveStandard(ends[0]);
  writeEnd = AboveStandard(ends[1]);
  if (!readEnd.IsOpen() || !writeEnd.IsOpen()) return EMFILE;
  return ::fcntl(readEnd.Number(), F_SETFL, O_NONBLOCK) == 0 ? 0 : errno;
}

/// A child of this process that has ended and that nobody has waited for, or 0. It is not taken
/// away, so that its process group stays its own until it is killed.
pid_t EndedProcess() {
  siginfo_t ended{};
  while (::waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) < 0 && errno == EINTR) {
  }
  return ended.si_pid;
}

int Await(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

/// Waits until a descriptor is ready, a signal comes or the time is up; without a time, forever.
void Poll(std::vector<pollfd>& descriptors, std::optional<double> seconds) {
  sigset_t mask;
  ::sigprocmask(SIG_SETMASK, nullptr, &mask);
  const sigset_t awaited = AwaitedSignals();
  for (int signal = 1; signal < NSIG; ++signal) {
    if (::sigismember(&awaited, signal) == 1) ::sigdelset(&mask, signal);
  }
  struct timespec time {};
  constexpr double kLongest = 1e6;  // then the caller waits again
  const double wait = std::clamp(seconds.value_or(0), 0.0, kLongest);
  time.tv_sec = static_cast<time_t>(wait);
  time.tv_nsec = static_cast<long>((wait - static_cast<double>(time.tv_sec)) * 1e9);
  if (::ppoll(descriptors.data(), descriptors.size(), seconds ? &time : nullptr, &mask) < 0) {
    for (pollfd& descriptor : descriptors) descriptor.revents = 0;
  }
}

}  // namespace

struct Child::Process {
  Descriptor output;  // closed when nobody can write any more
  std::string temporaryFolder;
};

Child::Child() : process(std::make_unique<Process>()) {}

Child::~Child() = default;

/// What holds as long as the set lives, and the buffer of all reading.
struct ChildSet::System {
  SignalsHeldBack heldBack;
  struct rlimit core {};
  std::vector<char> buffer = std::vector<char>(kPipeSize);

  System() {
    ::getrlimit(RLIMIT_CORE, &core);
    struct rlimit none = core;
    none.rlim_cur = 0;
    ::setrlimit(RLIMIT_CORE, &none);  // children have it from their parent
    AdoptOrphans(true);
  }
  ~System() {
    AdoptOrphans(false);
    ::setrlimit(RLIMIT_CORE, &core);
  }
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  /// Reads at most what a pipe holds. False when there is nothing to read, for now or any more.
  bool Read(Descriptor& pipe, std::string& output) {
    ssize_t count = -1;
    do {
      count = ::read(pipe.Number(), buffer.data(), buffer.size());
    } while (count < 0 && errno == EINTR);
    if (count == 0 || (count < 0 && errno != EAGAIN)) pipe.Close();
    if (count <= 0) return false;
    const std::size_t room = Child::kMostOutput - output.size();
    output.append(buffer.data(), std::min(static_cast<std::size_t>(count), room));
    return true;
  }
};

ChildSet::ChildSet() : system(std::make_unique<System>()) {}

ChildSet::~ChildSet() { EndAll(); }

int ChildSet::Spawn(Child& child, const ChildCommand& command) {
  Child::Process& process = *child.process;
  Descriptor writeEnd;
  pid_t id = -1;
  int reason = OpenPipe(process.output, writeEnd);
  process.temporaryFolder = command.temporaryFolder;
  if (reason == 0) reason = platform::Spawn(command, writeEnd, id);
  if (reason != 0) process.output.Close();
  child.id = id;
  return reason;
}

void ChildSet::Kill(Child& child) {
  const auto process = static_cast<pid_t>(child.id);
  ::kill(-process, SIGKILL);
  ::kill(process, SIGKILL);  // should it have left its group
}

bool ChildSet::AskToEnd(Child& child) {
  return ::kill(-static_cast<pid_t>(child.id), SIGTERM) == 0;
}

/// Ends what is left of a child that has ended or has been killed.
void ChildSet::Finish(Child& child) {
  Kill(child);
  const int status = Await(static_cast<pid_t>(child.id));
  if (WIFSIGNALED(status)) child.end.signal = WTERMSIG(status);
  if (WIFEXITED(status)) child.end.status = WEXITSTATUS(status);
  child.end.seconds = Seconds(Clock::now() - child.start).count();
  child.ended = child.hasNews = true;
  std::vector<Family> running;
  for (const auto& other : children) {
    if (other->ended) continue;
    running.push_back({static_cast<pid_t>(other->id), other->process->temporaryFolder});
  }
  EndOrphans(running);
  // What has been written is in the pipe; somebody who could not be killed may still write.
  for (int i = 0; i < kLargestPipe && system->Read(child.process->output, child.output); ++i) {
  }
  child.process->output.Close();
}

void ChildSet::Look(std::optional<double> seconds) {
  std::vector<pollfd> pipes;
  for (const auto& child : children) {
    const Descriptor& output = child->process->output;
    if (output.IsOpen()) pipes.push_back({output.Number(), POLLIN, 0});
  }
  Poll(pipes, seconds);
  auto pipe = pipes.begin();
  for (const auto& child : children) {
    Descriptor& output = child->process->output;
    if (!output.IsOpen() || (pipe++)->revents == 0) continue;
    if (system->Read(output, child->output)) child->hasNews = true;
  }
  while (const pid_t ended = EndedProcess()) {
    if (Child* const child = Find(ended)) {
      Finish(*child);
    } else {
      Await(ended);  // an orphan of a child that still runs
    }
  }
}

}  // namespace snipwell::platform
