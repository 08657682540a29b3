// A pool of slots whose members are defined outside of their class.
#include <cstddef>
#include <optional>
#include <new>
#include <type_traits>
#include <utility>

namespace pool {

template <typename T>
concept Storable = std::is_object_v<T> && sizeof(T) > 0;

template <typename Key>
class Pool {
 public:
  template <Storable Item>
  class Slot {
   public:
    explicit Slot(Item item) : item_(std::move(item)) {}
    void Clear();
    template <Storable Other>
    bool Takes(const Other& other) const;

   private:
    std::optional<Item> item_;
  };

  template <Storable Item>
  std::size_t Add(const Key& key, const Item& item);

 private:
  std::pair<Key, std::size_t> sizes_[8];
  std::size_t count_ = 0;
};

template <typename Key>
template <Storable Item>
std::size_t Pool<Key>::Add(const Key& key, const Item& item) {
  Slot<Item> slot(item);
  sizes_[count_] = {key, sizeof(slot)};
  return ++count_;
}

template <typename Key>
template <Storable Item>
void Pool<Key>::Slot<Item>::Clear() {
  item_.reset();
}

template <typename Key>
template <Storable Item>
template <Storable Other>
bool Pool<Key>::Slot<Item>::Takes(const Other& other) const {
  return item_ && sizeof(other) <= sizeof(*item_);
}

}  // namespace pool

#include <sqlite3.h>

int main() {
  pool::Pool<const char*> pool;
  pool::Pool<const char*>::Slot<int> slot(sqlite3_libversion_number());
  slot.Clear();
  return pool.Add("version", 3) == 1 && !slot.Takes('x') ? 0 : 1;
}
