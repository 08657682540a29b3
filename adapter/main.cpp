// snip-cc: stands between snip and a compiler, or a test, that does not speak as snip expects.
//
//   snip /COMPILER=snip-cc /LOGFILE=LOG [snip's options] [--cc=COMPILER] [--limit=SECONDS]
//        [--test=COMMAND] [compiler options] SOURCE
//
// It runs the compiler in a process group and with a temporary folder of its own, so that nothing
// is left behind, and writes what the compiler wrote with everything in parentheses that differs
// between two compilations that fail in the same way.

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "adapter/crash_headline.h"
#include "adapter/invocation.h"
#include "adapter/line_rewriter.h"
#include "adapter/options.h"
#include "adapter/temporary_folder.h"
#include "platform/limited_run.h"

namespace snipwell::adapter {
namespace {

namespace fs = std::filesystem;

// Exit statuses of the adapter's own, those that shells and "timeout" use.
constexpr int kBadUsage = 2;
constexpr int kTimedOut = 124;
constexpr int kNotStarted = 127;
constexpr int kSignalBase = 128;

std::vector<std::string> ReadLines(const fs::path& file) {
  std::vector<std::string> lines;
  std::ifstream in(file, std::ios::binary);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

/// Runs a command with its output in a file of `folder`; comes back only when nobody has asked this
/// process to end.
platform::LimitedEnd Run(std::vector<std::string> command, const Options& options,
                         const fs::path& folder, const fs::path& currentFolder) {
  platform::LimitedRun run;
  run.arguments = std::move(command);
  run.folder = currentFolder.string();
  run.outputFile = (folder / "messages").string();
  run.temporaryFolder = folder.string();
  run.limitSeconds = options.limitSeconds;
  return platform::RunLimited(run);
}

void ReportTimeout(const Options& options) {
  std::cout << "snip-cc: internal error: not ended after " << options.limitSeconds << " seconds\n";
}

int StatusOf(const platform::LimitedEnd& end) {
  if (end.timedOut) return kTimedOut;
  return end.signal != 0 ? kSignalBase + end.signal : end.status;
}

/// Writes the compiler's messages, what tells the failure from others first.
void WriteMessages(const Options& options, const fs::path& folder,
                   const platform::LimitedEnd& end) {
  const std::vector<std::string> lines = ReadLines(folder / "messages");
  if (end.timedOut) ReportTimeout(options);
  const std::string headline = CrashHeadline(lines);
  if (!headline.empty()) {
    std::cout << RewriteLine(headline, folder.string()) << '\n';
  } else if (end.signal != 0 && !end.timedOut) {
    std::cout << "snip-cc: internal error: ended by signal " << end.signal << '\n';
  }
  for (const std::string& line : lines) std::cout << RewriteLine(line, folder.string()) << '\n';
}

platform::LimitedEnd Compile(const Options& options, const fs::path& folder) {
  const platform::LimitedEnd end =
      Run(CompilerCommand(options, folder), options, folder, fs::path());
  if (end.interruptedBy != 0) return end;
  WriteMessages(options, folder, end);
  if (!end.started) std::cout << "snip-cc: cannot start " << options.compiler << '\n';
  return end;
}

/// Runs the test in a folder that holds nothing but the candidate, under the source's name. A test
/// that holds is a failure with a line that stands for it; one that does not is a success without a
/// word, whatever it has written.
platform::LimitedEnd Test(const Options& options, const fs::path& folder) {
  const fs::path place = folder / "test";
  fs::create_directory(place);
  fs::copy_file(options.source, place / SourceName(options.source));
  platform::LimitedEnd end = Run(TestCommand(options), options, folder, place);
  if (end.timedOut) {
    ReportTimeout(options);
  } else if (end.interruptedBy == 0) {
    const bool holds = end.signal == 0 && end.status == EXIT_SUCCESS;
    if (holds) std::cout << "snip-cc: internal error: the test holds\n";
    end = platform::LimitedEnd();
    end.status = holds ? EXIT_FAILURE : EXIT_SUCCESS;
  }
  return end;
}

int Main(const std::vector<std::string>& arguments) {
  const Options options = ParseOptions(arguments);
  if (!options.complaint.empty()) {
    std::cerr << "snip-cc: " << options.complaint << '\n';
    return kBadUsage;
  }
  const platform::SignalsHeldBack heldBack;
  platform::LimitedEnd end;
  {
    const TemporaryFolder folder;
    end = options.testCommand.empty() ? Compile(options, folder.Path())
                                      : Test(options, folder.Path());
  }
  std::cout.flush();
  if (end.interruptedBy != 0) platform::EndBySignal(end.interruptedBy);
  return end.started || !options.testCommand.empty() ? StatusOf(end) : kNotStarted;
}

}  // namespace
}  // namespace snipwell::adapter

int main(int argc, char** argv) {
  try {
    return snipwell::adapter::Main({argv + (argc > 0 ? 1 : 0), argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "snip-cc: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
