// A table whose columns each have their own type; a row is checked column by column.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

// paste: /usr/include/fmt/core.h

namespace table {

struct Limits {
  std::int64_t least = 0;
  std::optional<std::int64_t> most;
  bool Holds(std::int64_t value) const { return value >= least && (!most || value <= *most); }
};

template <typename... Column>
class Table {
 public:
  using Row = std::tuple<Column...>;
  void Add(Column... column) { rows_.emplace_back(column...); }

  template <typename... Value>
  static bool Fits(const Limits& limits, Value... value) {
    return ([&](auto... part) {
      Column converted = value;
      return limits.Holds(converted) && sizeof...(part) > 0;
    }(value, value) && ...);
  }

  std::size_t size() const { return rows_.size(); }

 private:
  std::vector<Row> rows_;
};

}  // namespace table

// paste: /usr/include/fmt/format.h

int main() {
  table::Table<int, long, short> table;
  table::Limits limits{1, 100};
  if (table::Table<int, long, short>::Fits(limits, 3, 4L, short(5))) table.Add(3, 4, 5);
  std::variant<std::size_t, std::string> report = table.size();
  if (std::get<0>(report) == 0) report = fmt::format("{} rows, at least {}", 0, limits.least);
  return report.index();
}
