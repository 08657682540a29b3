// Any bytes as what a compiler wrote, on their way through snip-cc. A rewritten line is the line
// with other punctuation, or the start of it; headlines stand in one line without parentheses,
// which snip would overlook.

#include <algorithm>
#include <vector>

#include "failure/crash_headline.h"
#include "failure/line_rewriter.h"
#include "fuzz/fuzzing.h"

namespace {

std::string WithoutPunctuation(std::string text) {
  const auto isPunctuation = [](char c) {
    return std::string("():,").find(c) != std::string::npos;
  };
  text.erase(std::remove_if(text.begin(), text.end(), isPunctuation), text.end());
  return text;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  std::string text = fuzz::TextOf(data, size);
  std::vector<std::string> lines;
  while (!text.empty()) lines.push_back(WithoutColours(fuzz::TakeUpTo('\n', text)));
  for (const std::string& line : lines) {
    fuzz::Require(WithoutColours(line).size() <= line.size(), "colours only go");
    const std::string rewritten = RewriteLine(line, "/t");
    fuzz::Require(rewritten.size() < 300, "snip takes the line in one piece");
    const std::string left = WithoutPunctuation(rewritten);
    const std::string whole = WithoutPunctuation(line);
    fuzz::Require(whole.compare(0, left.size(), left) == 0, "only punctuation changes");
    fuzz::Require(rewritten.size() >= 240 || left == whole, "a short line stays whole");
  }
  for (const int signal : {0, 11}) {
    const std::string headline = CrashHeadline(lines, signal);
    fuzz::Require(headline.find_first_of("()\n") == std::string::npos, "a headline is one line");
  }
  return 0;
}
