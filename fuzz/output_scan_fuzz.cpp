// Any bytes as criteria and as the compiler's output. An output shows the error that was taken from
// it, and still does when more lines follow; an empty one shows none. A line that holds a criterion
// is found. A normalised line is a part of the line, stays as it is when normalised again, and does
// not depend on what stands in the line's first parentheses or behind an address.

#include "failure/error_match.h"
#include "fuzz/fuzzing.h"
#include "tests/unit/invariants.h"
#include "tests/unit/temp_folder.h"

namespace snipwell::fuzz {

namespace {

constexpr char kSure[] = "surely : an error";  // always a criterion

void CheckLine(const ErrorMatch& match, const std::string& line) {
  const std::string formatted = match.FormatLine(line);
  Require(IsLeftOf(formatted, line), "a normalised line is a part of the line");
  Require(match.FormatLine(formatted) == formatted, "normalised again it stays");
  const std::size_t open = line.find('(');
  const std::size_t close = line.find(')');
  if (close != std::string::npos && open < close) {
    std::string other = line;
    other.insert(close, "12,34");
    Require(match.FormatLine(other) == formatted, "what stands in parentheses does not count");
    other.erase(open, close + 6 - open);
    Require(match.FormatLine(other) == formatted, "parentheses leave nothing behind");
  }
  Require(match.FormatLine(line + "addr 0x7f01") == match.FormatLine(line + "addr 0x2"),
          "addresses do not count");
}

void CheckScan(ErrorMatch match, const TempFolder& folder, const std::string& output) {
  folder.Write("output", output);
  const bool found = match.Scan(true);
  Require(match.Scan(false) == found, "an output shows its own error");
  if (found && output.back() == '\n') {
    folder.Write("output", output + "more (1) : error\n");
    Require(match.Scan(false), "more lines do not count");
  }
  folder.Write("output", output + "\n" + kSure + "\n");
  Require(match.Scan(true), "a line that holds a criterion is found");
  folder.Write("output", "");
  Require(!match.Scan(false), "no output shows no error");
}

}  // namespace

}  // namespace snipwell::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  const fuzz::Silence silence;
  static const TempFolder folder;
  std::string output = fuzz::TextOf(data, size);
  folder.Write("criteria", std::string("\"") + fuzz::kSure + "\" " + fuzz::TakeUpTo('\0', output));
  const bool verbose = size % 2 == 0;
  const ErrorMatch match(folder.NameOf("output"), folder.NameOf("criteria"), verbose);
  fuzz::CheckScan(match, folder, output);
  while (!output.empty()) fuzz::CheckLine(match, fuzz::TakeUpTo('\n', output));
  return 0;
}
