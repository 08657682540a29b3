#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// What libFuzzer calls with every input it makes up.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace snipwell::fuzz {

inline std::string TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Cuts what stands before the first `end` off `text` and returns it; all of it when there is none.
inline std::string TakeUpTo(char end, std::string& text) {
  const std::size_t place = text.find(end);
  const std::string taken = text.substr(0, place);
  text.erase(0, place == std::string::npos ? place : place + 1);
  return taken;
}

/// Ends the process, which libFuzzer reports with the input, unless `holds`.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace snipwell::fuzz
