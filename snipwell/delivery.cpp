#include "snipwell/delivery.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "compile/source_kind.h"
#include "failure/line_rewriter.h"
#include "snipwell/exit_status.h"
#include "snipwell/failure_naming.h"
#include "snipwell/html_report.h"
#include "snipwell/json_report.h"
#include "snipwell/markdown_report.h"
#include "snipwell/report_text.h"
#include "snipwell/version.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

std::string WithoutColoursInLines(const std::string& text) {
  std::istringstream lines(text);
  std::string plain;
  for (std::string line; std::getline(lines, line);) plain += WithoutColours(line) + '\n';
  return plain;
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Asks a second time before it gives in: there are crashes that vary, and machines that are busy.
/// What other compilers have to say of the text they have said before.
bool Fails(Job& job, const Form& form) {
  Question question = job.question;
  question.acceptedBy.clear();
  return job.workshop.Holds(form, question) || job.workshop.Holds(form, question);
}

/// The same with the user's own command.
bool FailsAsGiven(Job& job, Form form) {
  form.command = ForCopies(job.command);
  return Fails(job, form);
}

/// Goes back to the program before when that fails with the user's own command, and the last does
/// not, unless that would be a much larger one, or the source.
void CheckWithOwnCommand(Job& job) {
  const std::size_t most = 2 * job.form.text.size();
  const std::vector<Form>& all = job.Milestones();
  if (all.size() < 2) return;  // it is the source, whose failure is known
  for (auto form = all.rbegin(); form + 1 < all.rend() && form->text.size() <= most; ++form) {
    if (!FailsAsGiven(job, *form)) continue;
    if (form == all.rbegin()) return;
    job.form = *form;
    job.Take(form->text);
    return job.Remark("The last step is undone: with the command as given it failed otherwise.");
  }
  job.Remark(Fails(job, job.form)
                 ? "With the command as given the result fails otherwise: use the reduced command."
                 : "The result fails only sometimes: with --repeat=5 it has to fail five times of "
                   "five.");
}

/// The command that is reported. It names the language where the result's name does not tell it.
CompileCommand ReportedCommand(const Job& job) {
  CompileCommand command = job.form.command;
  const auto kind = [&](const std::string& name) {
    return TypeBySuffix(name, IsClStyle(command.style)).kind;
  };
  const bool isTold = kind(job.findings.sourceName) == kind(job.form.name);
  if (command.language.empty() && !isTold) command.language = command.isCpp ? "c++" : "c";
  return command;
}

/// A command for the result as people would give it: without what only keeps the compiler's files
/// away, or finds for copies what stands beside the result.
Words ForPeople(const Job& job) {
  Words words = CompileWords(ReportedCommand(job), job.findings.sourceName, "");
  const Words finding =
      IncludeWords(job.command, fs::absolute(job.result->Name()).parent_path().string());
  const auto beside = std::search(words.begin(), words.end(), finding.begin(), finding.end());
  if (beside != words.end()) words.erase(beside, beside + 2);
  words.erase(std::remove(words.begin(), words.end(), "-fno-crash-diagnostics"), words.end());
  return words;
}

/// The same where a test decides.
Words TestForPeople(const Job& job) {
  Words words = job.given;
  std::replace(words.begin(), words.end(), job.command.source, job.findings.sourceName);
  return words;
}

Words VersionOf(Job& job) {
  platform::ChildCommand command;
  command.arguments = {job.command.compiler, "-v"};
  command.folder = job.command.folder;
  command.temporaryFolder = job.workshop.Folder().string();
  std::istringstream output(job.workshop.RunToEnd(command).output);
  Words lines;
  for (std::string line; std::getline(output, line);) {
    const bool target = line.rfind("Target:", 0) == 0;
    const bool version = (line.find(" version ") != std::string::npos ||
                          line.find(" Version ") != std::string::npos) &&
                         line.rfind("Found ", 0) != 0;
    if (target || version) lines.push_back(line);
  }
  return lines;
}

/// A text without the paths that begin in one way.
std::string WithoutPathsFrom(const std::string& start, const std::string& text) {
  const std::string_view before = " -o ";
  std::string plain;
  std::size_t copied = 0;
  for (std::size_t at = 0; (at = text.find(start, at)) != std::string::npos;) {
    const std::size_t inside = at + start.size();
    const std::size_t end = std::min(text.find_first_of(" \n'\":,()", inside), text.size());
    plain.append(text, copied, at - copied);
    const bool isOutput = EndsWith(plain, before);
    if (isOutput) plain.erase(plain.size() - before.size());
    copied = isOutput ? end : text.rfind(start.back(), end) + 1;
    at = end;
  }
  return plain.append(text, copied, std::string::npos);
}

/// A text without the paths of this run's own folder, whichever slashes they have: of a file in it
/// the name is left, and of where the output goes nothing.
std::string WithoutOwnPaths(const std::string& text, const fs::path& folder) {
  const fs::path start = folder / "";
  return WithoutPathsFrom(start.generic_string(), WithoutPathsFrom(start.string(), text));
}

/// What the compiler has written, as it would for the command that is reported.
std::string Shown(const std::string& output, const fs::path& folder) {
  const std::string ownOption = " -fno-crash-diagnostics";
  std::string text = WithoutOwnPaths(WithoutColoursInLines(output), folder);
  const std::size_t at = text.find(ownOption);
  if (at != std::string::npos) text.erase(at, ownOption.size());
  return text;
}

/// Lets the compiler say what it says of the result, with the names of its functions.
void AddOutput(Job& job) {
  Findings& findings = job.findings;
  const fs::path folder = job.workshop.Folder() / "shown";
  fs::create_directories(folder);
  CompileCommand command = ReportedCommand(job);
  std::string source = (folder / findings.sourceName).string();
  std::ofstream(fs::path(source), std::ios::binary) << job.form.text;
  if (IsPreprocessed(command) || command.folder.empty()) {
    // Its output then names the source as the command does.
    command.folder = folder.string();
    source = findings.sourceName;
  }
  const Compiled compiled = job.workshop.Compile(command, source, true);
  findings.output = Shown(compiled.output, job.workshop.Folder());
  if (compiled.failure.kind == job.question.failure.kind &&
      compiled.failure.kind == FailureKind::Crash) {
    findings.headline = HeadlineInWords(compiled.failure);
  }
}

void AskCompiler(Job& job) {
  CheckWithOwnCommand(job);
  job.findings.compilerVersion = VersionOf(job);
  AddOutput(job);
}

/// Who stops the run now wants what there is at once.
void AskCompilerUnlessStopped(Job& job) {
  try {
    AskCompiler(job);
  } catch (const RunEnd& end) {
    if (end.Status() != Interrupted) throw;
    job.wasInterrupted = true;
    job.Remark("The last look at the result was broken off.");
  }
}

std::vector<FileLines> LinesLeftIn(const Job& job) {
  const fs::path folder = fs::absolute(job.command.folder.empty() ? "." : job.command.folder);
  return LinesLeft(job.trail.Map(), job.trail.Places(), folder.lexically_normal());
}

std::vector<ViewedFile> FilesToView(const Job& job) {
  constexpr std::uintmax_t kMostBytes = 1 << 20;
  std::vector<ViewedFile> files;
  for (const FileLines& left : LinesLeftIn(job)) {
    const fs::path path = fs::path(job.command.folder) / left.name;
    std::error_code error;
    if (left.isSystem || fs::file_size(path, error) > kMostBytes || error) continue;
    const std::string name = WithoutOwnPaths(left.name, job.workshop.Folder());
    files.push_back({name, ReadSource(path.string()), left.lines});
  }
  return files;
}

void FillFindings(Job& job) {
  Findings& findings = job.findings;
  findings.source = job.form.text;
  findings.command = job.given;
  findings.reducedCommand = job.IsTest() ? TestForPeople(job) : ForPeople(job);
  findings.origin = RangesOf(LinesLeftIn(job));
  for (LineRange& range : findings.origin) {
    range.file = WithoutOwnPaths(range.file, job.workshop.Folder());
  }
  findings.version = kVersion;
  findings.otherCrashes = job.otherCrashes.All();
  findings.compilations = job.workshop.Commands();
  findings.seconds = job.workshop.Seconds();
}

void WriteReports(Job& job) {
  job.result->WriteReport(MarkdownReport(job.findings));
  if (!job.settings.json.empty()) WriteWhole(job.settings.json, JsonReport(job.findings));
  if (!job.settings.html.empty()) {
    WriteWhole(job.settings.html, HtmlReport(job.findings, FilesToView(job)));
  }
}

}  // namespace

void Deliver(Job& job) {
  job.Begin("check");
  job.findings.sourceName = fs::path(job.result->Name()).filename().string();
  if (!job.IsTest()) AskCompilerUnlessStopped(job);
  FillFindings(job);
  WriteReports(job);
  const Findings& findings = job.findings;
  job.Say(Counted(job.form.text.size(), "byte") + ", " +
          Counted(Program(job.form.text).Size(), "token") + ", " +
          Counted(findings.compilations, "compilation") + ", " + Duration(findings.seconds) + ": " +
          job.result->Name() + ", " + job.result->ReportName());
}

}  // namespace snipwell
