// snip is run as the program it is, with the adapter that stands beside it, in a folder of its own.

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "platform/machine.h"
#include "snipwell/report_text.h"
#include "snipwell/stages.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

void Append(Words& words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
}

/// The adapter's options, then the compiler's.
Words AdapterWords(const Job& job, const fs::path& folder) {
  Words words = {"--limit=" + std::to_string(job.question.limitSeconds)};
  if (job.IsTest()) {
    words.push_back("--test=" + CommandLine(job.question.test));
    return words;
  }
  Append(words, {"--plain-options", "--first-line"});
  if (!job.question.allowErrors) words.emplace_back("--valid");
  Words compile = CompileWords(job.form.command, "", (folder / "output").string());
  compile.pop_back();
  words.push_back("--cc=" + compile.front());
  words.insert(words.end(), compile.begin() + 1, compile.end());
  return words;
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
  const Compiled run = job.workshop.RunWhileTimeIs(SnipCommand(job, folder), [&] {
    std::error_code error;
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
