#pragma once

#include <string>

namespace snipwell {

/// A frame of a stack dump. The function's name without arguments, or none; and the module with the
/// place in it, if the dump tells it.
struct StackFrame {
  std::string name;
  std::string module;
};

/// True, and the frame is filled, when the line is one of a dump that gcc, clang, cl or the
/// system's library wrote.
bool ParseFrame(const std::string& line, StackFrame& frame);

/// The same for the line that tells where in its own source cl has failed, in whatever language:
/// "(compiler file 'D:\src\symbols.cpp', line 33550)" is "symbols.cpp, line 33550".
bool ParsePlaceInCl(const std::string& line, StackFrame& frame);

}  // namespace snipwell
