// Handles into an arena; the arena says how the type of a handle is deduced.
#include <memory>
#include <string>
#include <vector>

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

  auto Add(std::string text) {
    texts_.push_back(std::make_unique<std::string>(std::move(text)));
    return Handle(Index(texts_.size() - 1), texts_.back().get());
  }

  std::size_t bytes() const {
    std::size_t sum = 0;
    for (const auto& text : texts_) sum += text->size();
    return sum;
  }

 private:
  std::vector<std::unique_ptr<std::string>> texts_;
};

}  // namespace arena

#include <sqlite3.h>

int main() {
  arena::Arena<int> arena;
  auto handle = arena.Add(sqlite3_libversion());
  return handle.index + static_cast<int>(handle.item->size() + arena.bytes());
}
