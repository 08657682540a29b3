#include "snipwell/reduction.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>

#include "compile/word_splitting.h"
#include "refine/search.h"
#include "snipwell/exit_status.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;

const char* KindInWords(FailureKind kind) {
  switch (kind) {
    case FailureKind::Error: return "error";
    case FailureKind::Crash: return "crash of the compiler";
    case FailureKind::Hang: return "hang of the compiler";
    case FailureKind::Test: return "test";
    default: return "nothing";
  }
}

std::string ResultName(const std::string& source) {
  const fs::path path(source);
  return (path.parent_path() / path.stem()).string() + ".min" + path.extension().string();
}

}  // namespace

Reduction::Reduction(const Settings& programSettings)
    : settings(programSettings), workshop(programSettings) {}

int Reduction::Run() {
  Understand();
  NameFailure();
  FindSecondCompiler();
  Preprocess();
  RefuseEmpty();
  const bool complete = Refine();
  return complete ? Reduced : Interrupted;
}

void Reduction::Say(const std::string& sentence) const {
  if (!settings.quiet) std::cerr << sentence << '\n';
}

void Reduction::Understand() {
  if (settings.test.empty()) {
    CommandOrComplaint understood = TakeCommandApart(settings.words, "");
    if (!understood.complaint.empty()) throw RunEnd(BadUsage, understood.complaint);
    form.command = std::move(understood.command);
    source = form.command.source;
  } else {
    if (settings.words.size() != 1) throw RunEnd(BadUsage, "--test= takes one source and no more");
    source = settings.words.front();
  }
  form.text = ReadSource(source);
  form.name = fs::path(source).filename().string();
  result.emplace(settings.output.empty() ? ResultName(source) : settings.output, true);
}

void Reduction::NameFailure() {
  question.limitSeconds = settings.limitSeconds;
  if (!settings.test.empty()) {
    question.failure = {FailureKind::Test, "the test holds", false};
    if (!workshop.Holds(form, question)) throw RunEnd(DoesNotFail, "the test does not hold");
    return;
  }
  const Compiled compiled = workshop.Compile(form.command, source, false);
  if (!compiled.end.started) throw RunEnd(Surroundings, "cannot start " + form.command.compiler);
  question.failure = compiled.failure;
  if (question.failure.kind == FailureKind::None ||
      question.failure.kind == FailureKind::OutOfMemory) {
    throw RunEnd(DoesNotFail, "the command does not fail");
  }
  question.allowErrors = settings.allowErrors || compiled.failure.errorsBefore;
  const double tenTimes = std::max(2.0, 10 * compiled.end.seconds);
  if (question.failure.kind != FailureKind::Hang) question.limitSeconds = tenTimes;
  Say(std::string(KindInWords(question.failure.kind)) + ": " + question.failure.headline);
}

void Reduction::FindSecondCompiler() {
  if (settings.acceptedBy.empty()) return;
  CommandOrComplaint second =
      TakeCommandApart(SplitWords(settings.acceptedBy + " " + source, Quoting::Shell), "");
  if (!second.complaint.empty()) throw RunEnd(BadUsage, "--accepted-by=: " + second.complaint);
  question.acceptedBy.push_back(std::move(second.command));
}

void Reduction::Preprocess() {
  if (question.failure.kind == FailureKind::Test || IsPreprocessed(form.command)) return;
  const fs::path output = workshop.Folder() / "preprocessed";
  platform::ChildCommand command;
  command.arguments = PreprocessWords(form.command, source, output.string(), false);
  command.folder = form.command.folder;
  const Compiled compiled = workshop.RunToEnd(command);
  if (compiled.end.status != 0) return;
  Form preprocessed = form;
  preprocessed.text = ReadSource(output.string());
  if (!workshop.Holds(preprocessed, question))
    return Say("not preprocessed: it does not fail then");
  form = std::move(preprocessed);
}

void Reduction::RefuseEmpty() {
  Form empty = form;
  empty.text.clear();
  if (!workshop.Holds(empty, question)) return;
  throw RunEnd(CannotHold,
               "an empty file fails in the same way: the command fails for a reason "
               "that is not in the source");
}

void Reduction::Deliver(const std::string& text) {
  form.text = text;
  result->Write(text);
  Trace(text);
}

void Reduction::Trace(const std::string& text) const {
  if (settings.trace.empty()) return;
  std::ofstream trace(settings.trace, std::ios::app);
  trace << workshop.Seconds() << '\t' << text.size() << '\t' << Program(text).Size() << '\t'
        << workshop.Commands() << '\n';
}

bool Reduction::Refine() {
  Program program(form.text);
  Form plain = form;
  plain.text = program.Render();
  if (!workshop.Holds(plain, question)) {
    program = Program(form.text, Blanks::AsWritten);
    if (!workshop.Holds(form, question)) throw RunEnd(CannotHold, "the failure does not stay");
  }
  const auto judge = workshop.JudgeOf(form, question, false);
  Search search(*judge, std::move(program),
                [this](const Program& /*now*/, const std::string& text) { Deliver(text); });
  const bool complete = search.Run(Passes());
  workshop.CountCommands(judge->Commands());
  Deliver(search.Result().Render());
  Say(std::to_string(search.Result().Size()) + " tokens, " + std::to_string(form.text.size()) +
      " bytes, " + std::to_string(workshop.Commands()) + " compilations, " +
      std::to_string(workshop.Seconds()) + " seconds");
  return complete;
}

}  // namespace snipwell
