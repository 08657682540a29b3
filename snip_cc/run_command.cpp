#include "snip_cc/run_command.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "failure/line_rewriter.h"

namespace snipwell::snip_cc {

namespace {

// More than that of a compiler's messages is not looked at.
constexpr std::size_t kMostMessages = platform::Child::kMostOutput;

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

LineMeaning MeaningOf(const std::vector<std::string>& lines, bool mustBeValid) {
  DecidingLine deciding(mustBeValid);
  for (const std::string& line : lines) {
    if (deciding.Take(line)) break;
  }
  return deciding.Meaning();
}

/// Reads what is written for the line that decides.
class EarlyEnd {
 public:
  explicit EarlyEnd(bool mustBeValid) : deciding(mustBeValid) {}

  /// True when the line is among the whole lines of `output`, which only grows.
  bool IsIn(const std::string& output) {
    bool decided = deciding.Meaning() != LineMeaning::None;
    for (; !decided; start = searched) {
      const std::size_t end = output.find('\n', searched);
      searched = end == std::string::npos ? output.size() : end + 1;
      if (end == std::string::npos) return false;
      decided = deciding.Take(WithoutColours(output.substr(start, end - start)));
    }
    return true;
  }

  /// Where the line that decides ends, once it is there.
  std::size_t End() const { return start; }

 private:
  DecidingLine deciding;
  std::size_t start = 0;     // of the line that is read
  std::size_t searched = 0;  // up to here there is no further end of it
};

platform::ChildCommand Command(std::vector<std::string> arguments, const Options& options,
                               const std::filesystem::path& folder,
                               const std::filesystem::path& currentFolder) {
  platform::ChildCommand command;
  command.arguments = std::move(arguments);
  command.folder = currentFolder.string();
  command.temporaryFolder = folder.string();
  command.limitSeconds = options.limitSeconds;
  // The names of a dump's functions cost clang more time than the compilation of a small program.
  if (options.firstLine) command.environment = {"LLVM_DISABLE_SYMBOLIZATION=1"};
  return command;
}

}  // namespace

RunResult RunCommand(std::vector<std::string> arguments, const Options& options,
                     const std::filesystem::path& folder,
                     const std::filesystem::path& currentFolder) {
  platform::ChildSet children;
  platform::Child& child =
      children.Start(Command(std::move(arguments), options, folder, currentFolder));
  EarlyEnd early(options.mustBeValid);
  bool decided = false;
  RunResult result;
  while (!child.HasEnded()) {
    result.interruptedBy = children.Wait().signal;
    if (result.interruptedBy != 0) return result;
    decided = options.firstLine && early.IsIn(child.Output());
    if (decided) children.Stop(child);
  }
  result.end = child.End();
  result.end.stopped = decided;  // whether the compiler was faster is chance
  result.lines = Lines(decided ? child.Output().substr(0, early.End()) : child.Output());
  result.meaning = MeaningOf(result.lines, options.mustBeValid);
  return result;
}

}  // namespace snipwell::snip_cc
