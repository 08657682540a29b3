// Fields of a record are only copied where their type is small enough.
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace record {

struct Buffer {
  std::uint8_t bytes[64] = {};
  std::size_t size = 0;
  template <typename T>
  void Append(const T& value) {
    if (size + sizeof value > sizeof bytes) std::abort();
    std::memcpy(bytes + size, &value, sizeof value);
    size += sizeof value;
  }
};

template <typename T>
auto Store(Buffer& buffer, T value) {
  auto copy = [&buffer](auto field) requires(sizeof([] { return 8; }) == 1) {
    buffer.Append(field);
    return buffer.size;
  };
  return copy(value);
}

inline void Hex(const Buffer& buffer, char* text) {
  for (std::size_t i = 0; i < buffer.size; ++i) {
    *text++ = "0123456789abcdef"[buffer.bytes[i] >> 4];
    *text++ = "0123456789abcdef"[buffer.bytes[i] & 15];
  }
  *text = 0;
}

}  // namespace record

#include <zlib.h>

int main() {
  record::Buffer buffer;
  char text[2 * sizeof buffer.bytes + 1];
  record::Store(buffer, std::int32_t(crc32(0, buffer.bytes, 0)));
  record::Hex(buffer, text);
  return static_cast<int>(std::strlen(text) + record::Store(buffer, 'x'));
}
