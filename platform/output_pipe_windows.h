#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/handle_windows.h"

namespace snipwell::platform {

/// The pipe to which a child writes, read without waiting for it. A carriage return and line feed
/// comes as one line feed. It stays where it is: the system knows its address.
class OutputPipe {
 public:
  /// `most` bytes are kept of what comes; the rest is read but thrown away.
  OutputPipe(std::string& text, std::size_t most);
  ~OutputPipe();
  OutputPipe(const OutputPipe&) = delete;
  OutputPipe& operator=(const OutputPipe&) = delete;

  /// Makes the pipe, which tells the completion port by `key` of what comes, and begins to read.
  /// Returns the end to write, which is empty when the system refuses.
  Handle Open(HANDLE port, long key);

  /// Takes what has come, as the port has told, and reads on. False when nobody can write any more.
  bool Take();
  /// Takes all that comes until nobody writes any more; one who is no child is not waited for.
  void TakeRest();

 private:
  void Read();
  bool TakeBytes();
  void Append(std::size_t count);
  void Put(char c);

  std::string& output;
  std::size_t room;
  Handle readEnd;  // closed when nobody can write any more
  Handle done;
  OVERLAPPED operation{};
  std::vector<char> buffer;
  bool heldReturn = false;  // a carriage return that a line feed may follow
};

}  // namespace snipwell::platform
