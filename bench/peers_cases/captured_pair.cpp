// Finds the shortest way through a small net of streets.
#include <limits>
#include <map>
#include <queue>
#include <string>
#include <utility>
#include <vector>

namespace net {

using Name = std::string;

class Streets {
 public:
  void Add(const Name& from, const Name& to, int length) {
    ways_[from].emplace_back(to, length);
    ways_[to].emplace_back(from, length);
  }

  int Shortest(const Name& start, const Name& goal) const {
    std::priority_queue<std::pair<int, Name>> open;
    std::map<Name, int> known;
    open.emplace(0, start);
    while (!open.empty()) {
      auto [length, place] = open.top();
      open.pop();
      if (place == goal) return -length;
      if (!known.emplace(place, length).second) continue;
      const auto ways = ways_.find(place);
      if (ways == ways_.end()) continue;
      auto follow = [&open, &known, length](const std::pair<Name, int>& way) {
        if (!known.count(way.first)) open.emplace(length - way.second, way.first);
      };
      for (const auto& way : ways->second) follow(way);
    }
    return std::numeric_limits<int>::max();
  }

 private:
  std::map<Name, std::vector<std::pair<Name, int>>> ways_;
};

}  // namespace net

#include <sqlite3.h>

void Load(sqlite3_stmt* statement, net::Streets& streets) {
  auto text = [&](int column) {
    return net::Name(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
  };
  while (sqlite3_step(statement) == SQLITE_ROW)
    streets.Add(text(0), text(1), sqlite3_column_int(statement, 2));
}
