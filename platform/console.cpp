#include "platform/console.h"

#include <iostream>

#include "platform/descriptor.h"
#include "platform/files.h"

namespace snipwell::platform {

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type c) {
  if (!traits_type::eq_int_type(c, traits_type::eof())) pending += traits_type::to_char_type(c);
  return traits_type::not_eof(c);
}

std::streamsize DescriptorBuffer::xsputn(const char* text, std::streamsize count) {
  pending.append(text, static_cast<std::size_t>(count));
  return count;
}

int DescriptorBuffer::sync() {
  WriteAll(descriptor, pending.data(), pending.size());
  pending.clear();
  return 0;
}

ConsoleStreams::ConsoleStreams()
    : output(kStandardOutput),
      error(kStandardError),
      outputBefore(std::cout.rdbuf(&output)),
      errorBefore(std::cerr.rdbuf(&error)) {
  // Every line ends with a flush, so flushing after each operation would only tear lines apart.
  std::cerr.unsetf(std::ios_base::unitbuf);
  std::cerr.tie(&std::cout);
  // Out of memory must not silence a stream for the rest of the run.
  std::cout.exceptions(std::ios_base::badbit);
  std::cerr.exceptions(std::ios_base::badbit);
}

ConsoleStreams::~ConsoleStreams() {
  std::cout.exceptions(std::ios_base::goodbit);
  std::cerr.exceptions(std::ios_base::goodbit);
  std::cout.flush();
  std::cerr.flush();
  std::cout.rdbuf(outputBefore);
  std::cerr.rdbuf(errorBefore);
  std::cerr.setf(std::ios_base::unitbuf);
}

}  // namespace snipwell::platform
