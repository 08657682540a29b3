#include "source/position.h"

#include <gtest/gtest.h>

#include "printed.h"
#include "texts.h"

namespace snipwell {

using namespace std::string_literals;

TEST(Position, CountsTheLineFeedAsAColumnOfTheLineThatItEnds) {
  const struct {
    std::string text;
    std::string places;  // of every character, and after the read that meets the end
  } rows[] = {
      {"", "end 0:1"},
      {"x", "x 0:1, end 0:2"},
      {"ab\ncd", "a 0:1, b 0:2, \n 0:3, c 1:0, d 1:1, end 1:2"},
      {"\ny", "\n 0:1, y 1:0, end 1:1"},
      {"a\n\n", "a 0:1, \n 0:2, \n 1:0, end 2:0"},
      {"a\rb", "a 0:1, \r 0:2, b 0:3, end 0:4"},
      {"\xff\0\x80"s, "\xff 0:1, \0 0:2, \x80 0:3, end 0:4"s},
  };
  for (const auto& row : rows) {
    TextReader in = TextReader::OverMemory(row.text);
    Position position;
    std::string places;
    for (char c = position.Get(in); !in.AtEnd(); c = position.Get(in)) {
      places += c + (" " + At(position)) + ", ";
    }
    EXPECT_EQ(places + "end " + At(position), row.places);
    EXPECT_EQ(position.Get(in), '\0');
    EXPECT_EQ(places + "end " + At(position), row.places) << "moved by another read";
  }
}

TEST(Position, StepsBackOnlyOnceOverALineBreak) {
  EXPECT_EQ(At(Position(4, 7).Previous()), "4:6");
  EXPECT_EQ(At(Position(4, 1, 9).Previous()), "4:0");
  EXPECT_EQ(At(Position(4, 0, 9).Previous()), "3:9");
  EXPECT_EQ(At(Position(4, 0).Previous()), "3:-1");
  EXPECT_EQ(Position(4, 7, 9).Previous().GetPrevCol(), -1);
  EXPECT_EQ(Position(4, 0, 9).Previous().GetPrevCol(), -1);
}

TEST(Position, RemembersTheLastCharacterAndThePreviousLineFeed) {
  TextReader in = TextReader::OverMemory("ab\ncd");
  Position position;
  for (int read = 0; read < 5; ++read) position.Get(in);
  EXPECT_EQ(position.GetLast(), 'd');
  EXPECT_EQ(position.Previous().GetLast(), '\0');
  position.Set(7, 0);
  EXPECT_EQ(At(position.Previous()), "6:3");
  EXPECT_EQ(position.Get(in), '\0');
  EXPECT_EQ(position.GetLast(), 'd') << "neither Set nor the read at the end brings a character";
}

TEST(Position, IsOrderedByLineThenColumn) {
  EXPECT_TRUE(Position(2, 5) < Position(3, 0));
  EXPECT_FALSE(Position(2, 5) > Position(3, 0));
  EXPECT_TRUE(Position(3, 1) > Position(3, 0));
  EXPECT_FALSE(Position(3, 1) < Position(3, 0));
  EXPECT_FALSE(Position(3, 1, 4) < Position(3, 1, 9));
  EXPECT_FALSE(Position(3, 1, 9) > Position(3, 1, 4));
}

TEST(Position, PrintsALineAndFlushes) {
  std::ostream out(nullptr);
  const Capture printed(out);
  out << Position(12, 3);
  EXPECT_EQ(printed.Text(), "Line: 12   Col: 3\n");
  EXPECT_EQ(printed.Flushes(), 1);
}

}  // namespace snipwell
