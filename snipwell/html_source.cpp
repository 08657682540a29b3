#include <algorithm>
#include <array>

#include "refine/tokenizer.h"
#include "snipwell/html_parts.h"
#include "snipwell/report_text.h"

namespace snipwell {

namespace {

// In order. The words for types are among them.
constexpr std::array<std::string_view, 78> kKeywords = {
    "alignas",   "alignof",  "asm",      "auto",       "bool",          "break",
    "case",      "catch",    "char",     "class",      "co_await",      "co_return",
    "co_yield",  "concept",  "const",    "const_cast", "consteval",     "constexpr",
    "constinit", "continue", "decltype", "default",    "delete",        "do",
    "double",    "else",     "enum",     "explicit",   "export",        "extern",
    "false",     "final",    "float",    "for",        "friend",        "goto",
    "if",        "inline",   "int",      "long",       "mutable",       "namespace",
    "new",       "noexcept", "nullptr",  "operator",   "override",      "private",
    "protected", "public",   "register", "requires",   "restrict",      "return",
    "short",     "signed",   "sizeof",   "static",     "static_assert", "static_cast",
    "struct",    "switch",   "template", "this",       "thread_local",  "throw",
    "true",      "try",      "typedef",  "typeid",     "typename",      "union",
    "unsigned",  "using",    "virtual",  "void",       "volatile",      "while"};

/// The class of a token that is marked, or null.
const char* ClassOf(TokenKind kind, std::string_view token) {
  const bool isKeyword = std::binary_search(kKeywords.begin(), kKeywords.end(), token);
  switch (kind) {
    case TokenKind::Comment: return "c";
    case TokenKind::String:
    case TokenKind::Character: return "s";
    case TokenKind::Number: return "m";
    case TokenKind::Name: return isKeyword ? "k" : nullptr;
    default: return nullptr;
  }
}

/// The lines of a file, each once, in runs that are shown in the same way.
class FileView {
 public:
  explicit FileView(const ViewedFile& viewed) : file(viewed), text(ReadableText(viewed.text)) {
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = std::min(text.find('\n', at), text.size());
      lines.push_back(std::string_view(text).substr(at, end - at));
      at = end + 1;
    }
    const auto inText = [this](std::uint32_t line) { return line <= lines.size(); };
    leftEnd = std::find_if_not(file.lines.begin(), file.lines.end(), inText);
  }

  std::size_t LineCount() const { return lines.size(); }
  std::size_t LeftCount() const { return static_cast<std::size_t>(leftEnd - file.lines.begin()); }

  std::string Listing() const {
    std::string html;
    std::size_t next = 1;
    for (auto left = file.lines.begin(); left != leftEnd; ++left) {
      html += Dropped(next, *left - 1) + Line(*left, true);
      next = std::size_t{*left} + 1;
    }
    return html + Dropped(next, lines.size());
  }

  /// A row of marks where lines are left, in as many columns as can be told apart.
  std::string Strip() const {
    constexpr std::size_t kColumns = 400;
    std::string html = "<svg class=\"strip\" viewBox=\"0 0 400 1\" preserveAspectRatio=\"none\">";
    std::size_t drawn = 0;
    for (auto left = file.lines.begin(); left != leftEnd; ++left) {
      const std::size_t first = (*left - 1) * kColumns / lines.size();
      const std::size_t behind = std::max(first + 2, *left * kColumns / lines.size());
      if (behind <= drawn) continue;
      const std::size_t from = std::max(first, drawn);
      html += "<rect x=\"" + std::to_string(from) + "\" width=\"" + std::to_string(behind - from) +
              "\" height=\"1\"/>";
      drawn = behind;
    }
    return html + "</svg>\n";
  }

 private:
  std::string Line(std::size_t number, bool isLeft) const {
    return std::string(isLeft ? "<div class=\"left\"" : "<div") + " data-n=\"" +
           std::to_string(number) + "\">" + Escaped(lines[number - 1]) + "\n</div>";
  }

  std::string Lines(std::size_t first, std::size_t last) const {
    std::string html;
    for (std::size_t number = first; number <= last; ++number) html += Line(number, false);
    return html;
  }

  /// Lines of which nothing is left. Those next to what is left stay in sight.
  std::string Dropped(std::size_t first, std::size_t last) const {
    constexpr std::size_t kInSight = 3;
    constexpr std::size_t kFewestFolded = 4;
    const std::size_t from = first == 1 ? first : first + kInSight;
    const std::size_t to = last == lines.size() ? last + 1 : last + 1 - std::min(last, kInSight);
    if (to < from + kFewestFolded) return Lines(first, last);
    return Lines(first, from - 1) + "<details><summary>" + Grouped(to - from) + " lines</summary>" +
           Lines(from, to - 1) + "</details>" + Lines(to, last);
  }

  const ViewedFile& file;
  std::string text;
  std::vector<std::string_view> lines;
  std::vector<std::uint32_t>::const_iterator leftEnd;  // of the lines left that the text has
};

}  // namespace

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : ReadableText(text)) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      case '\'': escaped += "&#39;"; break;
      default: escaped += c;
    }
  }
  return escaped;
}

std::string HtmlSource(std::string_view source) {
  const std::string readable = ReadableText(source);
  std::string html;
  for (const Token& token : Tokenize(readable)) {
    const std::string_view text = std::string_view(readable).substr(token.begin, token.length);
    const char* const name = ClassOf(token.kind, text);
    if (name != nullptr) html += std::string("<span class=\"") + name + "\">";
    html += Escaped(text);
    if (name != nullptr) html += "</span>";
  }
  return html;
}

std::string HtmlFile(const ViewedFile& file) {
  const FileView view(file);
  return "<article>\n<h3>" + Escaped(file.name) + " <small>" + Grouped(view.LeftCount()) + " of " +
         Counted(view.LineCount(), "line") + " left</small></h3>\n" + view.Strip() +
         "<div class=\"file\">" + view.Listing() + "</div>\n</article>\n";
}

}  // namespace snipwell
