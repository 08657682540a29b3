// Expands argument files. The leftmost argument that begins with "@" is replaced by the words of
// its file, which may name further files, until none is left. Since everything before that argument
// is settled, one pass from left to right with a stack of waiting words does it: no word is looked
// at twice, however many files there are.

#include "snip/argument_files.h"

#include <iostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "text/file_helpers.h"

namespace snipwell {

namespace {

/// The words of one command line while they are being looked at.
class Expansion {
 public:
  explicit Expansion(const StringArray& arguments) { Await(arguments); }

  StringArray Run();

 private:
  /// A word to look at, or, with `endsFile`, the mark that the words of the file with that identity
  /// are through.
  struct Waiting {
    std::string text;
    bool endsFile;
  };

  static bool NamesFile(const std::string& word) { return !word.empty() && word[0] == '@'; }

  void Await(const StringArray& words);
  void Expand(const std::string& fileName);

  std::vector<std::string> settled;
  std::vector<Waiting> waiting;     // the next one last
  std::set<std::string> openFiles;  // identities of the files whose words are still waiting
};

StringArray Expansion::Run() {
  while (!waiting.empty()) {
    Waiting next = std::move(waiting.back());
    waiting.pop_back();
    if (next.endsFile) {
      openFiles.erase(next.text);
    } else if (NamesFile(next.text)) {
      Expand(next.text.substr(1));
    } else {
      settled.push_back(std::move(next.text));
    }
  }
  return StringArray(std::move(settled));
}

void Expansion::Await(const StringArray& words) {
  for (int i = words.GetSize() - 1; i >= 0; --i) waiting.push_back({words.Get(i), false});
}

void Expansion::Expand(const std::string& fileName) {
  const std::string identity = platform::FileIdentity(fileName);
  if (openFiles.count(identity) != 0) {
    ReportError("Argument file names itself, argument dropped:", fileName.c_str());
    return;
  }
  std::cout << "found file_of_args as argument " << settled.size() << std::endl;
  StringArray words;
  words.ReadFile(fileName, ' ', '\0', false);
  std::cout << "Reading args from " << fileName << std::endl;
  if (words.GetSize() == 0) return;
  openFiles.insert(identity);
  waiting.push_back({identity, true});
  Await(words);
}

}  // namespace

StringArray ExpandArgumentFiles(const StringArray& arguments) {
  // A program name that begins with "@" is the first such argument, and it ends the search.
  if (arguments.FindPrefix("@", 1) == 0) return arguments;
  return Expansion(arguments).Run();
}

}  // namespace snipwell
