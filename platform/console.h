#pragma once

#include <streambuf>
#include <string>

namespace snipwell::platform {

/// Stream buffer that collects what is written until the stream is flushed and then hands it to a
/// descriptor in one piece. Text that the system refuses is dropped: kept, it would turn up later
/// in whatever file the descriptor refers to by then.
class DescriptorBuffer : public std::streambuf {
 public:
  explicit DescriptorBuffer(int standard) : descriptor(standard) {}

 protected:
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* text, std::streamsize count) override;
  int sync() override;

 private:
  int descriptor;
  std::string pending;
};

/// As long as it lives, std::cout and std::cerr write straight to descriptors 1 and 2, a whole line
/// at a time, and std::cerr flushes std::cout first.
class ConsoleStreams {
 public:
  ConsoleStreams();
  ~ConsoleStreams();
  ConsoleStreams(const ConsoleStreams&) = delete;
  ConsoleStreams& operator=(const ConsoleStreams&) = delete;

 private:
  DescriptorBuffer output;
  DescriptorBuffer error;
  std::streambuf* outputBefore;
  std::streambuf* errorBefore;
};

}  // namespace snipwell::platform
