#include "platform/machine.h"

#include <unistd.h>

#include <algorithm>
#include <thread>

namespace snipwell::platform {

std::size_t Processors() { return std::max(1U, std::thread::hardware_concurrency()); }

std::uint64_t MemoryBytes() {
  const long pages = ::sysconf(_SC_PHYS_PAGES);
  const long size = ::sysconf(_SC_PAGESIZE);
  return pages > 0 && size > 0 ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(size)
                               : 0;
}

}  // namespace snipwell::platform
