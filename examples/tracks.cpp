// How long walks through a city of square blocks are. It is valid C++20, but clang++ reports an
// error up to version 15.

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace walk {

struct Point {
  int east;
  int north;
};

template <typename Item, int kMost>
class List {
 public:
  bool Add(const Item& item) {
    if (count == kMost) return false;
    items[count++] = item;
    return true;
  }
  const Item* begin() const { return items; }
  const Item* end() const { return items + count; }
  int Count() const { return count; }

 private:
  Item items[kMost] = {};
  int count = 0;
};

using Track = List<Point, 100>;

template <typename Measure>
int Sum(const Track& track, Measure measure) {
  int sum = 0;
  const Point* last = nullptr;
  for (const Point& point : track) {
    if (last != nullptr) sum += measure(*last, point);
    last = &point;
  }
  return sum;
}

int Distance(const Point& from, const Point& to) {
  return std::abs(to.east - from.east) + std::abs(to.north - from.north);
}

int Greater(int a, int b) { return a > b ? a : b; }

int Length(const Track& track) { return Sum(track, Distance); }

// How far from a place the track leads.
int Reach(const Track& track, const Point& place) {
  const auto [east, north] = place;
  int reach = 0;
  const auto look = [&reach, &east, &north](const Point& from, const Point& to) {
    reach = Greater(reach, Greater(Distance(from, {east, north}), Distance(to, {east, north})));
    return reach;
  };
  Sum(track, look);
  return reach;
}

struct Walk {
  char name[20];
  Track track;
};

const Walk* Find(const List<Walk, 10>& walks, const char* name) {
  for (const Walk& each : walks) {
    if (std::strcmp(each.name, name) == 0) return &each;
  }
  return nullptr;
}

}  // namespace walk

int main() {
  walk::Walk shore = {"shore", {}};
  shore.track.Add({0, 0});
  shore.track.Add({3, 4});
  walk::List<walk::Walk, 10> walks;
  walks.Add(shore);
  const walk::Walk* found = walk::Find(walks, "shore");
  if (found == nullptr) return EXIT_FAILURE;
  std::printf("%d %d\n", walk::Length(found->track), walk::Reach(found->track, {0, 0}));
}
