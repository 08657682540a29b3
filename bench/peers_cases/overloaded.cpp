// Prints values of several kinds; one visitor is put together from functions for each kind.
#include <map>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

namespace print {

template <typename... Function>
struct Overloaded : Function... {
  using Function::operator()...;
};
template <typename... Function>
Overloaded(Function...) -> Overloaded<Function...>;

using Value = std::variant<int, std::string, std::vector<int>>;

inline std::string Join(const std::vector<int>& numbers) {
  std::string text;
  for (int number : numbers) text += std::to_string(number) + ",";
  return text;
}

std::string Text(const Value& value) {
  const auto visitor = Overloaded{
      [](int number) { return std::to_string(number); },
      [](const std::string& text) { return '"' + text + '"'; },
      [](const std::vector<int>& numbers) { return Join(numbers); },
      [](const auto&... several) requires(sizeof...(several) > 1) {
        return (std::string(several) + ...);
      }};
  return std::visit(visitor, value);
}

}  // namespace print

#include <sqlite3.h>

class Store {
 public:
  explicit Store(sqlite3* base) : base_(base) {}
  void Set(const std::string& name, print::Value value) { values_[name] = std::move(value); }

  int Save() const {
    std::string statement;
    for (const auto& [name, value] : values_)
      statement += "update settings set " + name + " = " + print::Text(value) + ";";
    return sqlite3_exec(base_, statement.c_str(), nullptr, nullptr, nullptr);
  }

 private:
  sqlite3* base_;
  std::map<std::string, print::Value> values_;
};

int main() {
  sqlite3* base = nullptr;
  if (sqlite3_open(":memory:", &base) != SQLITE_OK) return 1;
  Store store(base);
  store.Set("levels", std::vector<int>{1, 2});
  return store.Save();
}
