#pragma once

#include <windows.h>

#include <utility>

namespace snipwell::platform {

/// Owner of one open handle, closed when the owner goes.
class Handle {
 public:
  Handle() = default;
  /// Takes over an open handle; null and INVALID_HANDLE_VALUE make an empty owner.
  explicit Handle(HANDLE open) : handle(open == INVALID_HANDLE_VALUE ? nullptr : open) {}
  Handle(Handle&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle, other.handle);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { Close(); }

  bool IsOpen() const { return handle != nullptr; }
  HANDLE Get() const { return handle; }

  void Close() {
    if (IsOpen()) ::CloseHandle(std::exchange(handle, nullptr));
  }

 private:
  HANDLE handle = nullptr;
};

}  // namespace snipwell::platform
