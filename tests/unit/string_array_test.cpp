#include "text/string_array.h"

#include <gtest/gtest.h>

#include <iostream>

#include "printed.h"

namespace snipwell {

using namespace std::string_literals;

TEST(StringArray, StartsWithTheGivenStringsOrEmptyOnes) {
  const char* const initial[] = {"a", nullptr, "c"};
  EXPECT_EQ(Pieces(StringArray(3, initial)), "[a][][c]");
  EXPECT_EQ(Pieces(StringArray(2)), "[][]");
  const Capture error(std::cerr);
  EXPECT_EQ(StringArray(-1).GetSize(), 0);
  EXPECT_EQ(error.Text(), "Bad Size, some error function should go here\n");
}

TEST(StringArray, InsertsAndRemovesAtTheNearestPosition) {
  const std::string bad =
      "ERROR: Trying to Add a string to a non-existant position in a StringArray\n";
  const struct {
    int position;
    std::string inserted, message, removed, left;
  } rows[] = {
      {-1, "[new][a][b]", bad + "Adding to the beginning instead.\n", "a", "[b]"},
      {0, "[new][a][b]", "", "a", "[b]"},
      {1, "[a][new][b]", "", "b", "[a]"},
      {2, "[a][b][new]", "", "b", "[a]"},
      {3, "[a][b][new]", bad + "Adding to the end instead.\n", "b", "[a]"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.position);
    Capture error(std::cerr);
    StringArray array({"a", "b"});
    array.Add("new", row.position);
    EXPECT_EQ(Pieces(array), row.inserted);
    EXPECT_EQ(error.Text(), row.message);
    error.Clear();
    array = StringArray({"a", "b"});
    EXPECT_EQ(array.Remove(row.position), row.removed);
    EXPECT_EQ(Pieces(array), row.left);
    EXPECT_EQ(error.Text(), "");
  }
}

TEST(StringArray, GrowsAndShrinksAtItsEnd) {
  StringArray array;
  array.Add("a", 0);
  array.Add("\x80\0\n"s);
  EXPECT_EQ(Pieces(array), "[a][\x80\0\n]"s);
  EXPECT_EQ(array.RemoveLast(), "\x80\0\n"s);
  EXPECT_EQ(array.RemoveLast(), "a");
  EXPECT_EQ(array.RemoveLast() + array.Remove(0), "") << "nothing is left";
  EXPECT_EQ(array.GetSize(), 0);
  array.Append(StringArray({"a", "b"}));
  array.Append(StringArray());
  array.Append(array);
  EXPECT_EQ(Pieces(array), "[a][b][a][b]");
}

TEST(StringArray, IgnoresAnIndexOutOfRange) {
  const Capture error(std::cerr);
  StringArray array({"a", "b"});
  for (const int index : {-1, 2}) array.Set(index, "x");
  array.Set(1, "y");
  EXPECT_EQ(Pieces(array), "[a][y]");
  EXPECT_EQ(array.Get(-1) + array.Get(2) + error.Text(), "");
}

TEST(StringArray, FindsTheFirstEqualStringOrPrefix) {
  const StringArray array({"ABC", "abcd", "", "abc", "abc\0d"s, "a@", "@f", "@g", "abc"});
  EXPECT_EQ(array.Find("abc"), 3);
  EXPECT_EQ(array.Find("abc\0d"s), 4);
  EXPECT_EQ(array.Find(""), 2);
  EXPECT_EQ(array.Find("ab"), -1);
  EXPECT_EQ(array.FindPrefix("@", 1), 6);
  EXPECT_EQ(array.FindPrefix("@g", 2), 7);
  EXPECT_EQ(array.FindPrefix("@other", 1), 6);
  EXPECT_EQ(array.FindPrefix("abcd", 4), 1);
  EXPECT_EQ(array.FindPrefix("@g", 3), -1) << "too short";
}

TEST(StringArray, CopiesItselfIntoAnArgumentVector) {
  char first[] = "xxxxx";
  char second[] = "xxxxx";
  char* buffers[] = {first, second, first};
  StringArray({"", "abc"}).CopyTo(buffers);
  EXPECT_EQ(std::string(first, 5) + std::string(second, 5), "\0xxxxabc\0x"s);
  EXPECT_EQ(buffers[0], first);
  EXPECT_EQ(buffers[2], nullptr);
  StringArray().CopyTo(buffers);
  EXPECT_EQ(buffers[0], nullptr);
}

TEST(StringArray, ListsItsStringsBetweenBars) {
  const std::string heading = "StringArray Contents\n--------------------\n";
  std::ostream out(nullptr);
  const Capture printed(out);
  out << StringArray({"a", "", "b\nc", "\0\xff"s});
  EXPECT_EQ(printed.Text(), heading + "|a|\n||\n|b\nc|\n|\0\xff|\n4 Strings Total\n"s);
  EXPECT_EQ(printed.Flushes(), 7);
  EXPECT_EQ(Printed(StringArray()), heading + "0 Strings Total\n");
}

TEST(StringArray, IsCopiedByString) {
  StringArray array({"a", "b"});
  const StringArray copy(array);
  StringArray sameSize({"x", "y"});
  StringArray otherSize({"x", "y", "z"});
  sameSize = array;
  otherSize = array;
  array.Set(0, "c");
  const StringArray& itself = array;
  array = itself;
  EXPECT_EQ(Pieces(array), "[c][b]");
  EXPECT_EQ(Pieces(copy) + Pieces(sameSize) + Pieces(otherSize), "[a][b][a][b][a][b]");
}

}  // namespace snipwell
