#include "snipwell/failure_naming.h"

#include <algorithm>
#include <iostream>
#include <sstream>

#include "failure/deciding_line.h"
#include "failure/line_rewriter.h"
#include "snipwell/exit_status.h"
#include "snipwell/report_text.h"

namespace snipwell {

namespace {

std::vector<std::string> LinesOf(const std::string& output) {
  std::vector<std::string> lines;
  std::istringstream stream(output);
  for (std::string line; std::getline(stream, line);) lines.push_back(WithoutColours(line));
  return lines;
}

Compiled CompileSource(Job& job) {
  const Compiled compiled = job.workshop.Compile(job.command, job.command.source, false);
  if (compiled.end.started) return compiled;
  throw RunEnd(Surroundings,
               "cannot start " + job.command.compiler + ": is it installed, and its name right?");
}

/// The failure of this output that is to be kept.
Failure Wanted(const Job& job, const Compiled& compiled) {
  const std::string& text = job.settings.match;
  if (text.empty()) return compiled.failure;
  for (const std::string& line : LinesOf(compiled.output)) {
    if (line.find(text) != std::string::npos) return {FailureKind::Line, text, false};
  }
  throw RunEnd(DoesNotFail, "no line of the compiler's output holds '" + text +
                                "': --list shows which there are");
}

void RefuseNone(const Failure& failure) {
  if (failure.kind == FailureKind::OutOfMemory) {
    throw RunEnd(CannotHold,
                 "the compiler is out of memory, which is no failure to reduce: "
                 "give it more, or try fewer --jobs");
  }
  if (failure.kind == FailureKind::None) {
    throw RunEnd(DoesNotFail, "the command does not fail: snipwell stands before one that does");
  }
}

/// A hang is not waited for twice.
void RefuseChanging(Job& job) {
  if (job.question.failure.kind == FailureKind::Hang) return;
  const Failure again = Wanted(job, CompileSource(job));
  if (again.IsSameAs(job.question.failure)) return;
  const std::string& first = job.question.failure.headline;
  if (again.headline.empty()) {
    throw RunEnd(CannotHold, "it fails only sometimes: " + first +
                                 ". A script for --test= can compile several times");
  }
  throw RunEnd(CannotHold, "the failure changes: first " + first + "; then " + again.headline +
                               ". --match=TEXT can name a line that all of them have");
}

void NameTestFailure(Job& job) {
  const bool wrongCode = !job.settings.wrongCode.empty();
  job.question.failure = {FailureKind::Test, wrongCode ? "wrong code" : "the test holds", false};
  job.question.limitSeconds = job.settings.limitSeconds;
  for (int i = 0; i < 2; ++i) {
    if (job.workshop.Holds(job.form, job.question)) continue;
    throw RunEnd(i == 0 ? DoesNotFail : CannotHold,
                 i == 0 ? "the test does not hold: it has to end with status 0 in a folder that "
                          "holds nothing but the source"
                        : "the test holds only sometimes");
  }
}

/// Ten times what the first compilation took: what takes longer has another failure.
double LimitFrom(const Compiled& compiled, double limitOfFirst) {
  if (compiled.failure.kind == FailureKind::Hang) return limitOfFirst;
  return std::max(2.0, 10 * compiled.end.seconds);
}

}  // namespace

const char* KindInWords(FailureKind kind) {
  switch (kind) {
    case FailureKind::Error: return "The compiler reports an error.";
    case FailureKind::Crash: return "The compiler crashes.";
    case FailureKind::Hang: return "The compiler does not end.";
    case FailureKind::Line: return "The compiler writes a certain line.";
    default: return "A test holds.";
  }
}

std::string HeadlineInWords(const Failure& failure) {
  const bool isPlace = failure.kind == FailureKind::Crash && failure.headline.rfind("in ", 0) == 0;
  return (isPlace ? "internal compiler error: " : "") + failure.headline;
}

void NameFailure(Job& job) {
  if (!job.question.test.empty()) {
    NameTestFailure(job);
  } else {
    const Compiled compiled = CompileSource(job);
    job.question.failure = Wanted(job, compiled);
    RefuseNone(job.question.failure);
    RefuseChanging(job);
    job.question.allowErrors = job.settings.allowErrors || compiled.failure.errorsBefore;
    job.question.limitSeconds = LimitFrom(compiled, job.settings.limitSeconds);
  }
  job.findings.headline = HeadlineInWords(job.question.failure);
  job.findings.kind = job.settings.wrongCode.empty()
                          ? KindInWords(job.question.failure.kind)
                          : "Two builds of a program behave in different ways.";
  job.Say(job.findings.kind + ' ' + ReadableLine(job.findings.headline));
}

void ListFailures(Job& job) {
  const Compiled compiled = CompileSource(job);
  if (compiled.failure.kind == FailureKind::Crash) {
    std::cout << HeadlineInWords(compiled.failure) << '\n';
  }
  for (const std::string& line : LinesOf(compiled.output)) {
    if (MeaningOf(line) != LineMeaning::None) std::cout << line << '\n';
  }
}

}  // namespace snipwell
