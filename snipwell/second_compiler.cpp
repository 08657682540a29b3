// For an error, another compiler that accepts the program.

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "compile/word_splitting.h"
#include "platform/machine.h"
#include "snipwell/exit_status.h"
#include "snipwell/failure_naming.h"
#include "snipwell/report_text.h"

namespace snipwell {

namespace {

using Words = std::vector<std::string>;

// Each of those that are asked costs a compilation of the whole source.
constexpr std::size_t kMostAsked = 3;

constexpr std::array<std::string_view, 14> kLanguageOptions = {
    "-std=",      "-ansi",    "-D",       "-U",   "-I",   "-iquote", "-isystem",
    "-idirafter", "-include", "-imacros", "-m32", "-m64", "-fno-",   "-fpermissive"};

/// An option that every compiler of this style takes, and that says what the program means.
bool IsOfLanguage(const CommandOption& option) {
  const std::string& word = option.words.front();
  return std::any_of(kLanguageOptions.begin(), kLanguageOptions.end(), [&](std::string_view start) {
    return word.compare(0, start.size(), start) == 0;
  });
}

CompileCommand With(const CompileCommand& command, const std::string& compiler) {
  std::vector<CommandOption> options;
  for (CommandOption& option : Options(command)) {
    if (IsOfLanguage(option)) options.push_back(std::move(option));
  }
  options.push_back({{"-w"}, false});
  CompileCommand other = WithOptions(command, options);
  other.compiler = compiler;
  other.style = StyleOf(compiler);
  return other;
}

/// Names of compilers for the program, the most different from the user's first, then the newest.
Words Candidates(const CompileCommand& command) {
  constexpr int kNewest = 24;
  constexpr int kOldest = 9;
  const bool isClang = command.style == CompilerStyle::Clang;
  const char* const gcc = command.isCpp ? "g++" : "gcc";
  const char* const clang = command.isCpp ? "clang++" : "clang";
  Words names = {isClang ? gcc : clang};
  for (int version = kNewest; version >= kOldest; --version) {
    names.push_back(std::string(clang) + '-' + std::to_string(version));
    names.push_back(std::string(gcc) + '-' + std::to_string(version));
  }
  return names;
}

/// The first that accepts the source.
bool FindInstalled(Job& job) {
  std::size_t asked = 0;
  for (const std::string& name : Candidates(job.command)) {
    if (asked == kMostAsked) break;
    if (!platform::IsProgram(name) || ProgramName(job.command.compiler) == name) continue;
    ++asked;
    const CompileCommand other = With(job.command, name);
    const Compiled compiled = job.workshop.Compile(other, other.source, false);
    if (compiled.end.signal != 0 || compiled.end.status != 0 || compiled.end.timedOut) continue;
    job.question.acceptedBy.push_back(ForCopies(other));
    return true;
  }
  return false;
}

void TakeGiven(Job& job) {
  Words words = SplitWords(job.settings.acceptedBy, UsersQuoting());
  words.push_back(job.command.source);
  CommandOrComplaint second = TakeCommandApart(words, job.command.folder);
  if (!second.complaint.empty()) throw RunEnd(BadUsage, "--accepted-by=: " + second.complaint);
  const Compiled compiled = job.workshop.Compile(second.command, job.command.source, false);
  if (compiled.end.signal != 0 || compiled.end.status != 0 || compiled.end.timedOut) {
    throw RunEnd(CannotHold, "the compiler of --accepted-by= does not accept the source: " +
                                 ReadableLine(compiled.failure.headline));
  }
  job.question.acceptedBy.push_back(ForCopies(second.command));
}

}  // namespace

void FindSecondCompiler(Job& job) {
  const FailureKind kind = job.question.failure.kind;
  const bool given = !job.settings.acceptedBy.empty();
  if (given) TakeGiven(job);
  if (!given && kind == FailureKind::Error && !FindInstalled(job)) {
    job.findings.notes.emplace_back(
        "No other compiler of this machine was found to accept the program: the error may be the "
        "program's own.");
  }
  if (job.question.acceptedBy.empty()) return;
  job.findings.acceptedBy = job.question.acceptedBy.front().compiler;
  job.Say(job.findings.acceptedBy + " accepts the program, and is to accept what is left of it.");
}

}  // namespace snipwell
