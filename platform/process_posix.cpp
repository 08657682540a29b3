#include "platform/process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

extern char** environ;  // NOLINT: the system declares no header for it everywhere

namespace snipwell::platform {

namespace {

/// The handling of SIGCHLD that lets a child be waited for: with the signal ignored, which a parent
/// can hand down, the system forgets how the child ended.
class ChildSignalDefault {
 public:
  ChildSignalDefault() {
    struct sigaction handling {};
    handling.sa_handler = SIG_DFL;
    ::sigaction(SIGCHLD, &handling, &before);
  }
  ~ChildSignalDefault() { ::sigaction(SIGCHLD, &before, nullptr); }
  ChildSignalDefault(const ChildSignalDefault&) = delete;
  ChildSignalDefault& operator=(const ChildSignalDefault&) = delete;

 private:
  struct sigaction before {};
};

/// The signals that the tool was started with ignored. A program that it starts would ignore them
/// as well; handled ones become default anyway. But a hang-up that the tool outlives must not end
/// its compiler, for the end would be taken for an answer.
sigset_t IgnoredSignals() {
  sigset_t ignored;
  ::sigemptyset(&ignored);
  for (int signal = 1; signal <= SIGRTMAX; ++signal) {
    struct sigaction handling {};
    if (signal != SIGHUP && ::sigaction(signal, nullptr, &handling) == 0 &&
        handling.sa_handler == SIG_IGN) {
      ::sigaddset(&ignored, signal);
    }
  }
  return ignored;
}

/// Spawn attributes that start the child with default signals and nothing blocked, so that Ctrl-C
/// ends the compiler whatever the tool itself has inherited.
class DefaultSignals {
 public:
  DefaultSignals() {
    static const sigset_t ignored = IgnoredSignals();
    sigset_t none;
    ::sigemptyset(&none);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setsigdefault(&attributes, &ignored);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  }
  ~DefaultSignals() { ::posix_spawnattr_destroy(&attributes); }
  DefaultSignals(const DefaultSignals&) = delete;
  DefaultSignals& operator=(const DefaultSignals&) = delete;

  const posix_spawnattr_t* Get() const { return &attributes; }

 private:
  posix_spawnattr_t attributes{};
};

bool IsProgram(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

/// Starts a script that names no interpreter with the shell, as the system's own look-up does.
int SpawnScript(pid_t* child, const std::string& path, char* const* argv,
                const posix_spawnattr_t* attributes) {
  std::string shell = "/bin/sh";
  std::string script = path[0] == '/' ? path : "./" + path;  // never taken for an option
  std::vector<char*> shellArgv{shell.data(), script.data()};
  for (char* const* rest = argv[0] == nullptr ? argv : argv + 1; *rest != nullptr; ++rest) {
    shellArgv.push_back(*rest);
  }
  shellArgv.push_back(nullptr);
  return ::posix_spawn(child, shell.c_str(), nullptr, attributes, shellArgv.data(), environ);
}

/// Starts the program at exactly `path`. False when it cannot be started.
bool Spawn(pid_t* child, const std::string& path, char* const* argv) {
  const DefaultSignals signals;
  int error = ::posix_spawn(child, path.c_str(), nullptr, signals.Get(), argv, environ);
  if (error == ENOEXEC) error = SpawnScript(child, path, argv, signals.Get());
  return error == 0;
}

/// The directories to search, as PATH has them; without a PATH the system's own list.
std::string SearchPath() {
  if (const char* path = std::getenv("PATH")) return path;
  std::string path(::confstr(_CS_PATH, nullptr, 0), '\0');
  ::confstr(_CS_PATH, path.data(), path.size());
  if (!path.empty()) path.pop_back();  // the NUL byte that confstr counts
  return path;
}

/// The first program called `name` in the directories of PATH, or "". An empty entry of PATH is the
/// current directory.
std::string FindInPath(const std::string& name) {
  const std::string path = SearchPath();
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t colon = path.find(':', start);
    const std::size_t end = colon == std::string::npos ? path.size() : colon;
    std::string directory = path.substr(start, end - start);
    if (directory.empty()) directory = ".";
    std::string candidate = directory + '/' + name;
    if (IsProgram(candidate)) return candidate;
    start = end + 1;
  }
  return std::string();
}

/// The path of the program that `name` means, or "". The search ends at the first program: one that
/// then cannot be started must not give way to another compiler.
std::string FindProgram(const std::string& name) {
  if (name.empty()) return std::string();
  if (IsProgram(name)) return name;
  return name.find('/') == std::string::npos ? FindInPath(name) : std::string();
}

}  // namespace

ProgramEnd RunProgram(const char* program, char* const* argv) {
  const ChildSignalDefault childSignal;
  const std::string path = FindProgram(program);
  pid_t child = -1;
  if (path.empty() || !Spawn(&child, path, argv)) return ProgramEnd::NotStarted;
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return ProgramEnd::Failed;
  }
  const bool succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return succeeded ? ProgramEnd::ExitedZero : ProgramEnd::Failed;
}

}  // namespace snipwell::platform
