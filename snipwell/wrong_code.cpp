// The test is a shell script of three builds, from the one that refuses most to the one that costs
// most: optimised with warnings as errors, plain, with sanitizers.

#include "snipwell/wrong_code.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "platform/shell.h"
#include "snipwell/exit_status.h"

namespace snipwell {

namespace {

using Words = std::vector<std::string>;

const char kStart[] =
    "#!/bin/sh\n"
    "# Ends with 0 when both builds of a program behave in different ways.\n"
    "source=$PWD/$1\n"
    "built=$(mktemp -d)\n"
    "trap 'rm -rf \"$built\"' EXIT\n"
    "# Leaves what a build prints and returns; one that does not end is of no use.\n"
    "observe() {\n"
    "  timeout 5 \"$built/$1\" >\"$built/$1.out\" 2>&1 </dev/null\n"
    "  status=$?\n"
    "  echo \"status $status\" >>\"$built/$1.out\"\n"
    "  [ $status -ne 124 ]\n"
    "}\n"
    "{\n";

const char kEnd[] = "} >/dev/null 2>&1\n";

// What compilers know of undefined behaviour, and of programs that are none.
const char* const kWarnings[] = {"uninitialized",
                                 "maybe-uninitialized",
                                 "sometimes-uninitialized",
                                 "return-type",
                                 "implicit-int",
                                 "implicit-function-declaration",
                                 "int-conversion",
                                 "incompatible-pointer-types",
                                 "format",
                                 "array-bounds",
                                 "builtin-declaration-mismatch",
                                 "strict-prototypes",
                                 "sequence-point",
                                 "aggressive-loop-optimizations",
                                 "shift-overflow"};

const Words kSanitizers = {"-w", "-fsanitize=address,undefined", "-fno-sanitize-recover=all"};

/// The words of a build, without what says where its output goes.
Words BuildWords(const Words& words) {
  Words build;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool takesNext = words[i] == "-o";
    if (words[i] != "-c" && words[i].compare(0, 2, "-o") != 0) build.push_back(words[i]);
    if (takesNext) ++i;
  }
  return build;
}

/// A line of the script that builds `name`.
std::string Build(const WrongCode& wrong, const Words& words, const Words& more,
                  const std::string& name) {
  std::string line;
  for (const std::string& word : BuildWords(words)) {
    line += (word == wrong.source ? "\"$source\"" : platform::PosixCommand({word})) + ' ';
  }
  if (!more.empty()) line += platform::PosixCommand(more) + ' ';
  return line + "-o \"$built/" + name + "\" || exit 1\nobserve " + name + " || exit 1\n";
}

void Write(const std::filesystem::path& file, const std::string& body) {
  std::ofstream(file, std::ios::binary) << kStart << body << kEnd;
}

/// Runs the script on the user's own source.
bool Holds(const std::filesystem::path& script, const WrongCode& wrong, const std::string& file,
           Workshop& workshop) {
  platform::ChildCommand command;
  command.arguments = {platform::PosixShell(), script.string(), wrong.name};
  command.folder = std::filesystem::absolute(file).parent_path().string();
  const Compiled run = workshop.RunToEnd(command);
  return run.end.started && run.end.signal == 0 && run.end.status == 0;
}

/// The warnings, as errors, that the build does not bring for the source itself.
Words UsableWarnings(const WrongCode& wrong, const std::string& file, Workshop& workshop) {
  const std::filesystem::path script = workshop.Folder() / "warnings.sh";
  const auto isQuiet = [&](const Words& more) {
    Write(script, Build(wrong, wrong.words, more, "a"));
    return Holds(script, wrong, file, workshop);
  };
  Words all = {"-Wno-unknown-warning-option"};
  for (const char* warning : kWarnings) all.push_back(std::string("-Werror=") + warning);
  if (isQuiet(all)) return all;
  Words usable;
  std::copy_if(all.begin(), all.end(), std::back_inserter(usable),
               [&](const std::string& word) { return isQuiet({word}); });
  return usable;
}

void RefuseWithoutShell() {
  if (!platform::PosixShell().empty()) return;
  throw RunEnd(Surroundings,
               "--wrong-code= needs sh with its tools: put those of Git for Windows into PATH");
}

const char kCompare[] = "cmp -s \"$built/a.out\" \"$built/b.out\" && exit 1\n";
const char kCompareChecked[] = "cmp -s \"$built/b.out\" \"$built/checked.out\"\n";

}  // namespace

std::vector<std::string> WrongCodeTest(const WrongCode& wrong, const std::string& file,
                                       Workshop& workshop, std::vector<std::string>& missing) {
  RefuseWithoutShell();
  const std::filesystem::path script = workshop.Folder() / "wrong-code.sh";
  const Words warnings = UsableWarnings(wrong, file, workshop);
  const std::string differing = Build(wrong, wrong.words, warnings, "a") +
                                Build(wrong, wrong.otherWords, {"-w"}, "b") + kCompare;
  const Words command = {platform::PosixShell(), script.string(), wrong.name};
  Write(script,
        differing + Build(wrong, wrong.otherWords, kSanitizers, "checked") + kCompareChecked);
  if (Holds(script, wrong, file, workshop)) return command;
  Write(script, differing + "exit 0\n");
  if (!Holds(script, wrong, file, workshop)) {
    throw RunEnd(DoesNotFail,
                 "both commands build a program that prints and returns the same, "
                 "or one of them cannot build it");
  }
  missing.emplace_back(
      "The sanitizers complain of the source itself, or are not installed: undefined behaviour is "
      "refused only where the compiler warns of it.");
  return command;
}

}  // namespace snipwell
