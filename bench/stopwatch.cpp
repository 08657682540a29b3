// Times a command and its largest memory:
//
//   stopwatch COMMAND ARGUMENT...
//
// writes "SECONDS seconds, KILOBYTES KB" on standard error when it ends. With STOPWATCH_COMPILER
// set it runs that program instead, with its own arguments, and appends the microseconds that the
// run took to the file that STOPWATCH_LOG names: so it can stand in the place of a compiler.

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>

extern char** environ;

int main(int argc, char** argv) {
  using Clock = std::chrono::steady_clock;
  const char* const compiler = std::getenv("STOPWATCH_COMPILER");
  if (compiler == nullptr && argc < 2) return EXIT_FAILURE;
  const char* const program = compiler != nullptr ? compiler : argv[1];
  char** const arguments = compiler != nullptr ? argv : argv + 1;
  // A compiler can look for its parts beside the program that this entry names.
  arguments[0] = const_cast<char*>(program);

  const auto start = Clock::now();
  pid_t child = -1;
  if (::posix_spawnp(&child, program, nullptr, nullptr, arguments, environ) != 0) {
    return EXIT_FAILURE;
  }
  int status = 0;
  struct rusage usage {};
  ::wait4(child, &status, 0, &usage);
  const std::chrono::duration<double> taken = Clock::now() - start;

  if (compiler == nullptr) {
    std::cerr << taken.count() << " seconds, " << usage.ru_maxrss << " KB\n";
  } else if (const char* const log = std::getenv("STOPWATCH_LOG")) {
    std::ofstream(log, std::ios::app) << static_cast<long long>(taken.count() * 1e6) << '\n';
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}
