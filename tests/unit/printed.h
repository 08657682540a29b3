#pragma once

#include <ostream>
#include <sstream>
#include <string>

#include "text/string_array.h"

namespace snipwell {

/// Takes what is written on a stream, as long as it lives, and counts the flushes.
class Capture : private std::stringbuf {
 public:
  explicit Capture(std::ostream& captured) : stream(captured), before(captured.rdbuf(this)) {}
  ~Capture() override { stream.rdbuf(before); }

  std::string Text() const { return str(); }
  int Flushes() const { return flushes; }
  void Clear() { str(""); }

 private:
  int sync() override { return ++flushes, 0; }

  std::ostream& stream;
  std::streambuf* before;
  int flushes = 0;
};

/// What `value` looks like when printed.
template <typename Value>
std::string Printed(const Value& value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

/// The strings of an array, each between brackets: "[a][b]".
inline std::string Pieces(const StringArray& array) {
  std::string pieces;
  for (int i = 0; i < array.GetSize(); ++i) pieces += "[" + array.Get(i) + "]";
  return pieces;
}

}  // namespace snipwell
