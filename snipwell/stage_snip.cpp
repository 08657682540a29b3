// snip is run as the program it is, with the adapter that stands beside it, in a folder of its own.
// The adapter gets a script for a compiler, which counts the compilations and asks the others that
// have to accept the program. Where scripts are no programs it gets the compiler itself, and the
// others are asked about the result only.

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "platform/machine.h"
#include "platform/shell.h"
#include "snipwell/report_text.h"
#include "snipwell/stages.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

void Append(Words& words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
}

fs::path CountFile(const fs::path& folder) { return folder / "count"; }

/// A line of a script that counts a command.
std::string Counting(const fs::path& folder) {
  return "echo >>" + CommandLine({CountFile(folder).string()}) + '\n';
}

/// A line of a script that ends it when another compiler refuses the source.
std::string Asking(const CompileCommand& other, const fs::path& folder) {
  const std::string mark = "SOURCE";
  std::string line = Counting(folder);
  for (const std::string& word : CompileWords(other, mark, (folder / "accepted").string())) {
    line += (word == mark ? "\"$source\"" : CommandLine({word})) + ' ';
  }
  return line + ">/dev/null 2>&1 || exit 1\n";
}

/// What the script does with the compiler. A program that is not accepted fails without a word, and
/// one of which a line is wanted fails even where the compiler takes it.
std::string Running(const Job& job, const std::string& compiler, const fs::path& folder) {
  const bool isLine = job.question.failure.kind == FailureKind::Line;
  const std::string run = CommandLine({compiler}) + " \"$@\"";
  if (job.question.acceptedBy.empty() && !isLine) return "exec " + run + '\n';
  std::string text = run + " >\"$TMPDIR/said\" 2>&1\n";
  text += isLine ? "status=1\n" : "status=$?\n[ $status -ne 0 ] || exit 0\n";
  text += "for source; do :; done\n";
  for (const CompileCommand& other : job.question.acceptedBy) text += Asking(other, folder);
  return text + "/bin/cat \"$TMPDIR/said\"\nexit $status\n";
}

/// Writes the script under the name of the compiler, from which the adapter tells what it is.
std::string WriteCompiler(const Job& job, const std::string& compiler, const fs::path& folder) {
  const fs::path file = folder / "compiler" / ProgramName(compiler);
  fs::create_directories(file.parent_path());
  std::ofstream(file) << "#!/bin/sh\n" << Counting(folder) << Running(job, compiler, folder);
  fs::permissions(file, fs::perms::owner_all);
  return file.string();
}

/// The adapter's options, then the compiler's.
Words AdapterWords(const Job& job, const fs::path& folder) {
  Words words = {"--limit=" + std::to_string(job.question.limitSeconds)};
  if (job.IsTest()) {
    const std::string counting = platform::kShellIsPosix ? Counting(folder) : "";
    words.push_back("--test=" + counting + CommandLine(job.question.test));
    return words;
  }
  words.emplace_back("--plain-options");
  if (job.question.failure.kind != FailureKind::Line) words.emplace_back("--first-line");
  if (!job.question.allowErrors) words.emplace_back("--valid");
  Words compile = CompileWords(job.form.command, "", (folder / "output").string());
  compile.pop_back();
  words.push_back("--cc=" + (platform::kShellIsPosix ? WriteCompiler(job, compile.front(), folder)
                                                     : compile.front()));
  words.insert(words.end(), compile.begin() + 1, compile.end());
  return words;
}

/// What snip is to take for the failure, whatever lies in the current folder.
void WriteCriteria(const Failure& failure, const fs::path& file) {
  std::ofstream out(file);
  if (failure.kind != FailureKind::Line) {
    out << "\": error\" \": fatal error\" \"internal error:\"\n";
    return;
  }
  out << '"';
  for (const char c : failure.headline) out << (c == '"' || c == '\\' ? "\\" : "") << c;
  out << "\"\n";
}

platform::ChildCommand SnipCommand(const Job& job, const fs::path& folder) {
  const fs::path programs = platform::ProgramFolder();
  platform::ChildCommand command;
  command.arguments = {(programs / "snip").string(), "/COMPILER=" + (programs / "snip-cc").string(),
                       "/LOGFILE=" + (folder / "log").string(),
                       "/ERRORMATCH=" + (folder / "criteria").string()};
  Append(command.arguments, AdapterWords(job, folder));
  command.arguments.push_back((folder / job.form.name).string());
  command.folder = job.form.command.folder;
  command.temporaryFolder = folder.string();
  command.environment = job.form.command.environment;
  command.environment.emplace_back("LLVM_DISABLE_SYMBOLIZATION=1");
  return command;
}

/// Where snip keeps the best program.
fs::path Isolated(const fs::path& source) {
  return source.parent_path() / (source.stem().string() + ".tsf" + source.extension().string());
}

}  // namespace

void RunSnip(Job& job) {
  const fs::path folder = job.workshop.Folder() / "snip";
  fs::create_directories(folder);
  const fs::path source = folder / job.form.name;
  std::ofstream(source, std::ios::binary) << job.form.text;
  WriteCriteria(job.question.failure, folder / "criteria");
  const Compiled run = job.workshop.RunWhileTimeIs(SnipCommand(job, folder), [&] {
    std::error_code error;
    const auto count = fs::file_size(CountFile(folder), error);
    if (!error) job.workshop.NoteCommandsOfOthers(count);
    const auto size = fs::file_size(Isolated(source), error);
    job.ShowProgress(error ? job.form.text.size() : size);
  });
  job.stopped = run.end.stopped;
  job.wasInterrupted = job.stopped && !job.workshop.IsTimeUp();
  std::error_code error;
  const auto size = fs::file_size(Isolated(source), error);
  if (error || size >= job.form.text.size()) return;
  std::string text = ReadSource(Isolated(source).string());
  if (!job.TakeIfItHolds(text)) return job.status.PrintDetail("snip's result fails otherwise");
  job.trail.Follow(text);
}

}  // namespace snipwell
