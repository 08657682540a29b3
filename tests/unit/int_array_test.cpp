#include "source/int_array.h"

#include <gtest/gtest.h>

#include "printed.h"

namespace snipwell {

namespace {

IntArray UpTo(int last) {
  IntArray array(0);
  for (int value = 1; value <= last; ++value) array.Add(value);
  return array;
}

/// The integer that `action` throws; 0 when it throws none.
template <typename Action>
int Thrown(Action action) {
  try {
    action();
  } catch (int thrown) {
    return thrown;
  }
  return 0;
}

}  // namespace

TEST(IntArray, GrowsAndShrinksAtItsEnd) {
  IntArray array(1);
  for (const int value : {-7, 10}) array.Add(value);
  std::ostream out(nullptr);
  const Capture printed(out);
  out << array;
  EXPECT_EQ(printed.Text(), "0 -7 10 \n");
  EXPECT_EQ(printed.Flushes(), 1);
  EXPECT_EQ(array.RemoveLast(), 10);
  EXPECT_EQ(Printed(array), "0 -7 \n");
  EXPECT_EQ(array.RemoveLast(), -7);
  EXPECT_EQ(array.RemoveLast(), 0);
  EXPECT_EQ(array.RemoveLast(), -1) << "nothing is left";
  EXPECT_EQ(Printed(array), "\n");
}

TEST(IntArray, IsSplitWithTheOddElementInTheSecondHalf) {
  const struct {
    int size, firstSize, secondSize, result;
    const char* halves;
  } rows[] = {
      {0, 0, 0, 2, "\n\n"},
      {1, 0, 1, 1, "\n1 \n"},
      {2, 1, 1, 0, "1 \n2 \n"},
      {5, 2, 3, 0, "1 2 \n3 4 5 \n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    int firstSize = -1;
    int secondSize = -1;
    EXPECT_EQ(UpTo(row.size).GetHalves(firstSize, secondSize), row.result);
    EXPECT_EQ(firstSize, row.firstSize);
    EXPECT_EQ(secondSize, row.secondSize);
    IntArray first(row.firstSize);
    IntArray second(row.secondSize);
    EXPECT_EQ(UpTo(row.size).SplitInto(first, second), row.result);
    EXPECT_EQ(Printed(first) + Printed(second), row.halves);
  }
}

TEST(IntArray, ThrowsOneForAnIndexOutOfRange) {
  IntArray array(2);
  EXPECT_EQ(Thrown([&] { array.Set(-1, 9); }), 1);
  EXPECT_EQ(Thrown([&] { array.Set(2, 9); }), 1);
  EXPECT_EQ(Thrown([&] { array.Set(1, 2); }), 0);
  EXPECT_EQ(Printed(array), "0 2 \n");
  IntArray other(2);
  EXPECT_EQ(Thrown([&] { UpTo(5).SplitInto(array, other); }), 1) << "a half is too small";
  EXPECT_EQ(Thrown([&] { UpTo(4).SplitInto(array, other); }), 0);
}

TEST(IntArray, IsCopiedByElement) {
  IntArray array = UpTo(2);
  const IntArray copy(array);
  IntArray assigned = UpTo(7);
  assigned = array;
  array.Set(0, 9);
  const IntArray& itself = array;
  array = itself;
  EXPECT_EQ(Printed(array) + Printed(copy) + Printed(assigned), "9 2 \n1 2 \n1 2 \n");
}

}  // namespace snipwell
