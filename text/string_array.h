#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace snipwell {

/// Ordered, index-addressed list of byte strings: command-line arguments, matching criteria. The
/// block of strings always has exactly `size` places. Indexes run from 0 to size - 1; comparisons
/// are byte by byte. Every size change costs time proportional to the size, so what fills an array
/// collects the strings first.
class StringArray {
 public:
  /// Makes `count` strings: copies of the entries of `initial`, "" where `initial` or an entry is
  /// null. A negative count is reported on standard error and makes an empty array.
  explicit StringArray(int count = 0, const char* const* initial = nullptr);
  explicit StringArray(std::vector<std::string> pieces);
  StringArray(const StringArray& other);
  StringArray& operator=(const StringArray& other);
  virtual ~StringArray() = default;

  int GetSize() const { return size; }

  /// A copy of the string at `index`; "" for an index out of range.
  std::string Get(int index) const;
  /// Replaces the string at `index`; an index out of range is ignored.
  void Set(int index, const std::string& value);

  /// Appends `value`.
  void Add(const std::string& value);
  /// Inserts `value` so that it becomes the string at `position` (0 to size; size appends). A
  /// position out of range is reported on standard error and moved to the nearer end.
  void Add(const std::string& value, int position);
  /// Appends all strings of `other`, which may be this array.
  void Append(const StringArray& other);

  /// Removes the last string and returns it; "" from an empty array.
  std::string RemoveLast();
  /// Removes the string at `position` and returns it. A position out of range means the nearer
  /// end; an empty array stays empty and gives "".
  std::string Remove(int position);

  /// Index of the first string equal to `value`, or -1.
  int Find(const std::string& value) const;
  /// Index of the first string of at least `length` bytes whose first `length` bytes are those of
  /// `value`, or -1.
  int FindPrefix(const std::string& value, unsigned int length) const;

  /// Copies string i, with a NUL byte after it, into the caller's buffer i, and sets entry `size`
  /// of `buffers` to null. Nothing is checked: each buffer must hold its string and the NUL.
  void CopyTo(char** buffers) const;

  /// Writes the listing: two heading lines, each string between bars, and the count.
  void Print(std::ostream& out) const;

  /// Replaces the contents with the non-empty pieces of a text file. Pieces end at `delimiter`;
  /// unless it is a blank, the text before a piece's opening `delimiter` is skipped. `escape`,
  /// unless NUL, takes the next character literally. Without `keepNewlines` line feeds are removed
  /// from each piece, and every piece, empty ones too, is traced on standard output before and
  /// after. False, with the array unchanged, when the file cannot be opened.
  bool ReadFile(const std::string& fileName, char delimiter, char escape, bool keepNewlines);

 private:
  void SetSize(int newSize) { size = newSize; }
  void Replace(std::vector<std::string> kept);
  std::vector<std::string> Take();

  int size = 0;
  std::unique_ptr<std::string[]> strings;
};

std::ostream& operator<<(std::ostream& out, const StringArray& array);

}  // namespace snipwell
