#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace snipwell::platform {

/// How many processors this process may use; 1 when the system does not tell.
std::size_t Processors();

/// Bytes of memory that the machine has; 0 when the system does not tell.
std::uint64_t MemoryBytes();

/// The folder that holds this process's program; empty when the system does not tell.
std::filesystem::path ProgramFolder();

/// True when a program of that name, or path, can be started.
bool IsProgram(const std::string& name);

/// The file that a program's name leads to, through PATH and links; empty when there is none.
std::filesystem::path ProgramFile(const std::string& name);

}  // namespace snipwell::platform
