// Handles into an arena; the arena says how the type of a handle is deduced.
#include <cstddef>
#include <cstring>
#include <type_traits>

namespace arena {

template <typename Index>
class Arena {
 public:
  template <typename Item>
  struct Handle {
    Handle(Index index, Item* item) : index(index), item(item) {}
    Index index;
    Item* item;
  };
  template <typename Item>
  Handle(Index, Item*) -> Handle<Item>;

  auto Add(const char* text) {
    static_assert(std::is_integral<Index>::value, "an index counts");
    texts_[count_] = text;
    return Handle(Index(count_), &texts_[count_++]);
  }

  std::size_t bytes() const {
    std::size_t sum = 0;
    for (std::size_t i = 0; i < count_; ++i) sum += std::strlen(texts_[i]);
    return sum;
  }

 private:
  const char* texts_[16] = {};
  std::size_t count_ = 0;
};

}  // namespace arena

#include <sqlite3.h>

int main() {
  arena::Arena<int> arena;
  auto handle = arena.Add(sqlite3_libversion());
  return handle.index + static_cast<int>(std::strlen(*handle.item) + arena.bytes());
}
