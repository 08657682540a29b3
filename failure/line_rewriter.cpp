#include "failure/line_rewriter.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>

namespace snipwell {

namespace {

// The tool takes a longer line in pieces of 300, and a place of more digits would move their ends.
constexpr std::size_t kLongestLine = 300;
constexpr std::size_t kKeptOfLongLine = 240;

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool IsHexDigit(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }
bool IsBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

bool EndsName(char c) { return IsBlank(c) || std::strchr(":,;'\"()", c) != nullptr; }

std::size_t SkipDigits(const std::string& text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

/// Where the name of a file may start: at the start of the line, or after "from" in what tells how
/// a file came to be included. Nowhere in other lines that begin with a blank: they show the
/// source.
std::size_t StartOfPlace(const std::string& line) {
  const std::string included = "In file included from ";
  if (line.compare(0, included.size(), included) == 0) return included.size();
  const std::size_t text = line.find_first_not_of(" \t");
  if (text == 0 || text == std::string::npos) return 0;
  const std::string from = "from ";
  return line.compare(text, from.size(), from) == 0 ? text + from.size() : line.size();
}

/// Rewrites the first ":line:column:" or ":line:" (or with "," behind) after `start`; returns the
/// place after it, or `start` when there is none.
std::size_t RewritePlace(std::string& line, std::size_t start) {
  for (std::size_t colon = line.find(':', start); colon != std::string::npos;
       colon = line.find(':', colon + 1)) {
    const std::size_t lineEnd = SkipDigits(line, colon + 1);
    if (lineEnd == colon + 1 || lineEnd == line.size()) continue;
    std::size_t end = lineEnd;
    if (line[end] == ':') {
      const std::size_t columnEnd = SkipDigits(line, end + 1);
      const bool hasColumn = columnEnd > end + 1 && columnEnd < line.size() &&
                             (line[columnEnd] == ':' || line[columnEnd] == ',');
      if (hasColumn) {
        line[lineEnd] = ',';
        end = columnEnd;
      }
    }
    if (line[end] != ':' && line[end] != ',') continue;
    line[colon] = '(';
    line.insert(end, 1, ')');
    return end + 1;
  }
  return start;
}

/// The end of an address that starts at `at`, or `at`.
std::size_t EndOfAddress(const std::string& line, std::size_t at) {
  constexpr std::size_t kFewestDigits = 6;
  const bool isOffset = at > 0 && line[at - 1] == '+';  // in a module: the same in every run
  if (isOffset || line.compare(at, 2, "0x") != 0) return at;
  std::size_t end = at + 2;
  while (end < line.size() && IsHexDigit(line[end])) ++end;
  return end - at - 2 >= kFewestDigits ? end : at;
}

/// The end of a process number that starts at `at`, or `at`.
std::size_t EndOfProcessNumber(const std::string& line, std::size_t at) {
  if (at > 0 && IsDigit(line[at - 1])) return at;
  const std::size_t end = SkipDigits(line, at);
  if (end == at) return at;
  const bool marked =
      at >= 2 && line.compare(at - 2, 2, "==") == 0 && line.compare(end, 2, "==") == 0;
  const bool named =
      at >= 4 && (line.compare(at - 4, 4, "pid ") == 0 || line.compare(at - 4, 4, "PID ") == 0) &&
      (at == 4 || !std::isalnum(static_cast<unsigned char>(line[at - 5])));
  return marked || named ? end : at;
}

/// The end of the name of a temporary file that starts at `at`, or `at`.
std::size_t EndOfTemporaryName(const std::string& line, std::size_t at, const std::string& folder) {
  if (folder.empty() || line.compare(at, folder.size(), folder) != 0) return at;
  std::size_t end = at + folder.size();
  while (end < line.size() && !EndsName(line[end])) ++end;
  return end;
}

/// The end of ":line:column" that starts at `at`, or `at`.
std::size_t EndOfLineAndColumn(const std::string& text, std::size_t at) {
  if (text[at] != ':' || at == 0 || EndsName(text[at - 1])) return at;
  const std::size_t lineEnd = SkipDigits(text, at + 1);
  if (lineEnd == at + 1 || lineEnd == text.size() || text[lineEnd] != ':') return at;
  const std::size_t columnEnd = SkipDigits(text, lineEnd + 1);
  return columnEnd > lineEnd + 1 ? columnEnd : at;
}

/// The end of the number that cl gives a lambda, "<lambda_12ab>", when it starts at `at`, or `at`.
std::size_t EndOfLambdaNumber(const std::string& text, std::size_t at) {
  const std::string mark = "<lambda_";
  if (at < mark.size() || text.compare(at - mark.size(), mark.size(), mark) != 0) return at;
  std::size_t end = at;
  while (end < text.size() && IsHexDigit(text[end])) ++end;
  return end;
}

}  // namespace

std::string WithoutPlaces(const std::string& message) {
  std::string text;
  for (std::size_t at = 0; at < message.size() && EndOfAddress(message, at) == at;) {
    const std::size_t end =
        std::max(EndOfLineAndColumn(message, at), EndOfLambdaNumber(message, at));
    if (end == at) text += message[at++];
    at = std::max(at, end);
  }
  while (!text.empty() && IsBlank(text.back())) text.pop_back();
  return text;
}

std::string WithoutColours(const std::string& line) {
  std::string plain;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line.compare(at, 2, "\x1b[") != 0) {
      plain += line[at];
    } else {
      // A sequence ends with a letter.
      at = std::min(line.find_first_not_of("0123456789;", at + 2), line.size());
    }
  }
  return plain;
}

std::string RewriteLine(const std::string& line, const std::string& temporaryFolder) {
  std::string placed = line;
  const std::size_t start = StartOfPlace(placed);
  const std::size_t afterPlace = start < placed.size() ? RewritePlace(placed, start) : 0;
  std::string result = placed.substr(0, afterPlace);
  for (std::size_t at = afterPlace; at < placed.size();) {
    std::size_t end = EndOfAddress(placed, at);
    if (end == at) end = EndOfProcessNumber(placed, at);
    if (end == at) end = EndOfTemporaryName(placed, at, temporaryFolder);
    if (end == at) {
      result += placed[at++];
    } else {
      result += '(' + placed.substr(at, end - at) + ')';
      at = end;
    }
  }
  if (result.size() >= kLongestLine) {
    result.resize(std::min(afterPlace + kKeptOfLongLine, kLongestLine - 1));
  }
  return result;
}

}  // namespace snipwell
