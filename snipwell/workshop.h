#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
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

/// The command for copies of its source that lie elsewhere: what stands beside the source is found
/// all the same.
CompileCommand ForCopies(const CompileCommand& command);

/// What is asked about programs.
struct Question {
  Failure failure;                ///< they have to fail like this; of kind Test: a test decides,
  std::vector<std::string> test;  ///< which this command runs in the program's folder
  bool allowErrors = false;       ///< errors may stand before a crash
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
  /// The same for a command that may be ended early: by somebody or by the run's time. `tick` is
  /// called about ten times a second.
  Compiled RunWhileTimeIs(const platform::ChildCommand& command, const std::function<void()>& tick);

  /// A judge of forms like this one, with as many places as there are jobs, by way of the
  /// launcher if there is one, and until the run's time is up.
  std::unique_ptr<ProcessJudge> JudgeOf(const Form& form, const Question& question);
  /// Asks about one form, on this machine.
  bool Holds(const Form& form, const Question& question);
  /// True when a compiler takes the form without an error.
  bool IsAccepted(const Form& form, const CompileCommand& by, double limitSeconds);

  /// Told of other crashes of the compiler than the one asked for, with the program's file.
  void OnOtherCrash(FailsAlike::OtherCrash callback) { otherCrash = std::move(callback); }
  /// Called about ten times a second while a command is waited for.
  void CallWhileWaiting(std::function<void()> callback) { whileWaiting = std::move(callback); }

  /// For whatever a run needs on the way; it goes with the workshop.
  const std::filesystem::path& Folder() const { return folder.Path(); }
  /// Commands that were started.
  std::size_t Commands() const { return children.Started() + commandsOfOthers; }
  /// So many of them were started by other programs that the run has started.
  void NoteCommandsOfOthers(std::size_t number) { commandsOfOthers = number; }
  /// True when the run has taken as long as it may.
  bool IsTimeUp() const;
  /// Since the start of the run.
  double Seconds() const;

 private:
  using Checks = std::vector<std::unique_ptr<Check>>;

  CompilerRun RunOf(const CompileCommand& command, double limit,
                    const std::vector<std::string>& launcher) const;
  std::unique_ptr<Check> FailureCheck(const Form& form, const Question& question,
                                      const std::vector<std::string>& launcher) const;
  Checks ChecksOf(const Form& form, const Question& question,
                  const std::vector<std::string>& launcher) const;
  bool Ask(const Form& form, Checks checks);
  Compiled Run(platform::ChildCommand command, bool mayEndEarly, const std::function<void()>& tick);
  std::optional<ProcessJudge::Clock::time_point> EndOfRun() const;

  const Settings& settings;
  ProcessJudge::Clock::time_point start = ProcessJudge::Clock::now();
  platform::TemporaryFolder folder;
  platform::TemporaryFolder tries;
  platform::ChildSet children;
  std::size_t commandsOfOthers = 0;
  FailsAlike::OtherCrash otherCrash;
  std::function<void()> whileWaiting;
};

}  // namespace snipwell
