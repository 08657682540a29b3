#include "source/int_array.h"

#include <algorithm>
#include <ostream>

namespace snipwell {

namespace {

constexpr int kBadIndex = 1;
constexpr int kNothingToRemove = -1;

int HalvesResult(int first, int second) {
  if (second == 0) return 2;
  return first == 0 ? 1 : 0;
}

}  // namespace

IntArray::IntArray(int count) {
  SetSize(std::max(count, 0));
  data = std::make_unique<int[]>(static_cast<std::size_t>(size));
}

IntArray::IntArray(const IntArray& other) : IntArray(other.size) {
  std::copy_n(other.data.get(), size, data.get());
}

IntArray& IntArray::operator=(const IntArray& other) {
  if (this == &other) return *this;
  data = std::make_unique<int[]>(static_cast<std::size_t>(other.size));
  SetSize(other.size);
  std::copy_n(other.data.get(), size, data.get());
  return *this;
}

void IntArray::Set(int index, int value) {
  if (index < 0 || index >= size) throw kBadIndex;
  data[index] = value;
}

/// Makes a new block of exactly `newSize` elements and keeps what fits.
void IntArray::Resize(int newSize) {
  auto block = std::make_unique<int[]>(static_cast<std::size_t>(newSize));
  std::copy_n(data.get(), std::min(size, newSize), block.get());
  SetSize(newSize);
  data = std::move(block);
}

void IntArray::Add(int value) {
  Resize(size + 1);
  Set(size - 1, value);
}

int IntArray::RemoveLast() {
  if (size == 0) return kNothingToRemove;
  const int removed = Get(size - 1);
  Resize(size - 1);
  return removed;
}

int IntArray::GetHalves(int& first, int& second) const {
  first = size / 2;
  second = size - first;
  return HalvesResult(first, second);
}

int IntArray::SplitInto(IntArray& first, IntArray& second) const {
  for (int i = 0; i < first.size && i < size; ++i) first.Set(i, Get(i));
  for (int i = first.size; i < size; ++i) second.Set(i - first.size, Get(i));
  return HalvesResult(first.size, second.size);
}

void IntArray::Print(std::ostream& out) const {
  for (int i = 0; i < size; ++i) out << data[i] << ' ';
  out << std::endl;
}

std::ostream& operator<<(std::ostream& out, const IntArray& array) {
  array.Print(out);
  return out;
}

}  // namespace snipwell
