// The report: where the lines of a preprocessed text came from, and that nothing in the texts of
// compilers and users gets out of its place on a page.

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "snipwell/line_map.h"

namespace snipwell {

namespace {

/// A preprocessed text of random lines, and what is to come of each, noted while it is written.
class RandomText {
 public:
  explicit RandomText(unsigned seed) : random(seed) {
    for (int count = 0; count < 40; ++count) AddLine();
  }

  struct Line {
    std::string text;
    std::string file;
    std::uint32_t line;
  };

  std::string preprocessed;
  std::vector<Line> kept;

 private:
  void AddLine() {
    static const std::vector<std::string> others = {
        "/*", "# 7 \"comment\"", "*/", "R\"(", "", "# 8 \"raw\" 3", ")\";", "#pragma once", "x;"};
    switch (random() % 8) {
      case 0: return AddMarker("# ", "a.cpp", "a.cpp", " 1 3 4");
      case 1: return AddMarker("#line ", "C:\\\\b \\\"\\303\\274.h", "C:\\b \"\xc3\xbc.h", "\r");
      case 2: return AddMarker("  #  ", "<built-in>", "<built-in>", " 2");
      case 3: return AddText("");
      case 4: return AddText("  \t");
      case 5:
        for (const std::string& other : others) AddText(other);
        return;
      default: return AddText("int x" + std::to_string(random()) + ";");
    }
  }

  void AddMarker(const char* start, const char* escaped, const char* name, const char* flags) {
    line = static_cast<std::uint32_t>(random() % 1000);
    const bool named = random() % 4 != 0;
    preprocessed += start + std::to_string(line);
    if (named) preprocessed += std::string(" \"") + escaped + '"' + flags;
    if (named) file = name;
    preprocessed += '\n';
  }

  void AddText(const std::string& text) {
    preprocessed += text + '\n';
    const bool isBlank = text.find_first_not_of(" \t") == std::string::npos;
    const bool inRawString = !kept.empty() && kept.back().text == "R\"(\n";
    if (!isBlank || !afterBlank || inRawString) kept.push_back({text + '\n', file, line});
    afterBlank = isBlank;
    ++line;
  }

  std::mt19937 random;
  std::string file = "start.cpp";
  std::uint32_t line = 1;
  bool afterBlank = true;
};

}  // namespace

TEST(LineMap, TellsTheLineOfEveryByte) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    const RandomText random(seed);
    const MappedText mapped = WithoutMarkers(random.preprocessed, "start.cpp");
    std::size_t offset = 0;
    for (const RandomText::Line& line : random.kept) {
      ASSERT_EQ(mapped.text.substr(offset, line.text.size()), line.text) << random.preprocessed;
      for (const std::size_t end = offset + line.text.size(); offset < end; ++offset) {
        const LineMap::Place place = mapped.map.At(offset);
        ASSERT_EQ(mapped.map.Files()[place.file].name, line.file) << random.preprocessed;
        ASSERT_EQ(place.line, line.line) << random.preprocessed;
      }
    }
    ASSERT_EQ(offset, mapped.text.size()) << random.preprocessed;
  }
}

TEST(LineMap, TakesNoOtherLineForAMarker) {
  for (const char* const line :
       {"#", "# ", "#1x", "#line", "#line12", "#pragma 1", "# 1 x", "# 1 \"x", "# 1 \"x\" y",
        "# 1 \"x\"3", "# 1 \"x\" \\", "int x; # 1 \"x\"", "/**/# 1 \"x\"", "\"", "# 1 \"\\"}) {
    EXPECT_EQ(WithoutMarkers(line, "a").text, line);
    EXPECT_EQ(WithoutMarkers(std::string(line) + "\n", "a").text, std::string(line) + "\n");
  }
}

TEST(LineMap, GivesTheRangesOfWhatIsLeft) {
  const MappedText mapped = WithoutMarkers(
      "# 1 \"/usr/include/s.h\" 1 3\ns1\ns2\n# 0 \"<command-line>\"\nd0\n# 40 \"./src/pool.cpp\"\n"
      "a40\nb41\nc42\n# 7 \"/work/src/pool.h\" 1\nd7\n# 60 \"/work/src/pool.cpp\" 2\ne60\nf61\n"
      "g62\nh63\n# 5 \"../other/x.h\"\ni5\n# 9 \"/worker/y.h\"\nj9\n",
      "");
  struct {
    const char* left;
    const char* ranges;
  } const rows[] = {
      {"", ""},
      {"s1 d0", "/usr/include/s.h:1 "},
      {"a40 c42", "src/pool.cpp:40-42 "},
      {"e60 h63 e60 a40", "src/pool.cpp:40 src/pool.cpp:60 src/pool.cpp:63 "},
      {"s2 d7 f61 g62", "src/pool.h:7 src/pool.cpp:61-62 /usr/include/s.h:2 "},
      {"j9 i5", "/worker/y.h:9 ../other/x.h:5 "},
      {"f61 h63 a40 b41 c42 e60", "src/pool.cpp:40-42 src/pool.cpp:60-63 "},
  };
  for (const auto& row : rows) {
    std::vector<std::uint32_t> origins;
    std::istringstream words(row.left);
    for (std::string word; words >> word;) {
      origins.push_back(static_cast<std::uint32_t>(mapped.text.find(word)));
    }
    std::string ranges;
    for (const LineRange& range : RangesOf(LinesLeft(mapped.map, origins, "/work"))) {
      ranges += NameOf(range) + ' ';
    }
    EXPECT_EQ(ranges, row.ranges) << row.left;
  }
}

TEST(LineMap, CountsTheLinesOfAPlainFile) {
  const std::string text = "one\n\n# 7 \"x\"\nfour";
  const LineMap map("a.cpp", text);
  std::uint32_t line = 1;
  for (std::size_t offset = 0; offset < text.size(); ++offset) {
    EXPECT_EQ(map.At(offset).line, line) << offset;
    if (text[offset] == '\n') ++line;
  }
  EXPECT_EQ(map.At(text.size() + 5).line, 4U);
  EXPECT_EQ(LineMap("a.cpp", "").At(0).line, 1U);
}

}  // namespace snipwell
