#pragma once

#include <iosfwd>
#include <memory>

namespace snipwell {

/// Ordered, index-addressed list of integers: the numbers of program objects. The block always has
/// exactly `size` elements, so `Add` and `RemoveLast` cost time proportional to the size; what
/// fills an array of known size makes it that size and uses `Set`.
class IntArray {
 public:
  /// Makes `count` elements, all 0; a negative count makes an empty array.
  explicit IntArray(int count = 0);
  IntArray(const IntArray& other);
  IntArray& operator=(const IntArray& other);

  int GetSize() const { return size; }

  /// The element at `index`, which must be in 0..size - 1.
  int Get(int index) const { return data[index]; }
  /// Replaces the element at `index`. Throws the int 1 for an index out of range.
  void Set(int index, int value);

  /// Appends `value`.
  void Add(int value);
  /// Removes the last element and returns it; -1 from an empty array.
  int RemoveLast();

  /// Sizes for splitting in two; the odd element goes to the second half. Returns 2 when the
  /// second half is empty, else 1 when the first one is, else 0.
  int GetHalves(int& first, int& second) const;
  /// Copies the leading elements into `first`, as many as it holds, and the rest into `second`.
  /// Both must have the sizes from `GetHalves`; a smaller one throws the int 1. Returns 2 when
  /// `second` is empty, else 1 when `first` is, else 0.
  int SplitInto(IntArray& first, IntArray& second) const;

  /// Writes each element followed by one space, then a line break and a flush.
  void Print(std::ostream& out) const;

 private:
  void SetSize(int newSize) { size = newSize; }
  void Resize(int newSize);

  int size = 0;
  std::unique_ptr<int[]> data;
};

std::ostream& operator<<(std::ostream& out, const IntArray& array);

}  // namespace snipwell
