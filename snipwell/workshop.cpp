#include "snipwell/workshop.h"

#include "compile/word_splitting.h"
#include "judge/line_check.h"
#include "judge/test_check.h"
#include "platform/machine.h"
#include "platform/signals.h"
#include "snipwell/exit_status.h"

namespace snipwell {

namespace {

using Words = std::vector<std::string>;

// Names of functions cost clang a multiple of the crash; places in its modules do as well.
const char kWithoutSymbols[] = "LLVM_DISABLE_SYMBOLIZATION=1";

/// What has been started elsewhere ends only when its launcher is asked to end; srun can take three
/// seconds for that.
double GraceOf(const Words& launcher) { return launcher.empty() ? 0 : 10; }

Words Behind(const Words& launcher, const Words& words) {
  Words all = launcher;
  all.insert(all.end(), words.begin(), words.end());
  return all;
}

}  // namespace

CompileCommand ForCopies(const CompileCommand& command) {
  CompileCommand made = command;
  // An option that is for nothing can be an error.
  if (command.compiler.empty() || IsPreprocessed(command)) return made;
  const std::filesystem::path source = std::filesystem::path(command.folder) / command.source;
  const std::string folder = std::filesystem::absolute(source).parent_path().string();
  const Words beside = IncludeWords(command, folder);
  made.arguments.insert(made.arguments.begin(), beside.begin(), beside.end());
  return made;
}

Workshop::Workshop(const Settings& programSettings)
    : settings(programSettings), tries(programSettings.work) {}

double Workshop::Seconds() const {
  return std::chrono::duration<double>(ProcessJudge::Clock::now() - start).count();
}

std::optional<ProcessJudge::Clock::time_point> Workshop::EndOfRun() const {
  if (settings.timeoutSeconds <= 0) return std::nullopt;
  const std::chrono::duration<double> time(settings.timeoutSeconds);
  return start + std::chrono::duration_cast<ProcessJudge::Clock::duration>(time);
}

bool Workshop::IsTimeUp() const {
  const auto end = EndOfRun();
  return end && ProcessJudge::Clock::now() >= *end;
}

CompilerRun Workshop::RunOf(const CompileCommand& command, double limit,
                            const Words& launcher) const {
  CompilerRun run;
  run.words = [command, launcher](const std::string& program, const std::string& output) {
    return Behind(launcher, CompileWords(command, program, output));
  };
  run.folder = command.folder;
  run.environment = command.environment;
  run.environment.emplace_back(kWithoutSymbols);
  run.limitSeconds = limit;
  run.graceSeconds = GraceOf(launcher);
  run.memoryBytes = platform::MemoryBytes() / (settings.jobs + 1);
  return run;
}

Compiled Workshop::Compile(const CompileCommand& command, const std::string& source, bool symbols) {
  CompilerRun run = RunOf(command, settings.limitSeconds, {});
  if (symbols) run.environment.pop_back();
  const std::filesystem::path temporary = Folder() / "first";
  std::filesystem::create_directories(temporary);
  return RunToEnd(CommandOf(run, {Folder(), temporary, source}));
}

Compiled Workshop::RunToEnd(const platform::ChildCommand& command) {
  return Run(command, false, whileWaiting);
}

Compiled Workshop::RunWhileTimeIs(const platform::ChildCommand& command,
                                  const std::function<void()>& tick) {
  return Run(command, true, tick);
}

Compiled Workshop::Run(platform::ChildCommand command, bool mayEndEarly,
                       const std::function<void()>& tick) {
  constexpr double kTick = 0.1;
  if (command.temporaryFolder.empty()) command.temporaryFolder = Folder().string();
  platform::Child& child = children.Start(command);
  while (!child.HasEnded()) {
    const bool signalled = children.Wait(kTick).signal != 0;
    if (signalled && !mayEndEarly) throw RunEnd(Interrupted, "stopped");
    if (mayEndEarly && (signalled || IsTimeUp())) children.Stop(child);
    if (tick) tick();
  }
  Compiled compiled = {FailureOf(child), child.End(), child.Output()};
  children.Release(child);
  return compiled;
}

std::unique_ptr<Check> Workshop::FailureCheck(const Form& form, const Question& question,
                                              const Words& launcher) const {
  const Failure& failure = question.failure;
  if (failure.kind == FailureKind::Test) {
    return std::make_unique<TestHolds>(Behind(launcher, question.test), question.limitSeconds,
                                       GraceOf(launcher));
  }
  CompilerRun run = RunOf(form.command, question.limitSeconds, launcher);
  if (failure.kind == FailureKind::Line) {
    return std::make_unique<WritesLine>(std::move(run), failure.headline);
  }
  return std::make_unique<FailsAlike>(std::move(run), failure, question.allowErrors, otherCrash);
}

Workshop::Checks Workshop::ChecksOf(const Form& form, const Question& question,
                                    const Words& launcher) const {
  Checks checks;
  for (int i = 0; i < settings.repeat; ++i) {
    checks.push_back(FailureCheck(form, question, launcher));
  }
  for (const CompileCommand& command : question.acceptedBy) {
    checks.push_back(std::make_unique<Accepts>(RunOf(command, question.limitSeconds, launcher)));
  }
  return checks;
}

std::unique_ptr<ProcessJudge> Workshop::JudgeOf(const Form& form, const Question& question) {
  const Words launcher = SplitWords(settings.launch, UsersQuoting());
  ProcessJudge::Settings wanted;
  wanted.places = settings.jobs;
  wanted.folder = tries.Path();
  wanted.programName = form.name;
  wanted.end = EndOfRun();
  auto judge = std::make_unique<ProcessJudge>(children, ChecksOf(form, question, launcher),
                                              std::move(wanted));
  judge->CallWhileWaiting(whileWaiting);
  return judge;
}

bool Workshop::Ask(const Form& form, Checks checks) {
  ProcessJudge::Settings wanted;
  wanted.folder = Folder() / "one";
  wanted.programName = form.name;
  ProcessJudge judge(children, std::move(checks), std::move(wanted));
  judge.CallWhileWaiting(whileWaiting);
  const bool holds = judge.AskNow(form.text).value_or(false);
  if (judge.StoppedBy() != 0) throw RunEnd(Interrupted, "stopped");
  return holds;
}

bool Workshop::Holds(const Form& form, const Question& question) {
  return Ask(form, ChecksOf(form, question, {}));
}

bool Workshop::IsAccepted(const Form& form, const CompileCommand& by, double limitSeconds) {
  Checks checks;
  checks.push_back(std::make_unique<Accepts>(RunOf(by, limitSeconds, {})));
  return Ask(form, std::move(checks));
}

}  // namespace snipwell
