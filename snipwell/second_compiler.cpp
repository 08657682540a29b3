// For an error, another compiler that accepts the program.

#include "snipwell/second_compiler.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string_view>
#include <utility>

#include "compile/compiler_name.h"
#include "compile/word_splitting.h"
#include "platform/machine.h"
#include "snipwell/exit_status.h"
#include "snipwell/report_text.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

// Of each family. One that is asked costs a compilation of the whole source.
constexpr std::size_t kMostAsked = 3;

constexpr std::array<std::string_view, 14> kLanguageOptions = {
    "-std=",      "-ansi",    "-D",       "-U",   "-I",   "-iquote", "-isystem",
    "-idirafter", "-include", "-imacros", "-m32", "-m64", "-fno-",   "-fpermissive"};

// Without the "/" or "-" before them.
constexpr std::array<std::string_view, 11> kClLanguageOptions = {
    "std:", "D", "U", "I", "FI", "external:I", "EH", "Zc:", "permissive", "GR", "J"};

template <typename Starts>
bool StartsWithAny(std::string_view word, const Starts& starts) {
  return std::any_of(starts.begin(), starts.end(),
                     [&](std::string_view start) { return word.substr(0, start.size()) == start; });
}

/// An option that every compiler of this style takes, and that says what the program means.
bool IsOfLanguage(const CommandOption& option, CompilerStyle style) {
  const std::string_view word = option.words.front();
  if (IsClStyle(style)) return StartsWithAny(word.substr(1), kClLanguageOptions);
  return StartsWithAny(word, kLanguageOptions);
}

/// Another compiler's command for the program, with this option for its warnings, of which cl has
/// others.
CompileCommand With(const CompileCommand& command, const std::string& compiler,
                    const std::string& warnings) {
  const CompilerStyle style = StyleOf(compiler);
  std::vector<CommandOption> options;
  for (CommandOption& option : Options(command)) {
    if (IsOfLanguage(option, command.style)) options.push_back(std::move(option));
  }
  if (style != CompilerStyle::Cl) options.push_back({{warnings}, false});
  CompileCommand other = WithOptions(command, options);
  other.compiler = compiler;
  other.style = style;
  other.frontEnd = false;
  return other;
}

bool IsCompilerName(const std::string& name) {
  const auto holds = [&](const char* part) { return name.find(part) != std::string::npos; };
  return holds("gcc") || holds("g++") || holds("clang");
}

/// The compiler that is run by this name, links followed; empty when that is not known, as it is
/// where all names lead to a cache.
fs::path FileOf(const std::string& program) {
  std::error_code error;
  const fs::path file = fs::canonical(platform::ProgramFile(program), error);
  return !error && IsCompilerName(file.filename().string()) ? file : fs::path();
}

/// Adds those of these programs that are installed and that are no others by another name.
void AddInstalled(Words& names, std::set<fs::path>& files, const Words& programs) {
  std::size_t added = 0;
  for (const std::string& program : programs) {
    if (added == kMostAsked) return;
    if (!platform::IsProgram(program)) continue;
    const fs::path file = FileOf(program);
    if (!file.empty() && !files.insert(file).second) continue;
    names.push_back(program);
    ++added;
  }
}

/// The compiler as it is called without a version, and its versions from the newest on.
Words VersionsOf(const std::string& compiler) {
  constexpr int kNewest = 24;
  constexpr int kOldest = 9;
  Words names = {compiler};
  for (int version = kNewest; version >= kOldest; --version) {
    names.push_back(compiler + '-' + std::to_string(version));
  }
  return names;
}

/// Names of compilers for the program: those that are most likely to understand what the failing
/// one's preprocessor has made of the headers come first. Of cl there is one other.
Words Candidates(const CompileCommand& command) {
  std::set<fs::path> files = {FileOf(command.compiler)};
  Words names;
  if (IsClStyle(command.style)) {
    AddInstalled(names, files, {command.style == CompilerStyle::Cl ? "clang-cl" : "cl"});
    return names;
  }
  const Words gcc = VersionsOf(command.isCpp ? "g++" : "gcc");
  const Words clang = VersionsOf(command.isCpp ? "clang++" : "clang");
  const bool isClang = command.style == CompilerStyle::Clang;
  const Words& alike = isClang ? clang : gcc;
  AddInstalled(names, files, {alike.begin() + 1, alike.end()});
  AddInstalled(names, files, isClang ? gcc : clang);
  return names;
}

bool Succeeded(const Compiled& compiled) {
  const platform::ChildEnd& end = compiled.end;
  return end.started && end.signal == 0 && end.status == 0 && !end.timedOut;
}

/// A function that loses its "return" is an error, unless there are some in the source itself.
bool AcceptsSource(Job& job, CompileCommand& compiler) {
  Compiled compiled = job.workshop.Compile(compiler, job.command.source, false);
  if (compiled.output.find("return-type]") != std::string::npos) {
    compiler = With(job.command, compiler.compiler, "-w");
    compiled = job.workshop.Compile(compiler, job.command.source, false);
  }
  return Succeeded(compiled);
}

void Choose(Job& job, const CompileCommand& compiler) {
  job.question.acceptedBy = {ForCopies(compiler)};
  job.findings.acceptedBy = compiler.compiler;
  job.Say(compiler.compiler + " accepts the program, and is to accept what is left of it.");
}

/// The next of those that have not been asked.
CompileCommand TakeNext(Job& job) {
  CompileCommand next = std::move(job.otherCompilers.back());
  job.otherCompilers.pop_back();
  return next;
}

void FindInstalled(Job& job) {
  const Words names = Candidates(job.command);
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    job.otherCompilers.push_back(With(job.command, *name, "-Werror=return-type"));
  }
  while (job.question.acceptedBy.empty() && !job.otherCompilers.empty()) {
    CompileCommand next = TakeNext(job);
    if (AcceptsSource(job, next)) Choose(job, next);
  }
}

void TakeGiven(Job& job) {
  Words words = SplitWords(job.settings.acceptedBy, UsersQuoting());
  words.push_back(job.command.source);
  CommandOrComplaint second = TakeCommandApart(words, job.command.folder);
  if (!second.complaint.empty()) throw RunEnd(BadUsage, "--accepted-by=: " + second.complaint);
  const Compiled compiled = job.workshop.Compile(second.command, job.command.source, false);
  if (!compiled.end.started) {
    throw RunEnd(Surroundings, "cannot start " + second.command.compiler +
                                   " of --accepted-by=: is it installed, and its name right?");
  }
  if (!Succeeded(compiled)) {
    throw RunEnd(CannotHold, "the compiler of --accepted-by= does not accept the source: " +
                                 ReadableLine(compiled.failure.headline));
  }
  Choose(job, second.command);
}

}  // namespace

void FindSecondCompiler(Job& job) {
  if (!job.settings.acceptedBy.empty()) return TakeGiven(job);
  if (job.question.failure.kind != FailureKind::Error) return;
  FindInstalled(job);
  if (!job.question.acceptedBy.empty()) return;
  job.findings.notes.emplace_back(
      "No other compiler of this machine was found to accept the program: the error may be the "
      "program's own.");
}

/// The form is asked about first: a compiler that does not understand it says so at once.
bool ChangeSecondCompiler(Job& job, const Form& form) {
  while (!job.otherCompilers.empty()) {
    CompileCommand next = TakeNext(job);
    if (!job.workshop.IsAccepted(form, next, job.question.limitSeconds)) continue;
    if (!AcceptsSource(job, next)) continue;
    Choose(job, next);
    return true;
  }
  return false;
}

}  // namespace snipwell
