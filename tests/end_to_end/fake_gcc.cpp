// A compiler with the command line of gcc, or of cl where "cl" ends its name, that does what a
// rules file tells it, as `Obey` understands it: the file that the variable FAKE_GCC names. The
// text that the rules look at is the preprocessed one. Where no rule is for it, it writes what it
// was asked for and succeeds. Each run adds a line to "test_runs" beside the rules: the last
// component of its own name, and its arguments.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
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

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

/// What follows this beginning of a word, in the last word that has it.
std::string JoinedValueOf(const std::string& option, const Words& words) {
  std::string value;
  for (const std::string& word : words) {
    if (StartsWith(word, option)) value = word.substr(option.size());
  }
  return value;
}

bool IsCl(const Words& words) {
  const std::string name = fs::path(words[0]).stem().string();
  const std::string end = name.substr(name.size() - std::min<std::size_t>(name.size(), 2));
  return end == "cl" || end == "CL";
}

Words InVariable(const char* variable) {
  std::istringstream in(std::getenv(variable) != nullptr ? std::getenv(variable) : "");
  return {std::istream_iterator<std::string>(in), {}};
}

/// As cl finds its arguments: those of two variables stand around the command's own.
Words ArgumentsOf(int argc, char** argv) {
  Words words = snipwell::platform::Arguments(argc, argv).Words();
  if (!IsCl(words)) return words;
  const Words before = InVariable("CL");
  const Words after = InVariable("_CL_");
  words.insert(words.begin() + 1, before.begin(), before.end());
  words.insert(words.end() - 1, after.begin(), after.end());
  return words;
}

/// The header of a line `#include "name"`; nothing for other lines.
std::string IncludedName(const std::string& line) {
  const std::string start = "#include \"";
  if (!StartsWith(line, start)) return "";
  return line.substr(start.size(), line.find('"', start.size()) - start.size());
}

/// Beside the file that includes it, or in a folder of -I, /I or -iquote.
std::string FindHeader(const std::string& name, const std::string& from, const Words& words) {
  fs::path found = fs::path(from).parent_path() / name;
  for (std::size_t i = 1; i < words.size() && !fs::exists(found); ++i) {
    if (StartsWith(words[i], "-I")) found = fs::path(words[i].substr(2)) / name;
    if (words[i - 1] == (IsCl(words) ? "/I" : "-iquote")) found = fs::path(words[i]) / name;
  }
  if (fs::exists(found)) return found.string();
  std::cerr << from << (IsCl(words) ? "(1): fatal error C1083: " : ":1:1: fatal error: ") << name
            << ": No such file or directory\n";
  std::exit(EXIT_FAILURE);
}

std::string Preprocessed(const std::string& file, const Words& words, bool markers) {
  std::istringstream in(snipwell::testing::ReadAll(file));
  std::string text;
  const auto mark = [&](int line) {
    const std::string start = IsCl(words) ? "#line " : "# ";
    if (markers) text += start + std::to_string(line) + " \"" + file + "\"\n";
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

/// It takes "-v" for an unknown option, and tells its version whenever it is not told not to.
void TellVersionOfCl(const Words& words) {
  if (!Has("/nologo", words)) std::cerr << "Microsoft (R) C/C++ Compiler Version 19.99 for x64\n";
  if (words.back() == "-v") {
    std::cerr << "cl : Command line error D8003 : missing source filename\n";
    std::exit(2);
  }
  std::cout << fs::path(words.back()).filename().string() << std::endl;
}

/// A name without a suffix gets one of cl.
std::string OutputOf(const Words& words) {
  if (!IsCl(words)) return ValueOf("-o", words);
  const bool preprocess = Has("/P", words);
  fs::path output = JoinedValueOf(preprocess ? "/Fi" : "/Fo", words);
  if (!output.has_extension()) output += preprocess ? ".i" : ".obj";
  return output.string();
}

int Compile(const Compilation& made, const std::string& rules) {
  if (!fs::exists(made.file)) {
    std::cerr << "fake: fatal error: " << made.file << ": No such file or directory\n";
    return EXIT_FAILURE;
  }
  if (const auto status = snipwell::testing::Obey(rules, made)) return *status;
  const bool preprocess = Has(IsCl(made.arguments) ? "/P" : "-E", made.arguments);
  std::ofstream(fs::path(OutputOf(made.arguments)), std::ios::binary)
      << (preprocess ? Preprocessed(made.file, made.arguments, true) : "object");
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  const char* const rules = std::getenv("FAKE_GCC");
  Compilation made;
  made.arguments = ArgumentsOf(argc, argv);
  made.file = made.arguments.back();
  if (IsCl(made.arguments)) {
    TellVersionOfCl(made.arguments);
    if (StartsWith(made.file, "/Tp") || StartsWith(made.file, "/Tc")) made.file.erase(0, 3);
  }
  if (made.file == "-v") return TellVersion();
  made.run = Log((fs::path(rules).parent_path() / "test_runs").string(), made.arguments);
  made.text = Preprocessed(made.file, made.arguments, false);
  return Compile(made, rules);
}
