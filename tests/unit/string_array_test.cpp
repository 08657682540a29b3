#include "text/string_array.h"

#include <gtest/gtest.h>

#include <iostream>

#include "printed.h"

namespace snipwell {

using namespace std::string_literals;

TEST(StringArray, StartsWithTheGivenStringsOrEmptyOnes) {
  const char* const initial[] = {"a", nullptr, "c"};
  const Capture error(std::cerr);
  EXPECT_EQ(Pieces(StringArray(3, initial)) + Pieces(StringArray(1)), "[a][][c][]");
  EXPECT_EQ(StringArray(-1).GetSize(), 0);
  EXPECT_EQ(error.Text(), "Bad Size, some error function should go here\n");
}

TEST(StringArray, InsertsAndRemovesAtTheNearestPosition) {
  const std::string bad =
      "ERROR: Trying to Add a string to a non-existant position in a StringArray\n";
  const struct {
    int position;
    std::string inserted, message, removed;
  } rows[] = {
      {-1, "[new][a][b]", bad + "Adding to the beginning instead.\n", "a[b]"},
      {0, "[new][a][b]", "", "a[b]"},
      {1, "[a][new][b]", "", "b[a]"},
      {2, "[a][b][new]", "", "b[a]"},
      {3, "[a][b][new]", bad + "Adding to the end instead.\n", "b[a]"},
  };
  for (const auto& row : rows) {
    const Capture error(std::cerr);
    StringArray array({"a", "b"});
    array.Add("new", row.position);
    EXPECT_EQ(Pieces(array), row.inserted);
    array = StringArray({"a", "b"});
    const std::string removed = array.Remove(row.position);
    EXPECT_EQ(removed + Pieces(array), row.removed) << row.position;
    EXPECT_EQ(error.Text(), row.message);
  }
}

TEST(StringArray, GrowsAndShrinksAndIsCopiedByString) {
  StringArray array({"a"});
  array.Add("\x80\0\n"s);
  array.Append(array);
  const StringArray copy(array);
  EXPECT_EQ(array.RemoveLast(), "\x80\0\n"s);
  StringArray sameSize({"x", "y", "z"});
  StringArray otherSize;
  EXPECT_EQ(otherSize.RemoveLast(), "") << "nothing is left";
  sameSize = array;
  otherSize = array;
  for (const int index : {-1, 0, 3}) array.Set(index, "c");
  const StringArray& itself = array;
  array = itself;
  EXPECT_EQ(Pieces(array) + array.Get(-1) + array.Get(3), "[c][\x80\0\n][a]"s);
  EXPECT_EQ(Pieces(sameSize) + Pieces(otherSize), "[a][\x80\0\n][a][a][\x80\0\n][a]"s);
  EXPECT_EQ(Pieces(copy), "[a][\x80\0\n][a][\x80\0\n]"s);
}

TEST(StringArray, FindsTheFirstEqualStringOrPrefix) {
  const StringArray array({"ABC", "abcd", "", "abc", "abc\0d"s, "a@", "@f", "@g", "abc"});
  EXPECT_EQ(array.Find("abc"), 3);
  EXPECT_EQ(array.Find("abc\0d"s), 4);
  EXPECT_EQ(array.Find("ab"), -1);
  EXPECT_EQ(array.FindPrefix("@other", 1), 6);
  EXPECT_EQ(array.FindPrefix("@g", 2), 7);
  EXPECT_EQ(array.FindPrefix("@g", 3), -1) << "too short";
}

TEST(StringArray, IsCopiedIntoAnArgumentVectorAndListedBetweenBars) {
  const StringArray array({"", "b\nc", "\0\xff"s});
  char buffers[4][6] = {"xxxxx", "xxxxx", "xxxxx", ""};
  char* vector[] = {buffers[0], buffers[1], buffers[2], buffers[3]};
  array.CopyTo(vector);
  EXPECT_EQ(std::string(buffers[0], 18), "\0xxxx\0b\nc\0x\0\0\xff\0xx\0"s);
  EXPECT_EQ(vector[3], nullptr);
  std::ostream out(nullptr);
  const Capture printed(out);
  out << array;
  EXPECT_EQ(printed.Text(),
            "StringArray Contents\n--------------------\n||\n|b\nc|\n|\0\xff|\n3 Strings Total\n"s);
  EXPECT_EQ(printed.Flushes(), 6);
}

}  // namespace snipwell
