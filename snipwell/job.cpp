#include "snipwell/job.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>

#include "platform/descriptor.h"

namespace snipwell {

namespace {

Verbosity VerbosityOf(const Settings& settings) {
  if (settings.quiet) return Verbosity::Quiet;
  return settings.verbose ? Verbosity::Verbose : Verbosity::Normal;
}

/// True when at most blanks tell the texts apart.
bool HaveSameWords(const std::string& a, const std::string& b) {
  if (a == b) return true;
  const Program one(a);
  const Program other(b);
  return std::equal(
      one.Words().begin(), one.Words().end(), other.Words().begin(), other.Words().end(),
      [&](const Word& left, const Word& right) { return one.Text(left) == other.Text(right); });
}

}  // namespace

Job::Job(const Settings& programSettings)
    : settings(programSettings),
      workshop(programSettings),
      status(std::cerr, LookOf(platform::kStandardError), VerbosityOf(programSettings),
             SurroundingsOf(platform::kStandardError)) {
  workshop.OnOtherCrash([this](const Failure& failure, const Place& place) {
    if (result) otherCrashes.Note(failure, place, *result);
  });
  workshop.CallWhileWaiting([this] { ShowProgress(); });
}

bool Job::TakeIfItHolds(Form next) {
  Question asked = question;
  // Other compilers have accepted these words before.
  if (!asked.acceptedBy.empty() && HaveSameWords(next.text, form.text)) asked.acceptedBy.clear();
  if (!workshop.Holds(next, asked)) return false;
  form.name = std::move(next.name);
  form.command = std::move(next.command);
  if (next.text != form.text) Take(std::move(next.text));
  return true;
}

bool Job::TakeIfItHolds(std::string text) {
  Form next = form;
  next.text = std::move(text);
  return TakeIfItHolds(std::move(next));
}

void Job::Take(std::string text, const std::string& step) {
  form.text = std::move(text);
  if (result) result->Write(form.text);
  findings.history.push_back({workshop.Seconds(), form.text.size()});
  Trace(step);
}

void Job::EndStage(const std::string& done) {
  if (!milestones.empty() && milestones.back().text == form.text) return;
  findings.stages.push_back({done, form.text.size(), Program(form.text).Size()});
  milestones.push_back(form);
}

void Job::Begin(const std::string& stageTitle) {
  title = stageTitle;
  ShowProgress();
}

/// The size at the start is that of the source with all its includes, once they are put in.
void Job::ShowProgress(std::size_t bytes) {
  std::size_t start = 0;
  for (const StageSize& stage : findings.stages) start = std::max(start, stage.bytes);
  if (start > 0) status.Show({title, bytes, start, workshop.Commands(), settings.jobs});
}

void Job::Remark(const std::string& sentence) {
  Say(sentence);
  findings.notes.push_back(sentence);
}

void Job::Trace(const std::string& step) {
  if (settings.trace.empty()) return;
  std::ofstream trace(std::filesystem::path(settings.trace),
                      std::exchange(hasTraced, true) ? std::ios::app : std::ios::trunc);
  trace << workshop.Seconds() << '\t' << form.text.size() << '\t' << Program(form.text).Size()
        << '\t' << workshop.Commands() << '\t' << title << (step.empty() ? "" : ": ") << step
        << '\n';
}

}  // namespace snipwell
