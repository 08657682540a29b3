#pragma once

#include <string>
#include <vector>

#include "compile/compiler_name.h"

namespace snipwell {

/// A compiler's command that compiles one source, taken apart so that it can be put together again
/// for other sources and outputs. Commands are meant to run in `folder`, where its relative paths
/// hold.
struct CompileCommand {
  CompilerStyle style = CompilerStyle::Gcc;
  std::string compiler;  ///< as given; what starts it ("ccache", "nice") is left out
  /// What decides how it compiles, in the order given, response files read. No source and none of
  /// its language, no output or other file that is written, nothing for the linker.
  std::vector<std::string> arguments;
  std::string source;     ///< as given
  std::string folder;     ///< empty means the process's own
  bool isCpp = true;      ///< the source is C++, else C
  bool frontEnd = false;  ///< the arguments are those of "clang -cc1"
  std::string action;     ///< how far to compile: "-c", "-S", "-fsyntax-only", ...
  std::string language;   ///< by "-x" or the like ("c++", "cpp-output"); empty: by the suffix
  std::vector<std::string> environment;  ///< "NAME=value" to set before it runs
};

/// A command, or why it cannot be taken.
struct CommandOrComplaint {
  CompileCommand command;
  std::string complaint;  ///< a sentence that says what to do; empty when there is a command
};

/// Understands a command as people and build programs write it: words as a shell parts them, meant
/// for `folder` (empty: the process's own). A command that goes on to link is taken as its
/// compilation. Complains of none or several sources, a source on standard input, another language,
/// precompiled headers and modules.
CommandOrComplaint TakeCommandApart(const std::vector<std::string>& words,
                                    const std::string& folder);

/// The words that compile `source` as the command does its own, with the output in `output`
/// (nothing, when the command only checks). What a compiler writes beside its output it writes
/// beside `output`. Without an output the compiler is free where to write. The last word is the
/// source, or ends with it, and may be replaced where `source` is empty. The paths are relative to
/// the command's folder.
std::vector<std::string> CompileWords(const CompileCommand& command, const std::string& source,
                                      const std::string& output);

/// The words that preprocess `source` into `output`, with or without line markers. Warnings are
/// silent, for none of them must be an error here.
std::vector<std::string> PreprocessWords(const CompileCommand& command, const std::string& source,
                                         const std::string& output, bool lineMarkers);

/// An option by which headers that are named in quotes are found in `folder` too.
std::vector<std::string> IncludeWords(const CompileCommand& command, const std::string& folder);

/// True when the command's source counts as preprocessed, by its language or suffix.
bool IsPreprocessed(const CompileCommand& command);

/// The command for the command's source when that is preprocessed: without the options that only
/// matter before, and with the language that says so. Without line markers compilers no longer know
/// what is from system headers, so -Werror may refuse a source that it let through before.
CompileCommand ForPreprocessed(const CompileCommand& command);

/// An argument with the words of its value, such as {"-include", "x.h"}.
struct CommandOption {
  std::vector<std::string> words;
  bool onlyPreprocesses = false;  ///< matters only as long as the source is not preprocessed
};

/// The command's arguments option by option; their words one after the other are the arguments.
std::vector<CommandOption> Options(const CompileCommand& command);

/// The same command with these options only.
CompileCommand WithOptions(const CompileCommand& command,
                           const std::vector<CommandOption>& options);

}  // namespace snipwell
