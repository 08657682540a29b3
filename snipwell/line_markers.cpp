// The text is taken line by line. The tokens tell which lines are directives or blank: a line in
// the middle of a raw string is neither, whatever it looks like.

#include <algorithm>
#include <cctype>
#include <limits>
#include <optional>
#include <utility>

#include "refine/tokenizer.h"
#include "snipwell/line_map.h"

namespace snipwell {

namespace {

struct Marker {
  std::uint32_t line = 0;  // of the line that follows
  std::optional<std::string> name;
  bool isSystem = false;
};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Reads one directive as a line marker.
class MarkerReader {
 public:
  explicit MarkerReader(std::string_view directive) : rest(directive) {}

  /// Nothing when the directive is no marker, or none that a preprocessor writes.
  std::optional<Marker> Read() {
    Marker marker;
    SkipBlanks();
    if (!Skip("#")) return std::nullopt;
    SkipBlanks();
    if (Skip("line") && !SkipBlanks()) return std::nullopt;
    if (!AtNumber()) return std::nullopt;
    marker.line = Number();
    if (SkipBlanks() && Skip("\"")) {
      marker.name = Name();
      if (!marker.name || (!SkipBlanks() && !rest.empty())) return std::nullopt;
      marker.isSystem = Flags();
    }
    return rest.empty() ? std::optional(std::move(marker)) : std::nullopt;
  }

 private:
  bool Skip(std::string_view start) {
    if (rest.substr(0, start.size()) != start) return false;
    rest.remove_prefix(start.size());
    return true;
  }

  /// True when there were any, the line end included.
  bool SkipBlanks() {
    const std::size_t size = rest.size();
    while (!rest.empty() && std::isspace(static_cast<unsigned char>(rest.front())) != 0) Next();
    return rest.size() < size;
  }

  char Next() {
    const char c = rest.front();
    rest.remove_prefix(1);
    return c;
  }

  bool AtNumber() const { return !rest.empty() && IsDigit(rest.front()); }

  std::uint32_t Number() {
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t number = 0;
    while (AtNumber()) {
      number = std::min(kMost, number * 10 + static_cast<unsigned char>(Next() - '0'));
    }
    return static_cast<std::uint32_t>(number);
  }

  /// The name up to the quote that closes it.
  std::optional<std::string> Name() {
    std::string name;
    while (!rest.empty()) {
      const char c = Next();
      if (c == '"') return name;
      name += c == '\\' && !rest.empty() ? Escaped() : c;
    }
    return std::nullopt;
  }

  /// What stands behind a backslash: up to three octal digits, or a character as it is.
  char Escaped() {
    constexpr std::size_t kMostDigits = 3;
    unsigned value = 0;
    std::size_t digits = 0;
    for (; digits < kMostDigits && AtNumber() && rest.front() < '8'; ++digits) {
      value = value * 8 + static_cast<unsigned char>(Next() - '0');
    }
    if (digits > 0) return static_cast<char>(value);
    const char c = Next();
    return c == 't' ? '\t' : c == 'n' ? '\n' : c;
  }

  /// True when 3, a system header, is among the numbers.
  bool Flags() {
    bool isSystem = false;
    while (AtNumber()) {
      isSystem |= Number() == 3;
      SkipBlanks();
    }
    return isSystem;
  }

  std::string_view rest;
};

class MarkerRemover {
 public:
  MarkerRemover(std::string_view preprocessed, const std::string& name)
      : text(preprocessed), tokens(Tokenize(preprocessed)), result{"", LineMap(name)} {}

  MappedText Run() {
    std::size_t end = 0;
    for (std::size_t begin = 0; begin < text.size(); begin = end) {
      end = std::min(text.find('\n', begin), text.size() - 1) + 1;
      TakeLine(begin, end);
    }
    return std::move(result);
  }

 private:
  void TakeLine(std::size_t begin, std::size_t end) {
    while (EndOf(tokens[token]) <= begin) ++token;
    const std::string_view line = text.substr(begin, end - begin);
    const bool isBlank = tokens[token].kind == TokenKind::Blank && EndOf(tokens[token]) >= end;
    const std::optional<Marker> marker =
        StartsDirective(end) ? MarkerReader(line).Read() : std::nullopt;
    if (marker) {
      Follow(*marker);
    } else {
      if (!isBlank || !afterBlank) Keep(line);
      afterBlank = isBlank;
      ++place.line;
    }
  }

  static std::size_t EndOf(const Token& some) { return std::size_t{some.begin} + some.length; }

  /// True when the line that ends at `end` has nothing before a "#" that starts a directive.
  bool StartsDirective(std::size_t end) const {
    const bool isIndented = tokens[token].kind == TokenKind::Blank && token + 1 < tokens.size();
    const Token& first = tokens[token + (isIndented ? 1 : 0)];
    return first.kind == TokenKind::DirectiveStart && first.begin < end;
  }

  void Follow(const Marker& marker) {
    place.line = marker.line;
    if (marker.name) place.file = result.map.AddFile(*marker.name, marker.isSystem);
  }

  void Keep(std::string_view line) {
    result.map.AddLine(result.text.size(), place);
    result.text += line;
  }

  std::string_view text;
  std::vector<Token> tokens;
  MappedText result;
  std::size_t token = 0;  // that which holds the first byte of the line
  LineMap::Place place = {0, 1};
  bool afterBlank = true;
};

}  // namespace

MappedText WithoutMarkers(std::string_view preprocessed, const std::string& name) {
  return MarkerRemover(preprocessed, name).Run();
}

}  // namespace snipwell
