#include "snip_cc/run_command.h"

#include <utility>

#include "failure/output_lines.h"

namespace snipwell::snip_cc {

namespace {

/// Reads what is written for the line that decides.
class Reader {
 public:
  explicit Reader(bool mustBeValid) : deciding(mustBeValid) {}

  /// Reads on to the line that decides. True when it is among the whole lines of `output`, which
  /// only grows.
  bool ReachesDecision(const std::string& output) {
    bool decided = deciding.Meaning() != LineMeaning::None;
    while (!decided && lines.TakeNext(output)) decided = deciding.Take(lines.All().back());
    return decided;
  }

  void ReadToEnd(const std::string& output) {
    while (lines.TakeNext(output) || lines.TakeRest(output)) deciding.Take(lines.All().back());
  }

  LineMeaning Meaning() const { return deciding.Meaning(); }
  const std::vector<std::string>& Lines() const { return lines.All(); }

 private:
  DecidingLine deciding;
  OutputLines lines;
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
  Reader reader(options.mustBeValid);
  bool decided = false;
  RunResult result;
  while (!child.HasEnded()) {
    result.interruptedBy = children.Wait().signal;
    if (result.interruptedBy != 0) return result;
    decided = options.firstLine && reader.ReachesDecision(child.Output());
    if (decided) children.Stop(child);
  }
  result.end = child.End();
  result.end.stopped = decided;  // whether the compiler was faster is chance
  if (!decided) reader.ReadToEnd(child.Output());
  result.lines = reader.Lines();
  result.meaning = reader.Meaning();
  return result;
}

}  // namespace snipwell::snip_cc
