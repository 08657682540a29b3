#pragma once

#include <cstddef>
#include <cstdint>

namespace snipwell::platform {

/// How many processors this process may use; 1 when the system does not tell.
std::size_t Processors();

/// Bytes of memory that the machine has; 0 when the system does not tell.
std::uint64_t MemoryBytes();

}  // namespace snipwell::platform
