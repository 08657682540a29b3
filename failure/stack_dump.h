#pragma once

#include <string>
#include <vector>

namespace snipwell {

/// What a compiler's output tells of the stack on which it crashed.
struct StackDump {
  /// From the function where it crashed to those that called it, without the handler's that wrote
  /// the dump and without what is above "main". Arguments are left out; a function without a name
  /// is told as its module and the place in it, "libclang-cpp.so.14+0xa20692". Of cl's internal
  /// errors the first is the place in the compiler's own source, "symbols.cpp, line 33550". Empty
  /// when there is no dump.
  std::vector<std::string> functions;
  /// True when it goes back to where the program started: clang leaves out all but 256 frames.
  bool whole = false;
};

StackDump ReadStackDump(const std::vector<std::string>& lines);

}  // namespace snipwell
