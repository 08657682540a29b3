// Codecs of a small message format: what is known about a type stands inside the class.
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace wire {

class Writer {
 public:
  template <typename T>
  struct Size {
    static constexpr std::size_t value = sizeof(T);
  };
  template <>
  struct Size<std::string> {
    static constexpr std::size_t value = 2;
  };

  template <typename T>
  void Put(const T& object) {
    if (bytes_.size() + Size<T>::value > limit_) throw std::length_error("message too long");
    const auto at = bytes_.size();
    bytes_.resize(at + Size<T>::value);
    std::memcpy(bytes_.data() + at, &object, sizeof(T));
  }

  std::size_t size() const { return bytes_.size(); }

 private:
  std::vector<unsigned char> bytes_;
  std::size_t limit_ = 1 << 16;
};

}  // namespace wire

// paste: /usr/include/sqlite3.h
#include <zlib.h>

namespace wire {

unsigned long Checksum(const std::string& text) {
  return crc32(0, reinterpret_cast<const Bytef*>(text.data()), static_cast<uInt>(text.size()));
}

void Load(sqlite3_stmt* statement, Writer& writer) {
  while (sqlite3_step(statement) == SQLITE_ROW) writer.Put(sqlite3_column_int64(statement, 0));
  writer.Put(Checksum(sqlite3_sql(statement)));
}

}  // namespace wire
