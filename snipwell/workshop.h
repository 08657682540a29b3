#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "compile/compile_command.h"
#include "failure/failure.h"
#include "judge/compiler_checks.h"
#include "judge/process_judge.h"
#include "platform/child_set.h"
#include "platform/temporary_folder.h"
#include "snipwell/settings.h"

namespace snipwell {

/// A program and how it is compiled. Its file has `name`, wherever it lies.
struct Form {
  std::string text;
  std::string name;
  CompileCommand command;
};

/// What is asked about programs.
struct Question {
  Failure failure;           ///< they have to fail like this; of kind Test: the user's test decides
  bool allowErrors = false;  ///< errors may stand before a crash
  std::vector<CompileCommand> acceptedBy;  ///< these compilers have to accept them
  double limitSeconds = 0;                 ///< for each compilation
};

/// How one compilation has ended.
struct Compiled {
  Failure failure;
  platform::ChildEnd end;
  std::string output;
};

/// Where compilers are run: the children, the folder for what they leave, the limits. Every
/// command of a run is started here.
class Workshop {
 public:
  explicit Workshop(const Settings& programSettings);

  /// Compiles a file to its end, or to the limit of a first compilation. With `symbols` a crash
  /// names functions where it can, which takes longer.
  Compiled Compile(const CompileCommand& command, const std::string& source, bool symbols);
  /// Runs a command to its end. Throws RunEnd when somebody stops the program.
  Compiled RunToEnd(const platform::ChildCommand& command);

  /// A judge of forms like this one, with as many places as there are jobs, or one.
  std::unique_ptr<ProcessJudge> JudgeOf(const Form& form, const Question& question, bool single);
  /// Asks about one form.
  bool Holds(const Form& form, const Question& question);

  const std::filesystem::path& Folder() const { return folder.Path(); }
  std::size_t Commands() const { return commands; }
  void CountCommands(std::size_t more) { commands += more; }
  double Seconds() const;

 private:
  CompilerRun RunOf(const CompileCommand& command, double limit) const;

  const Settings& settings;
  ProcessJudge::Clock::time_point start = ProcessJudge::Clock::now();
  platform::TemporaryFolder folder;
  platform::ChildSet children;
  std::size_t commands = 0;
};

}  // namespace snipwell
