// The first of these forms that fails in the same way: the preprocessed text without line markers,
// the same as a system header, the same with its markers, the source as it is. Compilers forgive
// system headers much that they refuse elsewhere, and without markers nothing is known to be one.
// Where another compiler has to accept the program, one is looked for that understands the text,
// and the preprocessor of the one found before is tried too.

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "snipwell/portable_text.h"
#include "snipwell/second_compiler.h"
#include "snipwell/stages.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;

std::optional<std::string> PreprocessedBy(Job& job, const CompileCommand& compiler) {
  const fs::path output = job.workshop.Folder() / "preprocessed.i";  // cl adds that
  platform::ChildCommand command;
  command.arguments = PreprocessWords(compiler, job.command.source, output.string(), true);
  command.folder = compiler.folder;
  command.environment = compiler.environment;
  const Compiled compiled = job.workshop.RunToEnd(command);
  if (!compiled.end.started || compiled.end.signal != 0 || compiled.end.status != 0) return {};
  return ReadSource(output.string());
}

Form Preprocessed(const Job& job, const std::string& text) {
  Form form = job.form;
  form.command = ForPreprocessed(job.command);
  form.text = text;
  return form;
}

bool Take(Job& job, const std::string& text, const MappedText& mapped) {
  if (!job.TakeIfItHolds(Preprocessed(job, text))) return false;
  job.trail.Start(mapped);
  job.trail.Follow(text);
  return true;
}

/// With its markers the text is taken to be what it was; where it is not, it is so in no form. A
/// compiler of the other family understands most headers as a system's only.
bool TakeText(Job& job, const std::string& text) {
  const MappedText mapped = WithoutMarkers(text, job.command.source);
  const std::string header = "# 1 \"" + job.form.name + "\" 3\n" + mapped.text;
  const bool othersAreAsked = !job.question.acceptedBy.empty();
  if (Take(job, mapped.text, mapped)) return true;
  if (othersAreAsked && Take(job, header, mapped)) return true;
  if (ChangeSecondCompiler(job, Preprocessed(job, mapped.text)) && Take(job, mapped.text, mapped)) {
    return true;
  }
  if (!Take(job, text, mapped)) return false;
  if (!othersAreAsked) Take(job, header, mapped);
  return true;
}

bool TakePreprocessedBy(Job& job, const CompileCommand& compiler) {
  const std::optional<std::string> text = PreprocessedBy(job, compiler);
  if (!text) return false;
  if (!job.question.acceptedBy.empty()) {
    const std::optional<std::string> portable = PortableText(*text);
    if (portable && TakeText(job, *portable)) return true;
  }
  return TakeText(job, *text);
}

}  // namespace

void Preprocess(Job& job) {
  if (job.command.compiler.empty() || IsPreprocessed(job.command)) return;
  if (TakePreprocessedBy(job, job.command)) return;
  const std::vector<CompileCommand> others = job.question.acceptedBy;
  for (const CompileCommand& other : others) {
    if (TakePreprocessedBy(job, other)) return;
  }
  job.Remark("Preprocessed, the program does not fail in the same way: its includes stay.");
}

}  // namespace snipwell
