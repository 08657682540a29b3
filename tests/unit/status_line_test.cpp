// The status of a reduction: its text for any width, and what is written when.

#include "snipwell/status_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace snipwell {

namespace {

const Progress kProgress = {"refining", 1204, 683568, 1530, 2};

/// A size that was halved every two seconds for 20, from 683568 bytes to 1204 at most.
SizeHistory Halved() {
  SizeHistory history;
  for (int second = 0; second <= 20; ++second) {
    history.Note(second, std::max<std::size_t>(683568U >> (second / 2), 1204));
  }
  return history;
}

std::size_t ColumnsOf(const std::string& text) {
  std::size_t columns = 0;
  for (const char c : text) columns += (static_cast<unsigned char>(c) & 0xc0U) == 0x80U ? 0 : 1;
  return columns;
}

}  // namespace

TEST(StatusText, LeavesOutWhatMattersLess) {
  const SizeHistory history = Halved();
  const struct {
    std::size_t width;
    double seconds;
    bool utf8;
    const char* expected;
  } rows[] = {
      {120, 83, true,
       "refining  683.6 kB -> 1204 B  █████▇▇▇▇▆▆▆▆▆▅▅▅▅▅▄▄▃▃▃  1530 compilations  2 jobs  no gain "
       "1:03  1:23"},
      {90, 25, false,
       "refining  683.6 kB -> 1204 B  #######*****++++=====---  1530 compilations  2 jobs  0:25"},
      {80, 83, true,
       "refining  683.6 kB -> 1204 B  ██▇▇▆▆▅▅▄▃  1530 compilations  no gain 1:03  1:23"},
      {60, 83, true, "refining  683.6 kB -> 1204 B  █▇▇▆▆▅▅▄▃  no gain 1:03  1:23"},
      {40, 83, true, "refining  683.6 kB -> 1204 B  1:23"},
      {34, 83, true, "refining  683.6 kB -> 1204 B"},
      {20, 83, false, "refining  ##**++==-"},
      {8, 83, true, "refinin"},
      {0, 83, true, ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(StatusText(kProgress, history, row.seconds, row.width, row.utf8), row.expected)
        << row.width;
  }
}

TEST(StatusText, IsAlwaysShorterThanTheLine) {
  for (const bool utf8 : {false, true}) {
    for (std::size_t width = 0; width < 200; ++width) {
      const std::string text = StatusText(kProgress, Halved(), 4000, width, utf8);
      ASSERT_LE(ColumnsOf(text) + (width > 0 ? 1 : 0), width) << text;
    }
  }
}

TEST(SizeHistory, KeepsFewSamplesAndTheLastOne) {
  SizeHistory history;
  std::size_t bytes = 1000000;
  for (double second = 0; second < 100000; second += 1 + second / 3) {
    history.Note(second, bytes -= 7);
    ASSERT_LE(history.Sizes().size(), 64U);
    ASSERT_EQ(history.Sizes().back(), bytes);
    ASSERT_EQ(history.LastGain(), second);
  }
  history.Note(1e6, bytes);
  EXPECT_LT(history.LastGain(), 1e5);
}

namespace {

/// A status line whose time and width are set by hand.
struct Shown {
  explicit Shown(Look look, Verbosity verbosity = Verbosity::Normal)
      : line(out, look, verbosity, {[this] { return now; }, [this] { return width; }}) {}

  std::string Take() {
    std::string text = out.str();
    out.str("");
    return text;
  }

  double now = 5;
  std::size_t width = 40;
  std::ostringstream out;
  StatusLine line;
};

}  // namespace

TEST(StatusLine, IsRewrittenOnATerminal) {
  Shown shown({true, false, false});
  shown.line.Show({"cutting", 900, 900, 0, 1});
  EXPECT_EQ(shown.Take(), "\rcutting  900 B -> 900 B  #  0:00\x1b[K");
  shown.now += 0.09;
  shown.line.Show({"refining", 900, 900, 0, 1});
  EXPECT_EQ(shown.Take(), "");
  shown.now += 0.02;
  shown.width = 30;
  shown.line.Show({"refining", 90, 900, 0, 1});
  EXPECT_EQ(shown.Take(), "\rrefining  900 B -> 90 B  0:00\x1b[K");
  shown.line.Print("a line");
  EXPECT_EQ(shown.Take(), "\r\x1b[Ka line\n");
  shown.line.Print("another");
  shown.line.PrintDetail("detail");
  shown.line.Clear();
  EXPECT_EQ(shown.Take(), "another\n");
}

TEST(StatusLine, ColoursTheStageOnly) {
  Shown shown({true, true, false});
  shown.line.Show({"cutting", 9, 9, 0, 1});
  EXPECT_EQ(shown.Take().substr(0, 25), "\r\x1b[36mcutting\x1b[0m  9 B ->");
}

TEST(StatusLine, TakesUtf8FromTheFirstSetting) {
  EXPECT_TRUE(NamesUtf8({"", "de_DE.UTF-8", "C"}));
  EXPECT_TRUE(NamesUtf8({"C.utf8", "C", ""}));
  EXPECT_FALSE(NamesUtf8({"C", "C.UTF-8", "C.UTF-8"}));
  EXPECT_FALSE(NamesUtf8({"", "", ""}));
}

TEST(StatusLine, LogsStagesAndHalfMinutesElsewhere) {
  Shown shown({});
  std::string text;
  for (const char* stage : {"cutting", "refining"}) {
    for (int second = 0; second < 45; ++second, shown.now += 1) {
      shown.line.Show({stage, 20000, 1234567, 1, 2});
    }
  }
  EXPECT_EQ(shown.Take(),
            "cutting: 1.2 MB -> 20.0 kB after 1 compilation, 0:00\n"
            "cutting: 1.2 MB -> 20.0 kB after 1 compilation, 0:30\n"
            "refining: 1.2 MB -> 20.0 kB after 1 compilation, 0:45\n"
            "refining: 1.2 MB -> 20.0 kB after 1 compilation, 1:15\n");
}

TEST(StatusLine, SaysWhatIsWanted) {
  for (const Verbosity verbosity : {Verbosity::Quiet, Verbosity::Normal, Verbosity::Verbose}) {
    Shown shown({}, verbosity);
    shown.line.Show({"s", 9, 9, 0, 1});
    shown.line.PrintDetail("detail");
    shown.line.Print("result");
    const std::string status =
        verbosity == Verbosity::Quiet ? "" : "s: 9 B -> 9 B after 0 compilations, 0:00\n";
    EXPECT_EQ(shown.Take(),
              status + (verbosity == Verbosity::Verbose ? "detail\n" : "") + "result\n");
  }
}

}  // namespace snipwell
