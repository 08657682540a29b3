#include "snipwell/workshop.h"

#include <utility>

#include "compile/test_command.h"
#include "judge/test_check.h"
#include "platform/machine.h"
#include "platform/signals.h"
#include "snipwell/exit_status.h"

namespace snipwell {

namespace {

// Names of functions cost clang a multiple of the crash; places in its modules do as well.
const char kWithoutSymbols[] = "LLVM_DISABLE_SYMBOLIZATION=1";

}  // namespace

Workshop::Workshop(const Settings& programSettings) : settings(programSettings) {}

double Workshop::Seconds() const {
  return std::chrono::duration<double>(ProcessJudge::Clock::now() - start).count();
}

CompilerRun Workshop::RunOf(const CompileCommand& command, double limit) const {
  CompilerRun run;
  run.words = [command](const std::string& program, const std::string& output) {
    return CompileWords(command, program, output);
  };
  run.folder = command.folder;
  run.environment = command.environment;
  run.environment.emplace_back(kWithoutSymbols);
  run.limitSeconds = limit;
  run.memoryBytes = platform::MemoryBytes() / (settings.jobs + 1);
  return run;
}

Compiled Workshop::Compile(const CompileCommand& command, const std::string& source, bool symbols) {
  CompilerRun run = RunOf(command, settings.limitSeconds);
  if (symbols) run.environment.pop_back();
  const std::filesystem::path temporary = Folder() / "first";
  std::filesystem::create_directories(temporary);
  return RunToEnd(CommandOf(run, {Folder(), temporary, source}));
}

Compiled Workshop::RunToEnd(const platform::ChildCommand& command) {
  platform::Child& child = children.Start(command);
  ++commands;
  while (!child.HasEnded()) {
    if (children.Wait().signal != 0) throw RunEnd(Interrupted, "stopped before there was a result");
  }
  Compiled compiled = {FailureOf(child), child.End(), child.Output()};
  children.Release(child);
  return compiled;
}

std::unique_ptr<ProcessJudge> Workshop::JudgeOf(const Form& form, const Question& question,
                                                bool single) {
  std::vector<std::unique_ptr<Check>> checks;
  for (int i = 0; i < settings.repeat; ++i) {
    if (question.failure.kind == FailureKind::Test) {
      checks.push_back(
          std::make_unique<TestHolds>(TestWords(settings.test), question.limitSeconds));
    } else {
      checks.push_back(std::make_unique<FailsAlike>(RunOf(form.command, question.limitSeconds),
                                                    question.failure, question.allowErrors,
                                                    FailsAlike::OtherCrash()));
    }
  }
  for (const CompileCommand& command : question.acceptedBy) {
    checks.push_back(std::make_unique<Accepts>(RunOf(command, question.limitSeconds)));
  }
  ProcessJudge::Settings wanted;
  wanted.places = single ? 1 : settings.jobs;
  wanted.folder = Folder() / "tries";
  wanted.programName = form.name;
  if (settings.timeoutSeconds > 0) {
    wanted.end = start + std::chrono::duration_cast<ProcessJudge::Clock::duration>(
                             std::chrono::duration<double>(settings.timeoutSeconds));
  }
  return std::make_unique<ProcessJudge>(children, std::move(checks), std::move(wanted));
}

bool Workshop::Holds(const Form& form, const Question& question) {
  const auto judge = JudgeOf(form, question, true);
  const bool holds = judge->AskNow(form.text).value_or(false);
  if (judge->StoppedBy() != 0) throw RunEnd(Interrupted, "stopped before there was a result");
  CountCommands(judge->Commands());
  return holds;
}

}  // namespace snipwell
