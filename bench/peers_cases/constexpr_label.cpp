// Labels of fixed length that are drawn while compiling.
#include <array>
#include <string_view>
#include <tuple>
#include <utility>

namespace plot {

struct Label {
  char text[16] = "";
  constexpr std::string_view view() const { return std::string_view(text); }
};

template <int Width, int Height>
struct Canvas {
  std::array<char, Width * Height> dots{};
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

#include <map>
#include <string>

namespace plot {

std::map<std::string, std::string> Describe(const Label& label) {
  std::map<std::string, std::string> result;
  result["text"] = std::string(label.view());
  result["widths"] = std::to_string(std::get<0>(DrawAll(std::make_integer_sequence<int, 3>())));
  return result;
}

}  // namespace plot
