// A compiler that does what a rules file tells it. It reads "fake_compiler.rules" in the current
// directory, a list of rules like
//
//   rule
//   has int needed          the file to compile holds this text
//   lacks ;;                ... does not hold this text
//   arg /Zs                 this argument was given
//   run 3                   this is the third run
//   out {file}(2) : error   write a line on standard output; {file} is the file to compile
//   err warning             write a line on standard error
//   raw a\x00b              write bytes on standard output, without a line feed
//   clock 900               let the test clock go on by 900 seconds
//   delete                  delete the file to compile
//   exit 2                  end with this status (0 when nothing is said)
//   abort                  end by the signal of that name
//   crash                  end by an access to memory that is not there
//
// and carries out the first rule whose conditions all hold; without one it succeeds silently. The
// file to compile is the last argument. Each run leaves its arguments, one a line, in "runs/N.args"
// and the text of that file in "runs/N.text".

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

struct Line {
  std::string word;
  std::string rest;
};
using Rule = std::vector<Line>;

std::string ReadAll(const std::filesystem::path& path) {
  if (!std::filesystem::is_regular_file(path)) return "";
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// Replaces \n, \\ and \xHH.
std::string Unescape(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      result += text[i];
    } else if (text[++i] == 'x') {
      result += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      result += text[i] == 'n' ? '\n' : text[i];
    }
  }
  return result;
}

std::vector<Rule> ReadRules() {
  std::vector<Rule> rules;
  std::ifstream in("fake_compiler.rules");
  for (std::string text; std::getline(in, text);) {
    if (!text.empty() && text.back() == '\r') text.pop_back();
    const std::size_t blank = text.find(' ');
    const std::string word = text.substr(0, blank);
    if (word == "rule") rules.emplace_back();
    if (word.empty() || word == "rule") continue;
    rules.back().push_back(
        {word, blank == std::string::npos ? "" : Unescape(text.substr(blank + 1))});
  }
  return rules;
}

struct Compilation {
  std::vector<std::string> arguments;
  std::string file;
  std::string text;
  int run = 1;
};

Compilation Record(int argc, char** argv) {
  Compilation made;
  made.arguments.assign(argv, argv + argc);
  made.file = made.arguments.back();
  made.text = ReadAll(made.file);
  std::filesystem::create_directory("runs");
  const auto name = [&made](const char* kind) { return "runs/" + std::to_string(made.run) + kind; };
  while (std::filesystem::exists(name(".args"))) ++made.run;
  std::ofstream arguments(name(".args"), std::ios::binary);
  for (const std::string& argument : made.arguments) arguments << argument << '\n';
  std::ofstream(name(".text"), std::ios::binary) << made.text;
  return made;
}

bool Holds(const Line& line, const Compilation& made) {
  if (line.word == "has") return made.text.find(line.rest) != std::string::npos;
  if (line.word == "lacks") return made.text.find(line.rest) == std::string::npos;
  if (line.word == "arg") {
    return std::count(made.arguments.begin(), made.arguments.end(), line.rest) != 0;
  }
  if (line.word == "run") return made.run == std::stoi(line.rest);
  return true;  // an action
}

std::string WithFileName(std::string text, const std::string& file) {
  const std::size_t place = text.find("{file}");
  return place == std::string::npos ? text : text.replace(place, 6, file);
}

void AdvanceClock(int seconds) {
  int now = 0;
  std::ifstream("test_clock") >> now;
  std::ofstream("test_clock") << now + seconds;
}

void Crash() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
}

int Act(const Rule& rule, const Compilation& made) {
  for (const Line& line : rule) {
    if (line.word == "out") std::cout << WithFileName(line.rest, made.file) << std::endl;
    if (line.word == "err") std::cerr << WithFileName(line.rest, made.file) << std::endl;
    if (line.word == "raw") std::cout << WithFileName(line.rest, made.file) << std::flush;
    if (line.word == "clock") AdvanceClock(std::stoi(line.rest));
    if (line.word == "delete") std::filesystem::remove(made.file);
    if (line.word == "abort") std::raise(SIGABRT);
    if (line.word == "crash") Crash();
    if (line.word == "exit") return std::stoi(line.rest);
  }
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  const Compilation made = Record(argc, argv);
  for (const Rule& rule : ReadRules()) {
    bool holds = true;
    for (const Line& line : rule) holds = holds && Holds(line, made);
    if (holds) return Act(rule, made);
  }
  return EXIT_SUCCESS;
}
