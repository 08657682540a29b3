// peers_judge: tells whether a source still shows a failure, in the same way for every reducer.
//
//   peers_judge --count FILE
//       prints its bytes, bytes without white space, and tokens
//   peers_judge LOG KIND HEADLINE SECOND STRICT FILE COMMAND...
//       ends with 0 when FILE is still interesting
//
// KIND is ice, error or script. A script's COMMAND decides with its exit status. For the others the
// output of COMMAND with FILE needs a line that has HEADLINE in it. With STRICT (1, not 0) no
// ordinary error stands before that line, and the command SECOND (words between blanks, "-" for
// none) accepts the program. Brackets must match in any case, and each command has ten seconds.
//
// Every question adds a line to LOG: seconds since 1970, verdict (1 or 0), bytes, bytes without
// white space, tokens, started commands. Ends with 2 when it cannot do its work.

#include <ctype.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr const char* timeLimit = "10";  // seconds for each command

double Now() {
  timeval now{};
  gettimeofday(&now, nullptr);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_usec) / 1e6;
}

bool IsWord(char c) { return isalnum(static_cast<unsigned char>(c)) || c == '_' || (c & 0x80); }

bool IsSpace(char c) { return isspace(static_cast<unsigned char>(c)); }

// What a source measures. It is scanned as C++ is, without any preprocessing.
class Measure {
 public:
  explicit Measure(std::string_view source) : text(source) {
    for (char c : text) dense += !IsSpace(c);
    while (at < text.size()) Step();
    matched = matched && open.empty();
  }

  std::string_view text;
  size_t dense = 0;
  size_t tokens = 0;
  bool matched = true;

 private:
  bool Has(std::string_view part) const { return text.substr(at, part.size()) == part; }

  void SkipPast(std::string_view end, size_t from) {
    const size_t found = text.find(end, from);
    at = found == text.npos ? text.size() : found + end.size();
  }

  void Step() {
    if (IsSpace(text[at]) || Has("\\\n")) {
      ++at;
    } else if (Has("//")) {
      SkipPast("\n", at);
    } else if (Has("/*")) {
      SkipPast("*/", at + 2);
    } else {
      ++tokens;
      Token();
    }
  }

  void Token() {
    const char c = text[at];
    if (c == '"' || c == '\'') return Quoted(c);
    if (isdigit(static_cast<unsigned char>(c))) return Number();
    if (IsWord(c)) return Word();
    Bracket(c);
    Punctuator();
  }

  void Quoted(char quote) {
    for (++at; at < text.size() && text[at] != quote && text[at] != '\n'; ++at)
      if (text[at] == '\\') ++at;
    ++at;
  }

  void Number() {
    while (at < text.size() && (IsWord(text[at]) || text[at] == '.' || Separates())) ++at;
  }

  bool Separates() const {
    return text[at] == '\'' && at + 1 < text.size() && IsWord(text[at + 1]);
  }

  // A word may be the prefix of a literal, which is the same token then.
  void Word() {
    const size_t start = at;
    while (at < text.size() && IsWord(text[at])) ++at;
    const std::string_view word = text.substr(start, at - start);
    const bool prefix = word == "L" || word == "u" || word == "U" || word == "u8";
    const bool raw = word == "R" || word == "LR" || word == "uR" || word == "UR" || word == "u8R";
    if (at >= text.size()) return;
    if (raw && text[at] == '"') return RawString();
    if (prefix && (text[at] == '"' || text[at] == '\'')) Quoted(text[at]);
  }

  void RawString() {
    const size_t paren = text.find('(', at);
    if (paren == text.npos) return void(at = text.size());
    SkipPast(")" + std::string(text.substr(at + 1, paren - at - 1)) + "\"", paren);
  }

  void Bracket(char c) {
    static constexpr std::string_view opening = "({[", closing = ")}]";
    if (opening.find(c) != opening.npos) open += closing[opening.find(c)];
    if (closing.find(c) == closing.npos) return;
    matched = matched && !open.empty() && open.back() == c;
    if (!open.empty()) open.pop_back();
  }

  void Punctuator() {
    for (std::string_view longer :
         {"<<=", ">>=", "<=>", "...", "->*", "::", "->", "++", "--", "<<", ">>", "<=", ">=", "==",
          "!=",  "&&",  "||",  "+=",  "-=",  "*=", "/=", "%=", "&=", "|=", "^=", "##", ".*"})
      if (Has(longer)) return void(at += longer.size());
    ++at;
  }

  size_t at = 0;
  std::string open;
};

std::string ReadFile(const char* name) {
  std::ifstream stream(name, std::ios::binary);
  if (!stream) {
    fprintf(stderr, "peers_judge: cannot read %s\n", name);
    exit(2);
  }
  return {std::istreambuf_iterator<char>(stream), {}};
}

struct Ending {
  int status;  // as waitpid gives it: 0 when the command ended well, other than that after the
               // limit
  std::string output;
};

[[noreturn]] void Become(std::vector<std::string> words, int out) {
  dup2(out, 1);
  dup2(out, 2);
  words.insert(words.begin(), {"timeout", "-k", "1", timeLimit});
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  execvp(pointers[0], pointers.data());
  _exit(127);
}

std::string ReadAll(int in) {
  std::string output;
  char block[65536];
  for (ssize_t count; (count = read(in, block, sizeof block)) > 0;)
    output.append(block, static_cast<size_t>(count));
  close(in);
  return output;
}

Ending Run(const std::vector<std::string>& words) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) exit(2);
  const pid_t child = fork();
  if (child < 0) exit(2);
  if (child == 0) Become(words, ends[1]);
  close(ends[1]);
  Ending ending{0, ReadAll(ends[0])};
  waitpid(child, &ending.status, 0);
  return ending;
}

struct Question {
  std::string kind, headline, second, file;
  bool strict;
  std::vector<std::string> command;
  int runs = 0;

  Ending Ask(std::vector<std::string> words) {
    ++runs;
    words.push_back(file);
    return Run(words);
  }

  // The first line that decides, be it the headline or an error that stands before it.
  bool ShowsHeadline(const std::string& output) const {
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
      if (line.find(headline) != line.npos) return true;
      if (strict && line.find("error: ") != line.npos) return false;
    }
    return false;
  }

  bool SecondAccepts() {
    if (!strict || second == "-") return true;
    std::istringstream words(second);
    return Ask({std::istream_iterator<std::string>(words), {}}).status == 0;
  }

  bool IsInteresting() {
    const Ending ending = Ask(command);
    if (kind == "script") return ending.status == 0;
    return ending.status != 0 && ShowsHeadline(ending.output) && SecondAccepts();
  }
};

void Log(const char* name, bool interesting, const Measure& measure, int runs) {
  char line[200];
  const int length =
      snprintf(line, sizeof line, "%.3f\t%d\t%zu\t%zu\t%zu\t%d\n", Now(), interesting,
               measure.text.size(), measure.dense, measure.tokens, runs);
  const int log = open(name, O_WRONLY | O_APPEND | O_CREAT, 0666);
  if (log < 0 || write(log, line, static_cast<size_t>(length)) != length) exit(2);
}

// Two may do this at the same time, so the file is renamed into its place.
void Keep(const std::string& name, const Measure& measure) {
  std::ifstream stream(name, std::ios::binary);
  const std::string best{std::istreambuf_iterator<char>(stream), {}};
  const Measure before(best);
  if (stream.is_open() &&
      std::pair(before.tokens, best.size()) <= std::pair(measure.tokens, measure.text.size()))
    return;
  const std::string own = name + "." + std::to_string(getpid());
  std::ofstream(own, std::ios::binary) << measure.text;
  if (rename(own.c_str(), name.c_str()) != 0) exit(2);
}

}  // namespace

int main(int count, char** words) {
  if (count == 3 && std::string_view(words[1]) == "--count") {
    const std::string text = ReadFile(words[2]);
    const Measure measure(text);
    return printf("%zu\t%zu\t%zu\n", text.size(), measure.dense, measure.tokens) < 0;
  }
  if (count < 8) return 2;
  setenv("LC_ALL", "C", 1);  // the compilers' messages without translation and curly quotes
  const std::string text = ReadFile(words[6]);
  const Measure measure(text);
  Question question{words[2], words[3],         words[4],
                    words[6], *words[5] == '1', {words + 7, words + count}};
  const bool interesting = measure.matched && question.IsInteresting();
  Log(words[1], interesting, measure, question.runs);
  if (interesting) Keep(std::string(words[1]) + ".best", measure);
  return interesting ? 0 : 1;
}
