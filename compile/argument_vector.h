#pragma once

#include <memory>
#include <vector>

#include "text/string_array.h"

namespace snipwell {

/// The argument list of a program to start: a copy of each string of a `StringArray` as a C string
/// of its own, and a null entry after the last. It owns the copies; an entry that somebody else
/// puts in the place of one is not released here.
class ArgumentVector {
 public:
  explicit ArgumentVector(const StringArray& arguments);

  /// The entries; valid as long as this object, which may be moved meanwhile.
  char** Get() { return entries.data(); }
  /// Number of entries before the null entry.
  int Count() const { return static_cast<int>(entries.size()) - 1; }

 private:
  std::vector<std::unique_ptr<char[]>> copies;
  std::vector<char*> entries;
};

}  // namespace snipwell
