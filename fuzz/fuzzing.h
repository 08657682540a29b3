#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <streambuf>
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

inline bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == '\r'; }

/// With every blank a space, as the cleaner writes them.
inline std::string WithSpaces(std::string text) {
  std::replace_if(text.begin(), text.end(), IsBlank, ' ');
  return text;
}

/// Ends the process, which libFuzzer reports with the input, unless `holds`.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

/// Takes what is written on std::cout and std::cerr and drops it.
class Silence : private std::streambuf {
 public:
  Silence() : output(std::cout.rdbuf(this)), error(std::cerr.rdbuf(this)) {}
  ~Silence() override {
    std::cout.rdbuf(output);
    std::cerr.rdbuf(error);
  }

 private:
  int_type overflow(int_type c) override { return traits_type::not_eof(c); }
  std::streamsize xsputn(const char*, std::streamsize count) override { return count; }

  std::streambuf* output;
  std::streambuf* error;
};

}  // namespace snipwell::fuzz
