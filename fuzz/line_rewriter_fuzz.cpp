// Any bytes as what a compiler wrote. On their way through snip-cc, a rewritten line is the line
// with other punctuation, or the start of it; headlines stand in one line without parentheses,
// which snip would overlook. A failure that is decided early is that of the whole output.

#include <algorithm>
#include <vector>

#include "failure/crash_headline.h"
#include "failure/failure_reader.h"
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

/// Reads an output piece by piece, until the failure is decided if it is to be `early`.
snipwell::Failure Read(const std::string& output, bool pastErrors, bool early) {
  constexpr std::size_t kPiece = 16;
  snipwell::FailureReader reader(pastErrors);
  std::string read;
  while (read.size() < output.size() && !(early && reader.IsDecided())) {
    read = output.substr(0, read.size() + kPiece);
    reader.Read(read);
  }
  return reader.Conclude(read, reader.IsDecided() && !early ? 6 : 0, false);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  std::string text = fuzz::TextOf(data, size);
  for (const bool pastErrors : {false, true}) {
    const Failure early = Read(text, pastErrors, true);
    fuzz::Require(early.IsSameAs(Read(text, pastErrors, false)), "what is decided stays");
  }
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
