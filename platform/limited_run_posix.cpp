#include "platform/limited_run.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <optional>

namespace snipwell::platform {

namespace {

using Clock = std::chrono::steady_clock;

/// The signals that end a wait; those that are ignored do not.
sigset_t AwaitedSignals() {
  sigset_t signals;
  ::sigemptyset(&signals);
  for (const int signal :
       {SIGCHLD, SIGINT, SIGHUP, SIGTERM, SIGQUIT, SIGALRM, SIGUSR1, SIGUSR2, SIGXCPU}) {
    struct sigaction handling {};
    ::sigaction(signal, nullptr, &handling);
    if (handling.sa_handler != SIG_IGN) ::sigaddset(&signals, signal);
  }
  return signals;
}

/// What the child does before it becomes the program; when it cannot, it writes the reason into
/// `failure`. Nothing here may allocate.
[[noreturn]] void BecomeProgram(const LimitedRun& run, char* const* argv, int output, int failure) {
  ::setpgid(0, 0);
  for (int signal = 1; signal < NSIG; ++signal) std::signal(signal, SIG_DFL);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  const struct rlimit noCore {};
  ::setrlimit(RLIMIT_CORE, &noCore);
  // A program of the background that reads the terminal would be stopped.
  const int nothing = ::open("/dev/null", O_RDONLY);
  ::dup2(nothing, STDIN_FILENO);
  ::dup2(output, STDOUT_FILENO);
  ::dup2(output, STDERR_FILENO);
  if (run.folder.empty() || ::chdir(run.folder.c_str()) == 0) ::execvp(argv[0], argv);
  const int reason = errno;
  const ssize_t written = ::write(failure, &reason, sizeof reason);
  ::_exit(written < 0 ? EXIT_FAILURE : EXIT_SUCCESS);
}

/// How long the wait may still be; nothing when there is no limit.
std::optional<std::chrono::nanoseconds> Remaining(const LimitedRun& run, Clock::time_point start) {
  if (run.limitSeconds <= 0) return std::nullopt;
  const std::chrono::duration<double> left =
      std::chrono::duration<double>(run.limitSeconds) - (Clock::now() - start);
  return std::chrono::duration_cast<std::chrono::nanoseconds>(left);
}

/// Waits for one of the awaited signals. Returns it, or 0 when the time is up.
int AwaitSignal(const std::optional<std::chrono::nanoseconds>& remaining) {
  const sigset_t signals = AwaitedSignals();
  if (!remaining) {
    int signal = 0;
    ::sigwait(&signals, &signal);
    return signal;
  }
  if (remaining->count() <= 0) return 0;
  constexpr long kNanoseconds = 1'000'000'000;
  const struct timespec time {
    remaining->count() / kNanoseconds, remaining->count() % kNanoseconds
  };
  const int signal = ::sigtimedwait(&signals, nullptr, &time);
  return signal > 0 ? signal : 0;
}

#ifdef __linux__
/// Makes this process the parent of whatever its children leave behind, in any session.
void AdoptOrphans() { ::prctl(PR_SET_CHILD_SUBREAPER, 1); }

/// Kills and awaits what has been adopted, and what that leaves behind.
void EndOrphans() {
  const std::string list = "/proc/self/task/" + std::to_string(::getpid()) + "/children";
  for (;;) {
    std::ifstream children(list);
    if (!children) return;  // not every kernel tells; then nothing more can be ended or awaited
    for (pid_t child = 0; children >> child;) ::kill(child, SIGKILL);
    if (::waitpid(-1, nullptr, 0) < 0 && errno == ECHILD) return;
  }
}
#else
void AdoptOrphans() {}
void EndOrphans() {}
#endif

/// Reads the reason why the program could not be started, or 0.
int ReadFailure(int descriptor) {
  int reason = 0;
  ssize_t count = -1;
  do {
    count = ::read(descriptor, &reason, sizeof reason);
  } while (count < 0 && errno == EINTR);
  return count == sizeof reason ? reason : 0;
}

void Await(pid_t child, const LimitedRun& run, LimitedEnd& end) {
  const Clock::time_point start = Clock::now();
  siginfo_t ended{};
  // Looked at but not taken away, so that the process group stays the child's until it is killed.
  while (::waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) != 0 ||
         ended.si_pid == 0) {
    const auto remaining = Remaining(run, start);
    const int signal = AwaitSignal(remaining);
    if (signal == SIGCHLD) continue;
    if (signal != 0) {
      end.interruptedBy = signal;
      break;
    }
    if (remaining && Remaining(run, start)->count() <= 0) {
      end.timedOut = true;
      break;
    }
  }
  ::kill(-child, SIGKILL);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  EndOrphans();
  if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
  if (WIFEXITED(status)) end.status = WEXITSTATUS(status);
}

}  // namespace

SignalsHeldBack::SignalsHeldBack() {
  std::signal(SIGCHLD, SIG_DFL);  // ignored, it would make the system forget how a child ended
  const sigset_t signals = AwaitedSignals();
  ::sigprocmask(SIG_BLOCK, &signals, &before);
}

SignalsHeldBack::~SignalsHeldBack() { ::sigprocmask(SIG_SETMASK, &before, nullptr); }

LimitedEnd RunLimited(const LimitedRun& run) {
  LimitedEnd end;
  const int output = ::open(run.outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (output < 0) return end;
  std::vector<char*> argv;
  for (const std::string& argument : run.arguments) {
    argv.push_back(const_cast<char*>(argument.c_str()));
  }
  argv.push_back(nullptr);
  ::setenv("TMPDIR", run.temporaryFolder.c_str(), 1);
  ::setenv("LANGUAGE", "en", 1);  // the tool knows errors by their English names
  AdoptOrphans();
  int failure[2] = {-1, -1};
  const bool piped = ::pipe2(failure, O_CLOEXEC) == 0;
  const pid_t child = piped ? ::fork() : -1;
  if (child == 0) BecomeProgram(run, argv.data(), output, failure[1]);
  ::close(output);
  if (piped) ::close(failure[1]);
  if (child < 0) return end;
  ::setpgid(child, child);
  end.reason = ReadFailure(failure[0]);
  ::close(failure[0]);
  Await(child, run, end);
  end.started = end.reason == 0;
  return end;
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
