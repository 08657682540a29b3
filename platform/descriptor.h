#pragma once

#include <utility>

namespace snipwell::platform {

/// The numbers of the process's standard output and standard error descriptors.
constexpr int kStandardOutput = 1;
constexpr int kStandardError = 2;

/// Owner of one open file descriptor, closed when the owner goes. Every descriptor that the tool
/// makes is closed in a child process and has a number above the standard ones, so that a tool
/// started with a standard descriptor closed never takes one of its files for that stream.
class Descriptor {
 public:
  Descriptor() = default;
  /// Takes over `openNumber`; a negative number makes an empty owner.
  explicit Descriptor(int openNumber) : number(openNumber) {}
  Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  bool IsOpen() const { return number >= 0; }
  int Number() const { return number; }

  /// Closes the descriptor now. Returns false when the system reports that data was lost; closing
  /// an empty owner succeeds.
  bool Close();

 private:
  int number = -1;
};

/// A new descriptor for what the standard descriptor `standard` (1 or 2) refers to. Empty on
/// failure, with the system's reason in errno.
Descriptor DuplicateStandard(int standard);

/// Makes the standard descriptor `standard` (1 or 2) refer to what `target` refers to; a child
/// process inherits it. False on failure, with the system's reason in errno.
bool PointStandardAt(int standard, const Descriptor& target);

}  // namespace snipwell::platform
