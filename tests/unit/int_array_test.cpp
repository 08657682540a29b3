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

}  // namespace

TEST(IntArray, GrowsAndShrinksAtItsEndAndIsCopiedByElement) {
  IntArray array = UpTo(3);
  EXPECT_EQ(array.RemoveLast(), 3);
  const IntArray copy(array);
  IntArray assigned = UpTo(7);
  assigned = array;
  array.Set(0, 9);
  const IntArray& itself = array;
  array = itself;
  std::ostream out(nullptr);
  const Capture printed(out);
  out << array << copy << assigned << IntArray(1) << IntArray(0);
  EXPECT_EQ(printed.Text(), "9 2 \n1 2 \n1 2 \n0 \n\n");
  EXPECT_EQ(printed.Flushes(), 5);
  EXPECT_EQ(IntArray(0).RemoveLast(), -1) << "nothing is left";
}

TEST(IntArray, IsSplitWithTheOddElementInTheSecondHalf) {
  const struct {
    int size, result;
    const char* halves;
  } rows[] = {{0, 2, "\n\n"}, {1, 1, "\n1 \n"}, {2, 0, "1 \n2 \n"}, {5, 0, "1 2 \n3 4 5 \n"}};
  for (const auto& row : rows) {
    int firstSize = -1;
    int secondSize = -1;
    EXPECT_EQ(UpTo(row.size).GetHalves(firstSize, secondSize), row.result);
    IntArray first(firstSize);
    IntArray second(secondSize);
    EXPECT_EQ(UpTo(row.size).SplitInto(first, second), row.result);
    EXPECT_EQ(Printed(first) + Printed(second), row.halves);
  }
}

TEST(IntArray, ThrowsOneForAnIndexOutOfRange) {
  const auto set = [](int index) { IntArray(2).Set(index, 9); };
  EXPECT_THROW(set(-1), int);
  EXPECT_THROW(set(2), int);
}

}  // namespace snipwell
