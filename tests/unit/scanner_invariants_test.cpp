// What holds for every text, tried with all short texts over the characters that matter.

#include <gtest/gtest.h>

#include "texts.h"

namespace snipwell {

TEST(ScannerInvariants, ObjectsCoverEveryText) {
  const Strings words = {"class ", "extern ", "operator", "public", "do ", "__declspec", "f", "(",
                         ")",      "{",       "}",        ";",      "=",   ":",          "#", "\n"};
  for (const Level level : {Level::File, Level::Body}) {
    const auto complaint = [&](const std::string& text) { return ComplaintAboutScan(level, text); };
    TryEveryText(Characters("a/*\"'\\{}();#=:\n"), 5, complaint);
    TryEveryText(words, 4, complaint);
  }
}

namespace {

/// What reading through `bound` gives, in runs or one by one, and where it leaves the position.
std::string ReadThrough(const std::string& text, const Position& bound, bool inRuns) {
  TextReader in = TextReader::OverMemory(text);
  Position position;
  std::string read;
  while (position < bound && !in.AtEnd()) {
    if (inRuns) {
      read += position.GetRun(in, bound);
    } else if (const char c = position.Get(in); !in.AtEnd()) {
      read += c;
    }
  }
  return read + At(position) + At(position.Previous()) + position.GetLast() +
         (in.AtEnd() ? "end" : "");
}

}  // namespace

TEST(PositionInvariants, RunsLeaveThePositionWhereCharactersDo) {
  const auto complaint = [](const std::string& text) {
    for (int line = 0; line < 4; ++line) {
      for (int column = 0; column < 8; ++column) {
        const Position bound(line, column);
        if (ReadThrough(text, bound, true) != ReadThrough(text, bound, false)) return At(bound);
      }
    }
    return std::string();
  };
  EXPECT_TRUE(TryEveryText(Characters("ab\n"), 5, complaint));
}

}  // namespace snipwell
