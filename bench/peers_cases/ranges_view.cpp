// Picks the readings of a sensor that are worth a look.
#include <algorithm>
#include <ranges>
#include <string>
#include <vector>

namespace sensor {

struct Reading {
  std::string place;
  double value;
  bool valid() const { return value > -100 && value < 100; }
};

class Log {
 public:
  void Add(std::string place, double value) { readings_.push_back({std::move(place), value}); }

  double Highest() const {
    double highest = 0;
    for (double value : readings_ | std::views::filter(&Reading::valid) |
                            std::views::transform(&Reading::value))
      highest = std::max(highest, value);
    return highest;
  }

  std::size_t Places() const {
    std::vector<std::string> places;
    for (const auto& reading : readings_) places.push_back(reading.place);
    std::sort(places.begin(), places.end());
    return std::unique(places.begin(), places.end()) - places.begin();
  }

 private:
  std::vector<Reading> readings_;
};

}  // namespace sensor

int main() {
  sensor::Log log;
  log.Add("roof", 21.5);
  log.Add("cellar", 12);
  return log.Highest() > 20 && log.Places() == 2 ? 0 : 1;
}
