// Times a command and its largest memory:
//
//   stopwatch COMMAND ARGUMENT...
//
// writes "SECONDS seconds, KILOBYTES KB" on standard error when it ends. It can also stand in the
// place of a compiler:
//
//   STOPWATCH_COMPILER  set, it runs that program instead, with its own arguments
//   STOPWATCH_NEEDED    set, it is a compiler itself, a small and quick one: as long as the file
//                       that its last argument names holds that text, it fails with an error
//   STOPWATCH_LOG       set, each run appends a line to that file: the microseconds that it took;
//                       the microseconds of processor time, with all that the program started and,
//                       in the place of a compiler, with the stopwatch's own; and the bytes of the
//                       file that its last argument names, 0 if there is none

#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

long long Microseconds(const struct timeval& time) {
  return time.tv_sec * 1'000'000LL + time.tv_usec;
}

long long ProcessorTime(const struct rusage& usage) {
  return Microseconds(usage.ru_utime) + Microseconds(usage.ru_stime);
}

long long OwnProcessorTime() {
  struct rusage usage {};
  ::getrusage(RUSAGE_SELF, &usage);
  return ProcessorTime(usage);
}

long long SizeOf(const char* fileName) {
  struct stat status {};
  return ::stat(fileName, &status) == 0 ? static_cast<long long>(status.st_size) : 0;
}

void Log(std::chrono::duration<double> taken, long long processorTime, const char* lastArgument) {
  const char* const log = std::getenv("STOPWATCH_LOG");
  if (log == nullptr) return;
  std::ofstream(log, std::ios::app) << static_cast<long long>(taken.count() * 1e6) << ' '
                                    << processorTime << ' ' << SizeOf(lastArgument) << '\n';
}

/// Looks block by block, so that the memory does not grow with the file.
bool Holds(const char* fileName, const std::string& text) {
  constexpr std::size_t kBlock = std::size_t{64} * 1024;
  std::ifstream file(fileName, std::ios::binary);
  std::vector<char> block(kBlock);
  std::string window;
  while (file.read(block.data(), kBlock), file.gcount() > 0) {
    window.append(block.data(), static_cast<std::size_t>(file.gcount()));
    if (window.find(text) != std::string::npos) return true;
    // What may be the start of the text stays in front of the next block.
    if (window.size() >= text.size()) window.erase(0, window.size() - text.size() + 1);
  }
  return false;
}

int Compile(const char* fileName, const char* needed) {
  const auto start = Clock::now();
  const bool fails = Holds(fileName, needed);
  if (fails) std::cout << "x : error: refused\n" << std::flush;
  Log(Clock::now() - start, OwnProcessorTime(), fileName);
  return fails ? EXIT_FAILURE : EXIT_SUCCESS;
}

int RunAndTime(const char* program, char** arguments, const char* lastArgument, bool asCompiler) {
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

  if (!asCompiler) {
    std::cerr << taken.count() << " seconds, " << usage.ru_maxrss << " KB\n";
  }
  const long long own = asCompiler ? OwnProcessorTime() : 0;
  Log(taken, ProcessorTime(usage) + own, lastArgument);
  return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  const char* const lastArgument = argv[argc - 1];
  if (const char* const needed = std::getenv("STOPWATCH_NEEDED")) {
    return Compile(lastArgument, needed);
  }
  if (const char* const compiler = std::getenv("STOPWATCH_COMPILER")) {
    return RunAndTime(compiler, argv, lastArgument, true);
  }
  if (argc < 2) return EXIT_FAILURE;
  return RunAndTime(argv[1], argv + 1, lastArgument, false);
}
