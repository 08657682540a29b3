#pragma once

#include <optional>
#include <string>
#include <vector>

#include "refine/program.h"
#include "snipwell/findings.h"
#include "snipwell/origin_trail.h"
#include "snipwell/other_crashes.h"
#include "snipwell/result_file.h"
#include "snipwell/settings.h"
#include "snipwell/status_line.h"
#include "snipwell/workshop.h"

namespace snipwell {

/// What one run works on, from the command that fails to the report. Whenever the program is
/// changed it still fails, and its file is written.
class Job {
 public:
  explicit Job(const Settings& programSettings);

  const Settings& settings;
  Workshop workshop;
  StatusLine status;

  std::vector<std::string> given;  ///< the command, word by word
  CompileCommand command;          ///< the same, understood
  Form form;                       ///< the program as it is now
  Question question;               ///< what is asked of it
  /// Compilers that have not been asked yet whether they accept it, the best last.
  std::vector<CompileCommand> otherCompilers;
  OriginTrail trail;  ///< where its words come from
  std::optional<ResultFile> result;
  OtherCrashes otherCrashes;
  Findings findings;            ///< for the report; filled on the way
  bool stopped = false;         ///< to be brought to an end
  bool wasInterrupted = false;  ///< by somebody, not by the time

  bool IsTest() const { return question.failure.kind == FailureKind::Test; }

  /// Asks whether another form of the program fails in the same way, and takes it if it does.
  bool TakeIfItHolds(Form next);
  /// The same for another text of it.
  bool TakeIfItHolds(std::string text);
  /// Takes a text that is known to fail. `step` tells what has made it.
  void Take(std::string text, const std::string& step = "");
  /// Ends a stage: remembers what has become of the program, if anything has.
  void EndStage(const std::string& done);

  /// The program at the end of each stage that has changed it.
  const std::vector<Form>& Milestones() const { return milestones; }

  /// Tells what is being done.
  void Begin(const std::string& title);
  /// Shows how far it is: at a program of so many bytes.
  void ShowProgress(std::size_t bytes);
  void ShowProgress() { ShowProgress(form.text.size()); }
  void Say(const std::string& sentence) {
    if (!settings.quiet) status.Print(sentence);
  }
  /// Says it, and has it in the report.
  void Remark(const std::string& sentence);

 private:
  void Trace(const std::string& step);

  std::string title;
  std::vector<Form> milestones;
  bool hasTraced = false;
};

}  // namespace snipwell
