#pragma once

#include <string>
#include <vector>

namespace snipwell::platform {

/// The arguments of this process. On Windows they are UTF-8, as all text of the programs.
class Arguments {
 public:
  /// Takes what `main` has; borrows nothing.
  Arguments(int count, const char* const* values);
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  /// All of them, entry 0 included.
  const std::vector<std::string>& Words() const { return words; }
  int Count() const { return static_cast<int>(words.size()); }
  /// Null-terminated; they live as long as this, and may be written over.
  char** Pointers() { return pointers.data(); }

 private:
  std::vector<std::string> words;
  std::vector<char*> pointers;
};

}  // namespace snipwell::platform
