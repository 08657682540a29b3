#include "platform/orphans_posix.h"

#ifdef __linux__

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>

namespace snipwell::platform {

namespace {

/// The children of this process, alive or not. Empty on a kernel that does not tell; then nothing
/// more can be ended.
std::vector<pid_t> Children() {
  std::ifstream list("/proc/self/task/" + std::to_string(::getpid()) + "/children");
  return {std::istream_iterator<pid_t>(list), std::istream_iterator<pid_t>()};
}

/// Its variables as it was started with them, with a NUL byte before and behind each.
std::string EnvironmentOf(pid_t process) {
  std::ifstream in("/proc/" + std::to_string(process) + "/environ", std::ios::binary);
  return '\0' + std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool BelongsToOneOf(const std::vector<Family>& families, pid_t process) {
  const pid_t group = ::getpgid(process);
  const auto inGroup = [&](const Family& family) { return family.group == group; };
  if (std::any_of(families.begin(), families.end(), inGroup)) return true;
  if (families.empty()) return false;
  const std::string environment = EnvironmentOf(process);
  return std::any_of(families.begin(), families.end(), [&](const Family& family) {
    const std::string variable = '\0' + ("TMPDIR=" + family.temporaryFolder) + '\0';
    return !family.temporaryFolder.empty() && environment.find(variable) != std::string::npos;
  });
}

}  // namespace

void AdoptOrphans(bool adopt) { ::prctl(PR_SET_CHILD_SUBREAPER, adopt ? 1 : 0); }

void EndOrphans(const std::vector<Family>& running) {
  for (;;) {
    std::vector<pid_t> killed;
    for (const pid_t child : Children()) {
      // One that has the rights of another user may not be killed, and is not waited for.
      if (!BelongsToOneOf(running, child) && ::kill(child, SIGKILL) == 0) killed.push_back(child);
    }
    if (killed.empty()) return;
    for (const pid_t child : killed) {
      while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
      }
    }
  }
}

}  // namespace snipwell::platform

#else

namespace snipwell::platform {

void AdoptOrphans(bool) {}
void EndOrphans(const std::vector<Family>&) {}

}  // namespace snipwell::platform

#endif
