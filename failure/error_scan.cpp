// Reads the compiler's output and answers whether it shows the error that is being isolated.

#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

#include "failure/error_match.h"

namespace snipwell {

namespace {

// A longer line is taken in pieces of this length, each a line of its own.
constexpr std::size_t kMaxLine = 300;

constexpr char kAddress[] = "addr 0x";

std::vector<std::string> Strings(const StringArray& array) {
  std::vector<std::string> strings;
  strings.reserve(static_cast<std::size_t>(array.GetSize()));
  for (int i = 0; i < array.GetSize(); ++i) strings.push_back(array.Get(i));
  return strings;
}

bool ContainsAny(const std::string& line, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    if (line.find(text) != std::string::npos) return true;
  }
  return false;
}

/// Removes each group from the first "(" through the first ")". The parentheses are not paired:
/// of nested groups a ")" stays, and a ")" before the "(" cuts the line at the "(". That is enough
/// to compare two lines of one compiler.
void RemoveParenthesised(std::string& line) {
  for (std::size_t open = line.find('('); open != std::string::npos; open = line.find('(')) {
    const std::size_t close = line.find(')');
    if (close == std::string::npos) return;
    if (close > open) {
      line.erase(open, close - open + 1);
    } else {
      line.erase(open);
    }
  }
}

}  // namespace

bool ErrorMatch::Scan(bool first) {
  std::string line;
  if (!FindMatchingLine(line)) {
    if (verbose) std::cerr << "No matching errors found!" << std::endl;
    return false;
  }
  const std::string formatted = FormatLine(line);
  if (!first) return formatted == errorLine;
  errorLine = formatted;
  return true;
}

bool ErrorMatch::FindMatchingLine(std::string& line) {
  const std::vector<std::string> texts = Strings(criteria);
  TextReader in(errorFileName, LineEnds::Foreign);
  while (!in.AtEnd()) {
    line = ReadLine(in);
    if (ContainsAny(line, texts)) return true;
  }
  return false;
}

/// One line with its line feed, or a piece of 300 characters, or what the end of the file leaves.
std::string ErrorMatch::ReadLine(TextReader& in) {
  std::string line;
  do {
    const char c = reader.Get(in);
    if (in.AtEnd()) break;
    line += c;
  } while (reader.GetLast() != '\n' && line.size() < kMaxLine);
  return line;
}

std::string ErrorMatch::FormatLine(const std::string& line) const {
  if (verbose) std::cerr << "Pre FormatLine LineString: " << line << std::endl;
  std::string formatted = line;
  RemoveParenthesised(formatted);
  const std::size_t address = formatted.find(kAddress);
  if (address != std::string::npos) formatted.erase(address);
  if (verbose) std::cerr << "Post FormatLine LineString: " << formatted << std::endl;
  return formatted;
}

}  // namespace snipwell
