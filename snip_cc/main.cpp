// snip-cc: stands between snip and a compiler, or a test, that does not speak as snip expects.
//
//   snip /COMPILER=snip-cc /LOGFILE=LOG [snip's options] [--cc=COMPILER] [--limit=SECONDS]
//        [--valid] [--first-line] [--plain-options] [--test=COMMAND] [compiler options] SOURCE
//
// It runs the compiler in a process group and with a temporary folder of its own, so that nothing
// is left behind, and writes what the compiler wrote with everything in parentheses that differs
// between two compilations that fail in the same way.
//
// --valid          a crash counts only when no error of the program came before it
// --first-line     ends the compiler at the line that decides
// --plain-options  answers "/Zs" and "/Od", which snip tries on its own, without the compiler

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "compile/test_command.h"
#include "failure/crash_headline.h"
#include "failure/deciding_line.h"
#include "failure/line_rewriter.h"
#include "platform/arguments.h"
#include "platform/console.h"
#include "platform/signals.h"
#include "platform/temporary_folder.h"
#include "snip_cc/invocation.h"
#include "snip_cc/options.h"
#include "snip_cc/run_command.h"

namespace snipwell::snip_cc {
namespace {

namespace fs = std::filesystem;

// Exit statuses of the adapter's own, those that shells and "timeout" use.
constexpr int kBadUsage = 2;
constexpr int kTimedOut = 124;
constexpr int kNotStarted = 127;
constexpr int kSignalBase = 128;

const std::string kFailure = "snip-cc: internal error: ";

std::string TimeoutLine(const Options& options) {
  std::ostringstream line;
  line << kFailure << "not ended after " << options.limitSeconds << " seconds\n";
  return line.str();
}

/// What is left of a run when its folder is gone.
struct Answer {
  std::string text;       // for standard output
  std::string complaint;  // for standard error
  int status = EXIT_FAILURE;
  int interruptedBy = 0;
};

bool IsInvalid(const Options& options, const RunResult& result) {
  return options.mustBeValid && result.meaning == LineMeaning::Error;
}

int StatusOf(const Options& options, const RunResult& result) {
  const platform::ChildEnd& end = result.end;
  if (!end.started) return kNotStarted;
  const bool succeeded = end.signal == 0 && end.status == EXIT_SUCCESS;
  if (end.stopped || (IsInvalid(options, result) && !succeeded)) return EXIT_FAILURE;
  if (end.timedOut) return kTimedOut;
  return end.signal != 0 ? kSignalBase + end.signal : end.status;
}

/// What tells the failure from others, on lines of its own.
std::string Headline(const Options& options, const RunResult& result) {
  const platform::ChildEnd& end = result.end;
  const bool isOwn = !end.timedOut && !end.stopped;
  const std::string text = end.timedOut ? TimeoutLine(options) : "";
  const std::string crash = CrashHeadline(result.lines, isOwn ? end.signal : 0);
  return crash.empty() ? text : text + kFailure + crash + '\n';
}

/// The compiler's messages, what tells the failure from others first. Of an invalid program only
/// what comes before the compiler's own failure.
std::string Messages(const Options& options, const fs::path& folder, const RunResult& result) {
  const bool isInvalid = IsInvalid(options, result);
  std::string text = isInvalid ? "" : Headline(options, result);
  for (const std::string& line : result.lines) {
    const LineMeaning meaning = isInvalid ? MeaningOf(line) : LineMeaning::None;
    if (meaning == LineMeaning::Failure || meaning == LineMeaning::Crash) break;
    text += RewriteLine(line, folder.string()) + '\n';
  }
  return text;
}

Answer Compile(const Options& options, const fs::path& folder) {
  const RunResult result = RunCommand(CompilerCommand(options, folder), options, folder);
  Answer answer;
  answer.interruptedBy = result.interruptedBy;
  answer.status = StatusOf(options, result);
  if (result.interruptedBy == 0) answer.text = Messages(options, folder, result);
  if (!result.end.started) {
    answer.complaint = "cannot start " + options.compiler + ": " +
                       std::generic_category().message(result.end.reason);
  }
  return answer;
}

/// Runs the test in a folder that holds nothing but the candidate, under the source's name. A test
/// that holds is a failure with a line that stands for it; one that does not is a success without a
/// word, whatever it has written, unless the shell could not run it.
Answer Test(const Options& options, const fs::path& folder) {
  constexpr int kCannotExecute = 126;
  const fs::path place = folder / "test";
  fs::create_directory(place);
  fs::copy_file(options.source, place / SourceName(options.source));
  const RunResult result = RunCommand(TestWords(options.testCommand), options, folder, place);
  Answer answer;
  answer.interruptedBy = result.interruptedBy;
  if (result.end.timedOut) {
    answer.text = TimeoutLine(options);
    answer.status = kTimedOut;
    return answer;
  }
  const int status = result.end.status;
  const bool holds = result.end.signal == 0 && status == EXIT_SUCCESS;
  if (holds) answer.text = kFailure + "the test holds\n";
  answer.status = holds ? EXIT_FAILURE : EXIT_SUCCESS;
  if ((status == kCannotExecute || status == kNotStarted) && !result.lines.empty()) {
    answer.complaint = result.lines.back();
  }
  return answer;
}

Answer RunInFolder(const Options& options) {
  const platform::SignalsHeldBack heldBack;
  const platform::TemporaryFolder folder;
  return options.testCommand.empty() ? Compile(options, folder.Path())
                                     : Test(options, folder.Path());
}

int Main(const std::vector<std::string>& words) {
  const Options options = ParseOptions({words.begin() + (words.empty() ? 0 : 1), words.end()});
  if (!options.complaint.empty()) {
    std::cerr << "snip-cc: " << options.complaint << '\n';
    return kBadUsage;
  }
  if (!options.refused.empty()) {
    // In words that count as no error, so that they cannot be the error to isolate either.
    std::cout << "snip-cc: " << options.refused << " is not tried\n";
    return EXIT_FAILURE;
  }
  const Answer answer = RunInFolder(options);
  if (answer.interruptedBy != 0) platform::EndBySignal(answer.interruptedBy);
  // Nothing is left to clean up here, so any signal may end the process now.
  std::cout << answer.text << std::flush;
  if (!answer.complaint.empty()) std::cerr << "snip-cc: " << answer.complaint << '\n';
  return answer.status;
}

}  // namespace
}  // namespace snipwell::snip_cc

int main(int argc, char** argv) {
  const snipwell::platform::ConsoleStreams console;
  try {
    const snipwell::platform::Arguments arguments(argc, argv);
    return snipwell::snip_cc::Main(arguments.Words());
  } catch (const std::exception& error) {
    std::cerr << "snip-cc: " << error.what() << '\n';
    constexpr int kCannotSetUp = 125;
    return kCannotSetUp;
  }
}
