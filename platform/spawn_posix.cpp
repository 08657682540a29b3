#include "platform/spawn_posix.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <map>
#include <string>
#include <vector>

extern char** environ;  // NOLINT: the system declares no header for it everywhere

namespace snipwell::platform {

namespace {

/// A group of its own, default signals and nothing blocked.
class Attributes {
 public:
  Attributes() {
    sigset_t signals;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes, &signals);
    ::sigfillset(&signals);
    ::sigdelset(&signals, SIGKILL);
    ::sigdelset(&signals, SIGSTOP);
    ::posix_spawnattr_setsigdefault(&attributes, &signals);
    ::posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  }
  ~Attributes() { ::posix_spawnattr_destroy(&attributes); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;

  const posix_spawnattr_t* Get() const { return &attributes; }

 private:
  posix_spawnattr_t attributes{};
};

/// The folder and the standard streams.
class Actions {
 public:
  Actions(const std::string& folder, const Descriptor& output) {
    ::posix_spawn_file_actions_init(&actions);
    // A program of the background that reads the terminal would be stopped.
    ::posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions, output.Number(), kStandardOutput);
    ::posix_spawn_file_actions_adddup2(&actions, output.Number(), kStandardError);
    if (!folder.empty()) ::posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  }
  ~Actions() { ::posix_spawn_file_actions_destroy(&actions); }
  Actions(const Actions&) = delete;
  Actions& operator=(const Actions&) = delete;

  const posix_spawn_file_actions_t* Get() const { return &actions; }

 private:
  posix_spawn_file_actions_t actions{};
};

std::string NameOf(const std::string& variable) { return variable.substr(0, variable.find('=')); }

/// The child's variables: this process's, and in their place those of the command.
std::vector<std::string> Environment(const ChildCommand& command) {
  std::map<std::string, std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    variables.emplace(NameOf(*variable), *variable);
  }
  variables["LANGUAGE"] = "LANGUAGE=en";  // the tools know errors by their English names
  if (!command.temporaryFolder.empty()) variables["TMPDIR"] = "TMPDIR=" + command.temporaryFolder;
  for (const std::string& variable : command.environment) variables[NameOf(variable)] = variable;
  std::vector<std::string> environment;
  for (auto& [name, variable] : variables) environment.push_back(std::move(variable));
  return environment;
}

/// The strings as the system's calls want them; they must outlive the result.
std::vector<char*> Pointers(std::vector<std::string>& strings) {
  std::vector<char*> pointers;
  for (std::string& string : strings) pointers.push_back(string.data());
  pointers.push_back(nullptr);
  return pointers;
}

#ifdef __linux__
void LimitMemory(pid_t child, std::uint64_t bytes) {
  struct rlimit limit {};
  if (bytes == 0 || ::prlimit(child, RLIMIT_AS, nullptr, &limit) != 0) return;
  limit.rlim_max = std::min<rlim_t>(limit.rlim_max, bytes);
  limit.rlim_cur = limit.rlim_max;
  ::prlimit(child, RLIMIT_AS, &limit, nullptr);
}
#else
void LimitMemory(pid_t, std::uint64_t) {}
#endif

}  // namespace

int Spawn(const ChildCommand& command, const Descriptor& output, pid_t& child) {
  if (command.arguments.empty()) return ENOENT;
  const Attributes attributes;
  const Actions actions(command.folder, output);
  std::vector<std::string> arguments = command.arguments;
  std::vector<std::string> environment = Environment(command);
  const std::vector<char*> envp = Pointers(environment);
  const auto spawn = [&] {
    const std::vector<char*> argv = Pointers(arguments);
    return ::posix_spawnp(&child, argv[0], actions.Get(), attributes.Get(), argv.data(),
                          envp.data());
  };
  int reason = spawn();
  if (reason == ENOEXEC) {  // a script that names no interpreter; the shell looks it up again
    arguments.insert(arguments.begin(), {"/bin/sh", "-c", "exec \"$0\" \"$@\""});
    reason = spawn();
  }
  if (reason == 0) LimitMemory(child, command.memoryBytes);
  return reason;
}

}  // namespace snipwell::platform
