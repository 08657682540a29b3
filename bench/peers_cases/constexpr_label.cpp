// Labels of fixed length that are drawn while compiling.
#include <tuple>
#include <utility>

namespace plot {

struct Label {
  char text[16] = "";
  constexpr const char* view() const { return text; }
};

template <int Width, int Height>
struct Canvas {
  char dots[Width * Height]{};
  constexpr char& at(int x, int y) { return dots[y * Width + x]; }
};

template <int Width, int Height>
constexpr int Draw() {
  Canvas<Width, Height> canvas{};
  Label label{};
  auto put = [&](const char* from) { *label.text = *from; };
  put("x");
  canvas.at(0, 0) = label.text[0];
  return canvas.at(0, 0);
}

template <int... Width>
constexpr auto DrawAll(std::integer_sequence<int, Width...>) {
  return std::make_tuple(Draw<Width + 1, 2>()...);
}

}  // namespace plot

static_assert(plot::Draw<4, 2>() == 'x', "the label is drawn");

#include <cstdio>
#include <sqlite3.h>

namespace plot {

void Describe(const Label& label) {
  std::printf("text %s, with %s\n", label.view(), sqlite3_libversion());
  std::printf("width %d\n", std::get<0>(DrawAll(std::make_integer_sequence<int, 3>())));
}

}  // namespace plot
