#include "platform/descriptor.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdint>
#include <utility>

namespace snipwell::platform {

bool Descriptor::Close() {
  if (!IsOpen()) return true;
  return ::_close(std::exchange(number, -1)) == 0;
}

Descriptor DuplicateStandard(int standard) {
  const int number = ::_dup(standard);
  if (number < 0) return Descriptor();
  if (number <= kStandardError) {
    // A standard descriptor was closed and is taken now; the next duplicate gets another number.
    const Descriptor low(number);
    return DuplicateStandard(standard);
  }
  ::SetHandleInformation(reinterpret_cast<HANDLE>(::_get_osfhandle(number)), HANDLE_FLAG_INHERIT,
                         0);
  return Descriptor(number);
}

bool PointStandardAt(int standard, const Descriptor& target) {
  return ::_dup2(target.Number(), standard) == 0;
}

}  // namespace snipwell::platform
