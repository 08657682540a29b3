#include "platform/arguments.h"

#include "platform/unicode_windows.h"

// Of the C runtime, which declares it for its own start of a program only.
struct StartInformation {
  int newMode;
};
extern "C" int __wgetmainargs(int* count, wchar_t*** values, wchar_t*** environment, int wildcards,
                              StartInformation* information);
extern "C" int _dowildcard;

namespace snipwell::platform {

namespace {

/// Taken apart by the C runtime as those of `main` are, but with all their characters.
std::vector<std::string> WideArguments() {
  int count = 0;
  wchar_t** values = nullptr;
  wchar_t** environment = nullptr;
  StartInformation information{};
  __wgetmainargs(&count, &values, &environment, _dowildcard, &information);
  std::vector<std::string> words;
  for (int i = 0; i < count; ++i) words.push_back(ToUtf8(values[i]));
  return words;
}

}  // namespace

Arguments::Arguments(int /*count*/, const char* const* /*values*/) : words(WideArguments()) {
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
}

}  // namespace snipwell::platform
