// Puts a command together again that was taken apart.

#include <utility>

#include "compile/compile_command.h"
#include "compile/option_groups.h"
#include "compile/source_kind.h"

namespace snipwell {

namespace {

using Words = std::vector<std::string>;

bool IsClStyle(const CompileCommand& command) { return IsClStyle(command.style); }

void Append(Words& words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
}

Words Start(const CompileCommand& command) {
  Words words = {command.compiler};
  if (command.frontEnd) {
    words.emplace_back("-cc1");
  } else if (command.style == CompilerStyle::Clang || command.style == CompilerStyle::ClangCl) {
    // Else it compiles a second time after a crash and leaves the preprocessed source behind.
    words.emplace_back("-fno-crash-diagnostics");
  }
  Append(words, command.arguments);
  return words;
}

Words SourceWords(const CompileCommand& command, const std::string& source) {
  if (!IsClStyle(command)) {
    return command.language.empty() ? Words{source} : Words{"-x", command.language, source};
  }
  const bool isC = command.language == "c";
  // Who has no source yet puts one behind the words.
  if (!command.language.empty() && source.empty()) return {isC ? "/TC" : "/TP", ""};
  if (!command.language.empty()) return {(isC ? "/Tc" : "/Tp") + source};
  // A path from the root could look like an option; cl has no word against that.
  const bool isPlain = !source.empty() && source[0] != '/';
  return command.style == CompilerStyle::Cl || isPlain ? Words{source} : Words{"--", source};
}

/// cl writes the debug information of all outputs of a folder into one file unless told another.
bool WritesDatabase(const CompileCommand& command) {
  for (const std::string& argument : command.arguments) {
    const std::string name = argument.empty() ? "" : argument.substr(1);
    if (name == "Zi" || name == "ZI") return command.style == CompilerStyle::Cl;
  }
  return false;
}

Words OutputWords(const CompileCommand& command, const std::string& output) {
  const bool writesNone = command.action == "-fsyntax-only" || command.action == "/Zs";
  if (writesNone || output.empty()) return {};
  if (!IsClStyle(command)) return {"-o", output};
  Words words = {"/Fo" + output};
  if (WritesDatabase(command)) words.push_back("/Fd" + output + ".pdb");
  return words;
}

}  // namespace

Words CompileWords(const CompileCommand& command, const std::string& source,
                   const std::string& output) {
  Words words = Start(command);
  words.push_back(command.action);
  Append(words, OutputWords(command, output));
  Append(words, SourceWords(command, source));
  return words;
}

Words PreprocessWords(const CompileCommand& command, const std::string& source,
                      const std::string& output, bool lineMarkers) {
  Words words = Start(command);
  if (IsClStyle(command)) {
    Append(words, {"/P", "/w", "/Fi" + output});
    if (!lineMarkers) words.emplace_back("/EP");
  } else {
    Append(words, {"-E", "-w", "-o", output});
    if (!lineMarkers) words.emplace_back("-P");
  }
  Append(words, SourceWords(command, source));
  return words;
}

std::vector<std::string> IncludeWords(const CompileCommand& command, const std::string& folder) {
  return {IsClStyle(command) ? "/I" : "-iquote", folder};
}

bool IsPreprocessed(const CompileCommand& command) {
  return command.language.empty() ? TypeBySuffix(command.source, IsClStyle(command)).isPreprocessed
                                  : TypeByLanguage(command.language).isPreprocessed;
}

CompileCommand ForPreprocessed(const CompileCommand& command) {
  std::vector<CommandOption> kept;
  for (CommandOption& option : Options(command)) {
    if (!option.onlyPreprocesses) kept.push_back(std::move(option));
  }
  CompileCommand made = WithOptions(command, kept);
  if (IsClStyle(command)) {
    made.language = command.isCpp ? "c++" : "c";
  } else {
    made.language = command.isCpp ? "c++-cpp-output" : "cpp-output";
  }
  return made;
}

std::vector<CommandOption> Options(const CompileCommand& command) {
  std::vector<CommandOption> options;
  for (OptionGroup& group : GroupOptions(command.arguments, command.style, command.frontEnd)) {
    options.push_back({std::move(group.words), group.role == OptionRole::Preprocess});
  }
  return options;
}

CompileCommand WithOptions(const CompileCommand& command,
                           const std::vector<CommandOption>& options) {
  CompileCommand made = command;
  made.arguments.clear();
  for (const CommandOption& option : options) Append(made.arguments, option.words);
  return made;
}

}  // namespace snipwell
