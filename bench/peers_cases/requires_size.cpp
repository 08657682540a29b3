// Fields of a record are only copied where their type is small enough.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace record {

struct Buffer {
  std::vector<std::uint8_t> bytes;
  template <typename T>
  void Append(const T& value) {
    const auto at = bytes.size();
    bytes.resize(at + sizeof value);
    std::memcpy(&bytes[at], &value, sizeof value);
  }
};

template <typename T>
auto Store(Buffer& buffer, T value) {
  auto copy = [&buffer](auto field) requires(sizeof([] { return 8; }) == 1) {
    buffer.Append(field);
    return buffer.bytes.size();
  };
  return copy(value);
}

inline std::string Hex(const Buffer& buffer) {
  std::string text;
  for (std::uint8_t byte : buffer.bytes) {
    text += "0123456789abcdef"[byte >> 4];
    text += "0123456789abcdef"[byte & 15];
  }
  return text;
}

}  // namespace record

#include <zlib.h>

int main() {
  record::Buffer buffer;
  record::Store(buffer, std::int32_t(crc32(0, buffer.bytes.data(), 0)));
  return record::Hex(buffer).size() + record::Store(buffer, 'x');
}
