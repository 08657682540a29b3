// Measures the second stage, without a compiler or beside one; Linux only.
//
//   engine_benchmark passes SOURCE
//
// writes for each pass a line of its name, its edits, the cuts in them and the seconds of processor
// time that the list of edits and the first tries took, which are all refused; and at last the
// bytes of the source, its words and the largest memory in bytes.
//
//   engine_benchmark share COMMAND ARGUMENT...
//
// runs a command and writes the seconds that went by and those of processor time that its own
// process took, without the programs that it started.

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

#include "refine/passes.h"
#include "refine/search.h"

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Refuses some programs, then stops the search.
class Refusal : public snipwell::Judge {
 public:
  std::size_t Places() const override { return 1; }
  void Ask(std::size_t place, const std::string& /*program*/) override { asked = place; }
  void Drop(std::size_t /*place*/) override {}
  std::optional<Answer> Await() override {
    if (left-- == 0) return std::nullopt;
    return Answer{asked, false};
  }

 private:
  int left = 20;
  std::size_t asked = 0;
};

std::size_t CountCuts(const snipwell::EditList& edits) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < edits.Size(); ++i) {
    count += static_cast<std::size_t>(edits[i].end() - edits[i].begin());
  }
  return count;
}

void Measure(const snipwell::Pass& pass, const snipwell::Program& program) {
  Refusal judge;
  snipwell::Search search(judge, program, nullptr);
  const std::clock_t start = std::clock();
  search.Run({pass});
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  const snipwell::EditList edits = pass.edits(program, snipwell::Tree(program));
  std::cout << pass.name << '\t' << edits.Size() << '\t' << CountCuts(edits) << '\t' << seconds
            << '\n';
}

int MeasurePasses(const char* source) {
  std::ifstream in(source, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const std::size_t bytes = text.size();
  const snipwell::Program program(std::move(text));
  for (const snipwell::Pass& pass : snipwell::Passes()) Measure(pass, program);
  struct rusage usage {};
  ::getrusage(RUSAGE_SELF, &usage);
  std::cout << bytes << '\t' << program.Size() << '\t' << usage.ru_maxrss * 1024 << '\n';
  return 0;
}

/// The processor time of one process, which has ended but was not waited for.
double OwnSeconds(pid_t process) {
  std::ifstream in("/proc/" + std::to_string(process) + "/stat");
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::istringstream fields(text.substr(text.rfind(')') + 1));
  constexpr int kBefore = 11;  // fields between the name and the time
  std::string skipped;
  for (int i = 0; i < kBefore; ++i) fields >> skipped;
  double user = 0;
  double system = 0;
  fields >> user >> system;
  return (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

int MeasureShare(char** words) {
  const Clock::time_point start = Clock::now();
  pid_t process = 0;
  if (::posix_spawnp(&process, words[0], nullptr, nullptr, words, environ) != 0) return 1;
  siginfo_t info{};
  ::waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOWAIT);
  std::cout << SecondsSince(start) << '\t' << OwnSeconds(process) << '\n';
  ::waitpid(process, nullptr, 0);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 2 ? argv[1] : "";
  if (what == "passes") return MeasurePasses(argv[2]);
  if (what == "share") return MeasureShare(argv + 2);
  std::cerr << "engine_benchmark: see the head of its source\n";
  return 1;
}
