// What holds for every text, tried with all short texts over the characters that matter.

#include <gtest/gtest.h>

#include <algorithm>

#include "texts.h"

namespace snipwell {

namespace {

using Strings = std::vector<std::string>;

/// Tries `text` and every text that goes on from it by up to `more` pieces, until `complaint` has
/// something to say.
template <typename Complaint>
bool TryEveryText(const Strings& pieces, int more, Complaint complaint, std::string text = "") {
  const std::string found = complaint(text);
  EXPECT_EQ(found, "") << testing::PrintToString(text);
  return found.empty() && (more == 0 || std::all_of(pieces.begin(), pieces.end(), [&](auto& piece) {
                             return TryEveryText(pieces, more - 1, complaint, text + piece);
                           }));
}

Strings Characters(const std::string& characters) {
  Strings pieces;
  for (const char c : characters) pieces.emplace_back(1, c);
  return pieces;
}

bool IsSame(const Position& a, const Position& b) { return !(a < b) && !(a > b); }

bool MarksAreWithin(const ObjOrg& object) {
  const auto before = [&](const Position& mark) { return mark < object.GetStart(); };
  const auto behind = [&](const Position& mark) { return mark > object.GetCurrent(); };
  const Position marks[] = {object.GetEndHeader(), object.GetStartBody(), object.GetEndBody()};
  return std::none_of(std::begin(marks), std::end(marks), before) &&
         std::none_of(std::begin(marks), std::end(marks), behind) &&
         !behind(object.GetStartParen()) && !behind(object.GetEndParen());
}

std::string ComplaintAboutScan(Level level, const std::string& text) {
  const std::vector<ObjOrg> objects = Scan(level, text);
  TextReader in = TextReader::OverMemory(text);
  Position reader;
  Position previous;
  std::string joined;
  for (const ObjOrg& object : objects) {
    if (!IsSame(object.GetStart(), previous)) return "an object starts elsewhere";
    previous = object.GetCurrent();
    if (!IsSame(object.GetEnd(), previous.Previous())) return "an object ends elsewhere";
    if (!(reader < object.GetEnd())) return "an object without text";
    while (reader < object.GetEnd() && !in.AtEnd()) joined += reader.Get(in);
    if (!IsSame(reader, object.GetEnd())) return "an end that no character has";
    if (!MarksAreWithin(object)) return "a mark outside its object";
  }
  return joined == text ? "" : "the objects do not make up the text";
}

/// True when leaving characters out of `whole` can give `part`.
bool IsLeftOf(const std::string& part, const std::string& whole) {
  std::size_t found = 0;
  for (const char c : whole) {
    if (found < part.size() && part[found] == c) ++found;
  }
  return found == part.size();
}

std::string WithoutBlanks(std::string text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\n'; };
  text.erase(std::remove_if(text.begin(), text.end(), isBlank), text.end());
  return text;
}

bool Holds(const std::string& text, const char* part) { return text.find(part) != text.npos; }

}  // namespace

TEST(ScannerInvariants, ObjectsCoverEveryText) {
  const Strings words = {"class ", "extern ", "operator", "public", "do ", "__declspec", "f", "(",
                         ")",      "{",       "}",        ";",      "=",   ":",          "#", "\n"};
  for (const Level level : {Level::File, Level::Body}) {
    const auto complaint = [&](const std::string& text) { return ComplaintAboutScan(level, text); };
    TryEveryText(Characters("a/*\"'\\{}();#=:\n"), 5, complaint);
    TryEveryText(words, 4, complaint);
  }
}

TEST(CleanerInvariants, CleaningOnlyLeavesCharactersOut) {
  TryEveryText(Characters("a/*\"'\\# \n"), 6, [](const std::string& text) -> std::string {
    const std::string cleaned = Cleaned(text);
    if (!IsLeftOf(cleaned, text)) return "not a part of the text";
    // Where nothing opens a comment, only white space can go.
    if (Holds(text, "//") || Holds(text, "/*")) return "";
    return WithoutBlanks(cleaned) == WithoutBlanks(text) ? "" : "more than white space has gone";
  });
}

TEST(CleanerInvariants, ATextWithoutSlashIsCleanAfterOnce) {
  TryEveryText(Characters("a*\"'\\# \n\t"), 6, [](const std::string& text) -> std::string {
    const std::string cleaned = Cleaned(text);
    return Cleaned(cleaned) == cleaned ? "" : "cleaned again it changes";
  });
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
