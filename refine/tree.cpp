// Three walks over the words. The first pairs the brackets with a stack; one that closes what is
// not open is a plain word, one that closes something further out leaves what is open within it
// plain. The second pairs angles within each list. The third cuts every list into its items.

#include "refine/tree.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace snipwell {

namespace {

constexpr std::size_t kKinds = 3;
constexpr std::array<std::string_view, kKinds> kOpening = {"(", "[", "{"};
constexpr std::array<std::string_view, kKinds> kClosing = {")", "]", "}"};
constexpr std::array<std::string_view, kKinds> kOtherOpening = {"", "<:", "<%"};
constexpr std::array<std::string_view, kKinds> kOtherClosing = {"", ":>", "%>"};

using Partners = std::vector<std::uint32_t>;

std::optional<std::size_t> KindOf(std::string_view text,
                                  const std::array<std::string_view, kKinds>& usual,
                                  const std::array<std::string_view, kKinds>& other) {
  for (std::size_t kind = 0; kind < kKinds; ++kind) {
    if (text == usual[kind] || text == other[kind]) return kind;
  }
  return std::nullopt;
}

/// The brackets that are open at one place, and of each kind how many since the directive began:
/// in a directive only its own can be closed.
class BracketPairs {
 public:
  BracketPairs(const Program& wholeProgram, Partners& found)
      : program(wholeProgram), partner(found) {}

  void Run() {
    for (std::uint32_t i = 0; i < program.Size(); ++i) Take(i);
  }

 private:
  struct Open {
    std::uint32_t index;
    std::size_t kind;  // kKinds for a directive
  };

  void Take(std::uint32_t index) {
    const Word& word = program.Words()[index];
    if (word.kind == TokenKind::DirectiveStart) return StartDirective(index);
    if (word.kind == TokenKind::DirectiveEnd) return EndDirective(index);
    if (word.kind != TokenKind::Punctuator) return;
    const std::string_view text = program.Text(word);
    if (const auto kind = KindOf(text, kOpening, kOtherOpening)) return Push(index, *kind);
    if (const auto kind = KindOf(text, kClosing, kOtherClosing)) Close(index, *kind);
  }

  void Push(std::uint32_t index, std::size_t kind) {
    open.push_back({index, kind});
    ++counts[kind];
  }

  void Close(std::uint32_t index, std::size_t kind) {
    if (counts[kind] == 0) return;
    while (open.back().kind != kind) Pop();
    Pair(index);
  }

  void Pop() {
    --counts[open.back().kind];
    open.pop_back();
  }

  void Pair(std::uint32_t index) {
    partner[open.back().index] = index;
    partner[index] = open.back().index;
    Pop();
  }

  void StartDirective(std::uint32_t index) {
    outside = counts;
    counts = {};
    Push(index, kKinds);
  }

  void EndDirective(std::uint32_t index) {
    if (counts[kKinds] == 0) return;
    while (open.back().kind != kKinds) Pop();
    Pair(index);
    counts = outside;
  }

  using Counts = std::array<std::size_t, kKinds + 1>;

  const Program& program;
  Partners& partner;
  std::vector<Open> open;
  Counts counts{};
  Counts outside{};
};

/// Pairs the angles among the words of one list that other brackets do not hold.
class AnglePairs {
 public:
  AnglePairs(const Program& wholeProgram, Partners& found)
      : program(wholeProgram), partner(found) {}

  void Run(Range inside) {
    open.clear();
    for (std::uint32_t i = inside.begin; i < inside.end; ++i) {
      Take(i);
      if (partner[i] != Tree::kNone && partner[i] > i) i = partner[i];
    }
  }

 private:
  static constexpr std::uint32_t kFarthest = 4000;  // words from one angle to the other

  void Take(std::uint32_t index) {
    const std::string_view text = program.Text(index);
    if (text == "<" && MayOpen(index)) open.push_back(index);
    if (text == ";") open.clear();
    if (text.front() != '>' || text.size() > 1 || open.empty()) return;
    if (index - open.back() < kFarthest) {
      partner[open.back()] = index;
      partner[index] = open.back();
    }
    open.pop_back();
  }

  bool MayOpen(std::uint32_t index) const {
    return index > 0 && program.Words()[index - 1].kind == TokenKind::Name &&
           program.Text(index - 1) != "operator";
  }

  const Program& program;
  Partners& partner;
  std::vector<std::uint32_t> open;
};

/// Cuts lists into items.
class Items {
 public:
  Items(const Program& wholeProgram, const Tree& wholeTree)
      : program(wholeProgram), tree(wholeTree) {}

  /// Items that each have their end within them.
  std::vector<Range> Statements(Range inside) const {
    std::vector<Range> items;
    for (std::uint32_t at = inside.begin; at < inside.end;) {
      const std::uint32_t end = StatementEnd(at, inside.end);
      items.push_back({at, end});
      at = end;
    }
    return items;
  }

  /// What commas, or the ends within a for-statement's head, part; without them.
  std::vector<Range> Parted(Range inside, std::string_view separator) const {
    std::vector<Range> items;
    std::uint32_t begin = inside.begin;
    for (std::uint32_t at = inside.begin; at < inside.end; at = tree.Next(at)) {
      if (program.Text(at) != separator) continue;
      items.push_back({begin, at});
      begin = at + 1;
    }
    if (begin < inside.end || !items.empty()) items.push_back({begin, inside.end});
    return items;
  }

  bool Holds(Range inside, std::string_view text) const {
    for (std::uint32_t at = inside.begin; at < inside.end; at = tree.Next(at)) {
      if (program.Text(at) == text) return true;
    }
    return false;
  }

  /// The part of a statement before its ";" or body.
  Range Head(Range item) const {
    while (item.Size() > 1) {
      const std::string_view last = program.Text(item.end - 1);
      if (last != ";" && last != "}") break;
      item.end = tree.Previous(item.end);
    }
    return item;
  }

 private:
  std::uint32_t StatementEnd(std::uint32_t begin, std::uint32_t end) const {
    bool goesOnBehindBraces = false;
    for (std::uint32_t at = begin; at < end; at = tree.Next(at)) {
      const std::string_view text = program.Text(at);
      const std::uint32_t next = tree.Next(at);
      if (text == ";" || IsLabelEnd(begin, at)) return next;
      if (program.Words()[at].kind == TokenKind::DirectiveStart) return at > begin ? at : next;
      if (KeepsBraces(text, at)) goesOnBehindBraces = true;
      // What returns a class is a function, whose body ends it.
      if (text == "(" && NamesType(program.Text(begin))) goesOnBehindBraces = false;
      if (text == "{" && tree.Opens(at) && !goesOnBehindBraces && !IsRequirement(begin, at) &&
          !GoesOnAt(next, end)) {
        return next;
      }
    }
    return end;
  }

  static bool NamesType(std::string_view text) {
    return text == "class" || text == "struct" || text == "union" || text == "enum";
  }

  /// The words after which braces do not end a statement.
  bool KeepsBraces(std::string_view text, std::uint32_t at) const {
    if (text == "=") return at == 0 || program.Text(at - 1) != "operator";
    return NamesType(text) || text == "typedef" || text == "return" || text == "do";
  }

  bool GoesOnAt(std::uint32_t at, std::uint32_t end) const {
    if (at >= end) return false;
    const std::string_view text = program.Text(at);
    return text == ";" || text == "," || text == "(" || text == ")" || text == "{" || text == ".";
  }

  /// True at the brace in "template <class T> requires requires(T t) { t + 1; } int f();".
  bool IsRequirement(std::uint32_t begin, std::uint32_t at) const {
    if (at < begin + 2) return false;
    if (program.Text(at - 1) == "requires") return true;
    const std::uint32_t before = tree.Previous(at);
    return program.Text(at - 1) == ")" && before >= begin + 2 &&
           program.Text(before - 1) == "requires" && program.Text(before - 2) == "requires";
  }

  /// True at the colon of "public:" and "case 1:".
  bool IsLabelEnd(std::uint32_t begin, std::uint32_t at) const {
    if (program.Text(at) != ":" || at == begin) return false;
    const std::string_view first = program.Text(begin);
    for (const std::string_view word : {"public", "protected", "private", "default"}) {
      if (first == word && at == begin + 1) return true;
    }
    return first == "case";
  }

  const Program& program;
  const Tree& tree;
};

}  // namespace

Tree::Tree(const Program& program) : partner(program.Size(), kNone) {
  const auto size = static_cast<std::uint32_t>(program.Size());
  BracketPairs(program, partner).Run();
  AnglePairs angles(program, partner);
  angles.Run({0, size});
  for (std::uint32_t i = 0; i < size; ++i) {
    const bool directive = program.Words()[i].kind == TokenKind::DirectiveStart;
    if (Opens(i) && !directive && program.Text(i) != "<") angles.Run({i + 1, partner[i]});
  }
  MakeLists(program);
}

void Tree::MakeLists(const Program& program) {
  const auto size = static_cast<std::uint32_t>(program.Size());
  AddList(program, {0, size}, 0, "{");
  std::vector<std::uint32_t> ends;  // of the groups around a word
  for (std::uint32_t i = 0; i < size; ++i) {
    while (!ends.empty() && ends.back() <= i) ends.pop_back();
    if (!Opens(i)) continue;
    ends.push_back(partner[i]);
    if (program.Words()[i].kind == TokenKind::DirectiveStart) continue;
    AddList(program, {i + 1, partner[i]}, static_cast<std::uint32_t>(ends.size()), program.Text(i));
  }
}

void Tree::AddList(const Program& program, Range inside, std::uint32_t depth,
                   std::string_view bracket) {
  if (inside.Size() == 0) return;
  const Items items(program, *this);
  const bool ends = items.Holds(inside, ";");
  const bool braces = bracket == "{" || bracket == "<%";
  if (depth == 0 || (braces && (ends || !items.Holds(inside, ",")))) {
    lists.push_back({inside, depth, false, items.Statements(inside)});
    AddHeads(program, lists.size() - 1);
  } else {
    lists.push_back({inside, depth, true, items.Parted(inside, ends ? ";" : ",")});
  }
}

/// The statements of a list that commas divide are lists too: declarators, bases, initialisers.
void Tree::AddHeads(const Program& program, std::size_t index) {
  const Items items(program, *this);
  const std::size_t count = lists[index].items.size();
  for (std::size_t i = 0; i < count; ++i) {
    const Range head = items.Head(lists[index].items[i]);
    if (!items.Holds(head, ",")) continue;
    lists.push_back({head, lists[index].depth + 1, true, items.Parted(head, ",")});
  }
}

Range WithoutItems(const List& list, std::size_t first, std::size_t last) {
  const std::vector<Range>& items = list.items;
  if (!list.commas) return {items[first].begin, items[last].end};
  if (first > 0) return {items[first - 1].end, items[last].end};
  if (last + 1 < items.size()) return {items[first].begin, items[last + 1].begin};
  return list.inside;
}

}  // namespace snipwell
