#include "platform/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace snipwell::platform {

bool Descriptor::Close() {
  if (!IsOpen()) return true;
  // Never repeated: the number is released even when the call is interrupted.
  return ::close(std::exchange(number, -1)) == 0 || errno == EINTR;
}

Descriptor DuplicateStandard(int standard) {
  return Descriptor(::fcntl(standard, F_DUPFD_CLOEXEC, kStandardError + 1));
}

bool PointStandardAt(int standard, const Descriptor& target) {
  while (::dup2(target.Number(), standard) < 0) {
    if (errno != EINTR && errno != EBUSY) return false;
  }
  return true;
}

}  // namespace snipwell::platform
