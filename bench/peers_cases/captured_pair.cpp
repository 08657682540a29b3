// Finds the shortest way through a small net of streets.
#include <queue>
#include <utility>
#include <vector>

namespace net {

using Name = std::size_t;

class Streets {
 public:
  void Add(Name from, Name to, int length) {
    ways_.resize(std::max(ways_.size(), std::max(from, to) + 1));
    ways_[from].emplace_back(to, length);
    ways_[to].emplace_back(from, length);
  }

  int Shortest(Name start, Name goal) const {
    std::priority_queue<std::pair<int, Name>> open;
    std::vector<bool> known(ways_.size());
    open.emplace(0, start);
    while (!open.empty()) {
      auto [length, place] = open.top();
      open.pop();
      if (place == goal) return -length;
      if (known[place]) continue;
      known[place] = true;
      auto follow = [&open, &known, length](const std::pair<Name, int>& way) {
        if (!known[way.first]) open.emplace(length - way.second, way.first);
      };
      for (const auto& way : ways_[place]) follow(way);
    }
    return -1;
  }

 private:
  std::vector<std::vector<std::pair<Name, int>>> ways_;  // by where they begin
};

}  // namespace net

#include <sqlite3.h>

void Load(sqlite3_stmt* statement, net::Streets& streets) {
  auto name = [&](int column) {
    return static_cast<net::Name>(sqlite3_column_int64(statement, column));
  };
  while (sqlite3_step(statement) == SQLITE_ROW)
    streets.Add(name(0), name(1), sqlite3_column_int(statement, 2));
}
