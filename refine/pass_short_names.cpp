// Short names for all, at once, then for halves of them. Names with two underscores, which often
// mean something to the compiler, are tried apart.

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "refine/names.h"
#include "refine/passes.h"

namespace snipwell {

namespace {

/// Names of one letter, then of two, that a program does not use.
class FreshNames {
 public:
  explicit FreshNames(const std::map<std::string_view, Places>& usedNames) : used(usedNames) {}

  std::string Next() {
    for (;;) {
      const std::string name = Name(number++);
      if (used.count(name) == 0 && !IsKeyword(name)) return name;
    }
  }

 private:
  static std::string Name(std::size_t number) {
    static const std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::string last(1, letters[number % letters.size()]);
    return number < letters.size() ? last : Name(number / letters.size() - 1) + last;
  }

  const std::map<std::string_view, Places>& used;
  std::size_t number = 0;
};

/// Names that get others, by their cuts, one name behind the other.
class Renamings {
 public:
  void Add(const Places& places, std::uint32_t text) {
    const std::vector<Cut> one = EachReplaced(places, text);
    cuts.insert(cuts.end(), one.begin(), one.end());
    ends.push_back(static_cast<std::ptrdiff_t>(cuts.size()));
  }

  void AddTo(EditList& edits) const {
    if (ends.empty()) return;
    AddHalved(edits, 0, ends.size() - 1, [&](std::size_t first, std::size_t last) {
      const std::ptrdiff_t begin = first == 0 ? 0 : ends[first - 1];
      return std::vector<Cut>(cuts.begin() + begin, cuts.begin() + ends[last]);
    });
  }

 private:
  std::vector<Cut> cuts;
  std::vector<std::ptrdiff_t> ends;  // of each name's cuts
};

}  // namespace

EditList ShortNames(const Program& program, const Tree& /*tree*/) {
  EditList edits;
  const auto names = PlacesOfNames(program);
  FreshNames fresh(names);
  Renamings usual;
  Renamings special;
  std::string text = fresh.Next();
  for (const auto& [name, places] : names) {
    if (IsKeyword(name) || name.size() <= text.size()) continue;
    auto& renamings = name.find("__") == std::string_view::npos ? usual : special;
    renamings.Add(places, edits.Put(std::move(text)));
    text = fresh.Next();
  }
  usual.AddTo(edits);
  special.AddTo(edits);
  return edits;
}

}  // namespace snipwell
