// snip-cc: stands between snip and a compiler, or a test, that does not speak as snip expects.
//
//   snip /COMPILER=snip-cc /LOGFILE=LOG [snip's options] [--cc=COMPILER] [--limit=SECONDS]
//        [--test=COMMAND] [compiler options] SOURCE
//
// It runs the compiler in a process group and with a temporary folder of its own, so that nothing
// is left behind, and writes what the compiler wrote with everything in parentheses that differs
// between two compilations that fail in the same way.

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "failure/crash_headline.h"
#include "failure/line_rewriter.h"
#include "platform/child_set.h"
#include "platform/signals.h"
#include "platform/temporary_folder.h"
#include "snip_cc/invocation.h"
#include "snip_cc/options.h"

namespace snipwell::snip_cc {
namespace {

namespace fs = std::filesystem;

// Exit statuses of the adapter's own, those that shells and "timeout" use.
constexpr int kBadUsage = 2;
constexpr int kTimedOut = 124;
constexpr int kNotStarted = 127;
constexpr int kSignalBase = 128;

// More than that of a compiler's messages is not looked at.
constexpr std::size_t kMostMessages = platform::Child::kMostOutput;

/// The lines, without colours, up to the bound.
std::vector<std::string> Lines(const std::string& output) {
  std::vector<std::string> lines;
  std::size_t size = 0;  // in memory, since lines can be empty
  for (std::size_t start = 0; start < output.size() && size < kMostMessages;) {
    const std::size_t end = std::min(output.find('\n', start), output.size());
    lines.push_back(WithoutColours(output.substr(start, end - start)));
    size += sizeof(std::string) + end - start;
    start = end + 1;
  }
  return lines;
}

/// What a command wrote, and how it ended.
struct RunResult {
  std::vector<std::string> lines;
  platform::ChildEnd end;
  int interruptedBy = 0;  // the signal that this process was sent meanwhile, or 0
};

RunResult Run(std::vector<std::string> arguments, const Options& options, const fs::path& folder,
              const fs::path& currentFolder) {
  platform::ChildCommand command;
  command.arguments = std::move(arguments);
  command.folder = currentFolder.string();
  command.temporaryFolder = folder.string();
  command.limitSeconds = options.limitSeconds;
  platform::ChildSet children;
  const platform::Child& child = children.Start(command);
  RunResult result;
  while (!child.HasEnded() && result.interruptedBy == 0) {
    result.interruptedBy = children.Wait().signal;
  }
  result.end = child.End();
  if (result.interruptedBy == 0) result.lines = Lines(child.Output());
  return result;
}

std::string TimeoutLine(const Options& options) {
  std::ostringstream line;
  line << "snip-cc: internal error: not ended after " << options.limitSeconds << " seconds\n";
  return line.str();
}

int StatusOf(const platform::ChildEnd& end) {
  if (end.timedOut) return kTimedOut;
  if (!end.started) return kNotStarted;
  return end.signal != 0 ? kSignalBase + end.signal : end.status;
}

/// What is left of a run when its folder is gone.
struct Answer {
  std::string text;       // for standard output
  std::string complaint;  // for standard error
  int status = EXIT_FAILURE;
  int interruptedBy = 0;
};

/// The compiler's messages, what tells the failure from others first.
std::string Messages(const Options& options, const fs::path& folder, const RunResult& result) {
  const platform::ChildEnd& end = result.end;
  const bool endedBySignal = end.signal != 0 && !end.timedOut;
  std::string text = end.timedOut ? TimeoutLine(options) : "";
  const std::string headline = CrashHeadline(result.lines, endedBySignal);
  if (!headline.empty()) {
    text += RewriteLine(headline, folder.string()) + '\n';
  } else if (endedBySignal) {
    text += "snip-cc: internal error: ended by signal " + std::to_string(end.signal) + '\n';
  }
  for (const std::string& line : result.lines) text += RewriteLine(line, folder.string()) + '\n';
  return text;
}

Answer Compile(const Options& options, const fs::path& folder) {
  const RunResult result = Run(CompilerCommand(options, folder), options, folder, fs::path());
  Answer answer;
  answer.interruptedBy = result.interruptedBy;
  answer.status = StatusOf(result.end);
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
  const RunResult result = Run(TestCommand(options), options, folder, place);
  Answer answer;
  answer.interruptedBy = result.interruptedBy;
  if (result.end.timedOut) {
    answer.text = TimeoutLine(options);
    answer.status = kTimedOut;
    return answer;
  }
  const int status = result.end.status;
  const bool holds = result.end.signal == 0 && status == EXIT_SUCCESS;
  if (holds) answer.text = "snip-cc: internal error: the test holds\n";
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

int Main(const std::vector<std::string>& arguments) {
  const Options options = ParseOptions(arguments);
  if (!options.complaint.empty()) {
    std::cerr << "snip-cc: " << options.complaint << '\n';
    return kBadUsage;
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
  try {
    return snipwell::snip_cc::Main({argv + (argc > 0 ? 1 : 0), argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "snip-cc: " << error.what() << '\n';
    constexpr int kCannotSetUp = 125;
    return kCannotSetUp;
  }
}
