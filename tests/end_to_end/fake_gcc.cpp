// A compiler with the command line of gcc that does what a rules file tells it, as `Obey`
// understands it: the file that the variable FAKE_GCC names. The text that the rules look at is the
// preprocessed one. Where no rule is for it, it writes what it was asked for and succeeds. Each run
// adds a line to "test_runs" beside the rules: the last component of its own name, and its
// arguments.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "platform/arguments.h"
#include "tests/end_to_end/fake_rules.h"

namespace {

namespace fs = std::filesystem;
using snipwell::testing::Compilation;
using Words = std::vector<std::string>;

/// The word behind this one; nothing when there is none.
std::string ValueOf(const std::string& option, const Words& words) {
  for (std::size_t i = 0; i + 1 < words.size(); ++i) {
    if (words[i] == option) return words[i + 1];
  }
  return "";
}

bool Has(const std::string& option, const Words& words) {
  for (const std::string& word : words) {
    if (word == option) return true;
  }
  return false;
}

/// The header of a line `#include "name"`; nothing for other lines.
std::string IncludedName(const std::string& line) {
  const std::string start = "#include \"";
  if (line.compare(0, start.size(), start) != 0) return "";
  return line.substr(start.size(), line.find('"', start.size()) - start.size());
}

/// Beside the file that includes it, or in a folder of -I or -iquote.
std::string FindHeader(const std::string& name, const std::string& from, const Words& words) {
  fs::path found = fs::path(from).parent_path() / name;
  for (std::size_t i = 1; i < words.size() && !fs::exists(found); ++i) {
    if (words[i].compare(0, 2, "-I") == 0) found = fs::path(words[i].substr(2)) / name;
    if (words[i - 1] == "-iquote") found = fs::path(words[i]) / name;
  }
  if (fs::exists(found)) return found.string();
  std::cerr << from << ":1:1: fatal error: " << name << ": No such file or directory\n";
  std::exit(EXIT_FAILURE);
}

std::string Preprocessed(const std::string& file, const Words& words, bool markers) {
  std::istringstream in(snipwell::testing::ReadAll(file));
  std::string text;
  const auto mark = [&](int line) {
    if (markers) text += "# " + std::to_string(line) + " \"" + file + "\"\n";
  };
  mark(1);
  int number = 1;
  for (std::string line; std::getline(in, line); ++number) {
    const std::string header = IncludedName(line);
    text += header.empty() ? line + '\n'
                           : Preprocessed(FindHeader(header, file, words), words, markers);
    if (!header.empty()) mark(number + 1);
  }
  return text;
}

/// The number of lines that the log then has.
int Log(const std::string& fileName, const Words& words) {
  std::string line = fs::path(words[0]).filename().string();
  for (std::size_t i = 1; i < words.size(); ++i) line += ' ' + words[i];
  std::ofstream(fileName, std::ios::app) << line + '\n';
  std::ifstream in(fileName);
  int count = 0;
  while (std::getline(in, line)) ++count;
  return count;
}

int TellVersion() {
  std::cerr << "Target: fake-linux\nThread model: posix\ngcc version 99.1 (Fake)\n";
  return EXIT_SUCCESS;
}

int Compile(const Compilation& made, const std::string& rules) {
  if (!fs::exists(made.file)) {
    std::cerr << "fake: fatal error: " << made.file << ": No such file or directory\n";
    return EXIT_FAILURE;
  }
  if (const auto status = snipwell::testing::Obey(rules, made)) return *status;
  const std::string output = ValueOf("-o", made.arguments);
  const bool preprocess = Has("-E", made.arguments);
  std::ofstream(fs::path(output), std::ios::binary)
      << (preprocess ? Preprocessed(made.file, made.arguments, true) : "object");
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  const char* const rules = std::getenv("FAKE_GCC");
  Compilation made;
  made.arguments = snipwell::platform::Arguments(argc, argv).Words();
  made.file = made.arguments.back();
  if (made.file == "-v") return TellVersion();
  made.run = Log((fs::path(rules).parent_path() / "test_runs").string(), made.arguments);
  made.text = Preprocessed(made.file, made.arguments, false);
  return Compile(made, rules);
}
