#include "snipwell/report_text.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "platform/shell.h"

namespace snipwell {

namespace {

constexpr const char* kReplacement = "\xef\xbf\xbd";  // U+FFFD

unsigned char ByteAt(std::string_view text, std::size_t at) {
  return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

bool IsContinuation(unsigned char byte) { return (byte & 0xC0U) == 0x80; }

/// The number of bytes of the character that begins at `at`, or 0 when it is no UTF-8: a byte out
/// of place, a longer form than needed, half a surrogate pair, or a code above the last.
std::size_t CharacterLength(std::string_view text, std::size_t at) {
  const unsigned char first = ByteAt(text, at);
  const unsigned char second = ByteAt(text, at + 1);
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4 || !IsContinuation(second)) return 0;
  if (first < 0xE0) return 2;
  if (!IsContinuation(ByteAt(text, at + 2))) return 0;
  if (first < 0xF0)
    return (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ? 0 : 3;
  if (!IsContinuation(ByteAt(text, at + 3))) return 0;
  return (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F) ? 0 : 4;
}

bool IsReadable(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return c == '\t' || c == '\n' || (byte >= 0x20 && byte != 0x7F);
}

/// A line that is not too long, cut between two characters.
std::string Shortened(std::string_view line) {
  constexpr std::size_t kMostBytes = 1000;
  if (line.size() <= kMostBytes) return std::string(line);
  std::size_t end = kMostBytes;
  while (IsContinuation(ByteAt(line, end))) --end;
  return std::string(line.substr(0, end)) + " [...]";
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

}  // namespace

std::string CommandLine(const std::vector<std::string>& words) {
  return platform::ShellCommand(words);
}

std::string ReadableText(std::string_view text) {
  std::string readable;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = CharacterLength(text, at);
    const bool endsLine = text[at] == '\r' && ByteAt(text, at + 1) == '\n';
    if (length > 0 && IsReadable(text[at])) {
      readable += text.substr(at, length);
    } else if (!endsLine) {
      readable += kReplacement;
    }
    at += std::max<std::size_t>(length, 1);
  }
  return readable;
}

std::string ReadableLine(std::string_view text) {
  std::string line = ReadableText(text);
  std::replace(line.begin(), line.end(), '\n', ' ');
  std::replace(line.begin(), line.end(), '\t', ' ');
  return line;
}

std::vector<std::string> ShortenedLines(std::string_view text, std::size_t most) {
  const std::string readable = ReadableText(text);
  const std::vector<std::string_view> lines = LinesOf(readable);
  const bool whole = lines.size() <= most;
  const std::size_t tail = whole ? 0 : (most - 1) / 2;
  const std::size_t head = whole ? lines.size() : most - 1 - tail;
  std::vector<std::string> kept;
  for (std::size_t i = 0; i < head; ++i) kept.push_back(Shortened(lines[i]));
  if (whole) return kept;
  kept.push_back("[... " + Grouped(lines.size() - head - tail) + " lines left out ...]");
  for (std::size_t i = lines.size() - tail; i < lines.size(); ++i)
    kept.push_back(Shortened(lines[i]));
  return kept;
}

std::string Grouped(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3;) digits.insert(at -= 3, ",");
  return digits;
}

std::string Counted(std::size_t number, const std::string& noun) {
  return Grouped(number) + ' ' + noun + (number == 1 ? "" : "s");
}

std::string Duration(double seconds) {
  constexpr double kLongest = 1e9;  // of what a clock can have counted; less than 0 it has not
  const double known = seconds > 0 ? std::min(seconds, kLongest) : 0;
  const auto whole = static_cast<std::size_t>(std::lround(known));
  if (whole >= 3600) {
    return std::to_string(whole / 3600) + " h " + std::to_string(whole % 3600 / 60) + " min";
  }
  if (whole >= 60) {
    return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
  }
  const auto tenths = static_cast<std::size_t>(std::lround(known * 10));
  if (whole >= 10) return std::to_string(whole) + " s";
  return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + " s";
}

}  // namespace snipwell
