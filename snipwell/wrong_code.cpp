// The test is a shell script, from what refuses most to what costs most: both builds, with warnings
// as errors, a comparison, a build with sanitizers, a look for reads of what was never written.
// What the source itself does not stand is left out.

#include "snipwell/wrong_code.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

#include "compile/compile_command.h"
#include "platform/machine.h"
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

// What both families know of undefined behaviour, and of programs that are none.
const Words kWarnings = {"uninitialized",
                         "return-type",
                         "implicit-int",
                         "implicit-function-declaration",
                         "int-conversion",
                         "incompatible-pointer-types",
                         "pointer-to-int-cast",
                         "int-to-pointer-cast",
                         "main",
                         "strict-prototypes",
                         "format",
                         "nonnull",
                         "varargs",
                         "array-bounds",
                         "div-by-zero",
                         "overflow",
                         "shift-count-negative",
                         "shift-count-overflow",
                         "shift-negative-value",
                         "free-nonheap-object",
                         "infinite-recursion",
                         "sizeof-pointer-memaccess",
                         "strict-aliasing"};
const Words kGccWarnings = {"maybe-uninitialized",
                            "missing-parameter-type",
                            "builtin-declaration-mismatch",
                            "format-overflow",
                            "stringop-overflow",
                            "stringop-overread",
                            "aggressive-loop-optimizations",
                            "null-dereference",
                            "sequence-point",
                            "shift-overflow",
                            "return-local-addr",
                            "restrict",
                            "clobbered",
                            "dangling-pointer",
                            "use-after-free"};
const Words kClangWarnings = {"sometimes-uninitialized",
                              "conditional-uninitialized",
                              "incompatible-library-redeclaration",
                              "unsequenced",
                              "return-stack-address",
                              "integer-overflow",
                              "fortify-source"};

const Words kSanitizers = {"-w", "-fsanitize=address,undefined", "-fno-sanitize-recover=all"};
const Words kMemorySanitizer = {"-w", "-fsanitize=memory", "-fno-sanitize-recover=all"};

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

bool IsClang(const Words& words) {
  return TakeCommandApart(words, "").command.style == CompilerStyle::Clang;
}

/// All warnings of the compiler, as errors.
Words AllWarnings(const Words& words) {
  Words options;
  const Words& own = IsClang(words) ? kClangWarnings : kGccWarnings;
  for (const Words* names : {&kWarnings, &own}) {
    for (const std::string& name : *names) options.push_back("-Werror=" + name);
  }
  return options;
}

/// Those options with which the build still takes the source itself.
Words Usable(const Words& options, const std::function<bool(const Words&)>& isTaken) {
  if (isTaken(options)) return options;
  if (options.size() < 2) return {};
  const auto middle = options.begin() + static_cast<std::ptrdiff_t>(options.size() / 2);
  Words usable = Usable({options.begin(), middle}, isTaken);
  const Words others = Usable({middle, options.end()}, isTaken);
  usable.insert(usable.end(), others.begin(), others.end());
  return usable;
}

void RefuseWithoutShell() {
  if (!platform::PosixShell().empty()) return;
  throw RunEnd(Surroundings,
               "--wrong-code= needs sh with its tools: put those of Git for Windows into PATH");
}

void RefuseUnless(bool holds, const std::string& otherwise) {
  if (!holds) throw RunEnd(DoesNotFail, otherwise);
}

Words UsableWarnings(const WrongCode& wrong, const Words& words, const std::string& file,
                     Workshop& workshop) {
  const std::filesystem::path script = workshop.Folder() / "warnings.sh";
  return Usable(AllWarnings(words), [&](const Words& more) {
    Write(script, Build(wrong, words, more, "a"));
    return Holds(script, wrong, file, workshop);
  });
}

// What compilers make of a printed null pointer is undefined.
const char kRefuseNull[] = "grep -qF '(null)' \"$built/b.out\" && exit 1\n";
const char kCompare[] = "cmp -s \"$built/a.out\" \"$built/b.out\" && exit 1\n";
const char kValgrind[] =
    "timeout 60 valgrind -q --error-exitcode=99 \"$built/b\"\n[ $? -ne 99 ] || exit 1\n";

/// Builds the program once more, which is to do what the second build does.
std::string Checked(const WrongCode& wrong, const Words& words, const Words& more) {
  return Build(wrong, words, more, "checked") +
         "cmp -s \"$built/b.out\" \"$built/checked.out\" || exit 1\n";
}

/// Refuses programs that read what they have never written.
std::string MemoryCheck(const WrongCode& wrong) {
  for (const Words* words : {&wrong.otherWords, &wrong.words}) {
    if (IsClang(*words)) return Checked(wrong, *words, kMemorySanitizer);
  }
  return platform::IsProgram("valgrind") ? kValgrind : "exit 1\n";
}

}  // namespace

std::vector<std::string> WrongCodeTest(const WrongCode& wrong, const std::string& file,
                                       Workshop& workshop, std::vector<std::string>& missing) {
  RefuseWithoutShell();
  const std::filesystem::path script = workshop.Folder() / "wrong-code.sh";
  std::string body;
  const auto holdsWith = [&](const std::string& more) {
    Write(script, body + more + "exit 0\n");
    const bool holds = Holds(script, wrong, file, workshop);
    if (holds) body += more;
    return holds;
  };
  const auto build = [&](const Words& words, const char* name) {
    return Build(wrong, words, UsableWarnings(wrong, words, file, workshop), name);
  };
  RefuseUnless(holdsWith(build(wrong.words, "a")),
               "the command builds no program that ends within five seconds");
  RefuseUnless(holdsWith(build(wrong.otherWords, "b")),
               "the command behind --wrong-code= builds no program that ends within five seconds");
  RefuseUnless(holdsWith(kCompare),
               "both commands build a program that prints and returns the same");
  holdsWith(kRefuseNull);
  if (!holdsWith(Checked(wrong, wrong.otherWords, kSanitizers))) {
    missing.emplace_back(
        "The sanitizers complain of the source itself, or are not installed: undefined behaviour "
        "is refused only where the compiler warns of it.");
  }
  if (!holdsWith(MemoryCheck(wrong))) {
    missing.emplace_back(
        "Neither clang's memory sanitizer nor valgrind could be used: a program that reads what it "
        "has never written is refused only where the compiler warns of it.");
  }
  Write(script, body + "exit 0\n");
  return {platform::PosixShell(), script.string(), wrong.name};
}

}  // namespace snipwell
