#include "compile/argument_vector.h"

namespace snipwell {

ArgumentVector::ArgumentVector(const StringArray& arguments) {
  const int count = arguments.GetSize();
  for (int i = 0; i < count; ++i) {
    copies.push_back(std::make_unique<char[]>(arguments.Get(i).size() + 1));
    entries.push_back(copies.back().get());
  }
  entries.push_back(nullptr);
  arguments.CopyTo(entries.data());
}

}  // namespace snipwell
