#include "snipwell/reduction.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>

#include "snipwell/delivery.h"
#include "snipwell/exit_status.h"
#include "snipwell/failure_naming.h"
#include "snipwell/input.h"
#include "snipwell/job.h"
#include "snipwell/second_compiler.h"
#include "snipwell/stages.h"

namespace snipwell {

namespace {

void Understand(Job& job) {
  Input input = ReadInput(job.settings, job.workshop);
  job.given = std::move(input.given);
  job.command = std::move(input.command);
  job.question.test = std::move(input.test);
  job.form.name = std::filesystem::path(input.source).filename().string();
  job.form.command = ForCopies(job.command);
  job.form.text = std::move(input.text);
  for (const std::string& remark : input.remarks) job.Remark(remark);
  if (job.settings.list) return;
  job.result.emplace(input.source, job.settings.output, job.settings.force);
  for (const std::string& file : {job.settings.html, job.settings.json, job.settings.trace}) {
    job.result->AddFile(file);
  }
  job.trail.Start({job.form.text, LineMap(job.command.source, job.form.text)});
}

void RefuseEmpty(Job& job) {
  Form empty = job.form;
  empty.text.clear();
  if (!job.workshop.Holds(empty, job.question)) return;
  throw RunEnd(CannotHold,
               "an empty file fails in the same way: the reason is not in the source but in the "
               "command, or in the compiler's installation");
}

/// Behind a launcher that does nothing no program would fail.
void TryLauncher(Job& job) {
  if (job.settings.launch.empty()) return;
  if (job.workshop.JudgeOf(job.form, job.question)->AskNow(job.form.text).value_or(true)) return;
  throw RunEnd(Surroundings,
               "behind --launch= the failure does not show: the launcher has to start the command "
               "that it is given, in its own current folder");
}

void TellOfEarlyEnd(Job& job) {
  if (!job.stopped && !job.workshop.IsTimeUp()) return;
  job.Remark("The run was ended early: with --resume it goes on from here.");
}

/// Goes on from an earlier result, if it still fails.
bool Resume(Job& job) {
  if (!job.settings.resume || !job.result->HasEarlier()) return false;
  Form earlier = job.form;
  earlier.text = ReadSource(job.result->Name());
  if (!job.IsTest()) earlier.command = ForPreprocessed(job.command);
  const bool holds = job.TakeIfItHolds(earlier) || job.TakeIfItHolds(earlier.text);
  if (!holds) {
    job.Remark("The earlier result does not fail any more: the reduction begins anew.");
    return false;
  }
  job.trail.Follow(job.form.text);
  job.Remark("The run went on from an earlier result.");
  job.EndStage("earlier result");
  return true;
}

/// Runs a stage, unless and until somebody stops the run.
void RunStage(Job& job, const Stage& stage) {
  job.Begin(stage.title);
  try {
    stage.run(job);
  } catch (const RunEnd& end) {
    if (end.Status() != Interrupted) throw;
    job.stopped = job.wasInterrupted = true;
  }
  job.EndStage(stage.done);
}

void RunStages(Job& job, bool resumed) {
  for (const std::string& name : job.settings.stages) {
    const auto stage = std::find_if(Stages().begin(), Stages().end(),
                                    [&](const Stage& each) { return each.name == name; });
    const bool isDone = job.stopped || job.workshop.IsTimeUp();
    if (!isDone && !(resumed && stage->preparesOnly)) RunStage(job, *stage);
  }
}

}  // namespace

ExitStatus Reduce(const Settings& settings) {
  Job job(settings);
  Understand(job);
  if (settings.list) {
    ListFailures(job);
    return Reduced;
  }
  job.EndStage("source");
  job.Begin("compile");
  NameFailure(job);
  FindSecondCompiler(job);
  RefuseEmpty(job);
  TryLauncher(job);
  const bool resumed = Resume(job);
  if (!resumed) job.Take(job.form.text);
  RunStages(job, resumed);
  TellOfEarlyEnd(job);
  Deliver(job);
  return job.wasInterrupted ? Interrupted : Reduced;
}

}  // namespace snipwell
