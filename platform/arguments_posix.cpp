#include "platform/arguments.h"

namespace snipwell::platform {

Arguments::Arguments(int count, const char* const* values) : words(values, values + count) {
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
}

}  // namespace snipwell::platform
