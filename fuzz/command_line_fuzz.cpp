// Any arguments, and two argument files of any bytes that may name each other. The run ends with
// one of its codes, or the settings fit together: the source is last, a compile-only option is
// there, and of the arguments at most the tool's own options have gone, the others in their order.
// Behind a compiler and a log file, and before a source, no arguments make these three unknown.

#include <algorithm>
#include <optional>
#include <vector>

#include "fuzz/fuzzing.h"
#include "snip/argument_files.h"
#include "snip/command_line.h"
#include "tests/unit/temp_folder.h"

namespace snipwell::fuzz {

namespace {

/// Devices and the like could be read without end.
bool NamesSystemFile(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
  return text.find("@/") != std::string::npos || text.find("@.") != std::string::npos;
}

std::string WithoutQuotes(const std::string& argument) {
  const bool quoted = !argument.empty() && argument.front() == '"' && argument.back() == '"';
  if (!quoted) return argument;
  return argument.size() == 1 ? "" : argument.substr(1, argument.size() - 2);
}

void CheckArguments(const StringArray& given, const StringArray& left) {
  int found = 0;
  int added = 0;
  for (int i = 0; i < left.GetSize(); ++i) {
    const std::string argument = left.Get(i);
    int next = found;
    while (next < given.GetSize() && WithoutQuotes(given.Get(next)) != argument) ++next;
    if (next < given.GetSize()) {
      found = next + 1;
    } else {
      Require(argument == "-c" && i == left.GetSize() - 2, "nothing but a -c was added");
      ++added;
    }
  }
  const int gone = given.GetSize() - (left.GetSize() - added);
  Require(gone >= 2 && gone <= 5, "only own options have gone");
}

void CheckSettings(const StringArray& given, const RunSettings& settings) {
  const StringArray& left = settings.arguments;
  Require(left.Find("-c") != -1 || left.Find("/c") != -1, "a compile-only option is there");
  Require(left.Get(0) == "snip", "the program's name is first");
  const std::string source = left.Get(left.GetSize() - 1);
  const int last = given.GetSize() - 1;
  // The option to trace counts wherever it stands, even last.
  Require(source == WithoutQuotes(given.Get(last)) || source == WithoutQuotes(given.Get(last - 1)),
          "the source is last");
  Require(settings.errorFileName == source.substr(0, source.find('\0')) + ".ZEDRerrfile",
          "the compiler's output is beside the source");
  Require(settings.timeoutMinutes >= 0, "no negative limit");
  CheckArguments(given, left);
}

/// Parses the command line of these words after the program's name.
std::optional<RunResult> Parse(std::vector<std::string> words, RunSettings& settings) {
  words.insert(words.begin(), "snip");
  std::vector<const char*> argv;
  argv.reserve(words.size());
  for (const std::string& word : words) argv.push_back(word.c_str());
  const int argc = static_cast<int>(argv.size());
  const auto result = ParseCommandLine(argc, argv.data(), settings);
  if (!result) CheckSettings(ExpandArgumentFiles(StringArray(argc, argv.data())), settings);
  return result;
}

}  // namespace

}  // namespace snipwell::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  const fuzz::Silence silence;
  static const TempFolder folder;
  static const CurrentFolder current(folder);
  std::string text = fuzz::TextOf(data, size);
  if (fuzz::NamesSystemFile(text)) return 0;
  folder.Write("a", fuzz::TakeUpTo('\0', text));
  folder.Write("b", fuzz::TakeUpTo('\0', text));
  std::vector<std::string> words;
  while (!text.empty()) words.push_back(fuzz::TakeUpTo('\0', text));
  RunSettings settings;
  fuzz::Parse(words, settings);

  words.insert(words.begin(), {"/COMPILER=cc", "/LOGFILE=log"});
  words.emplace_back("x.c");
  RunSettings whole;
  const auto result = fuzz::Parse(words, whole);
  fuzz::Require(result != NoCompiler && result != NoLogFile, "compiler and log file are known");
  if (result) return 0;
  fuzz::Require(whole.compilerPath == "cc" && whole.logFilePath == "log", "the first ones count");
  fuzz::Require(whole.errorFileName == "x.c.ZEDRerrfile", "the source is known");
  return 0;
}
