#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {

/// True where the shell is the command interpreter of Windows.
#ifdef _WIN32
constexpr bool kIsWindows = true;
#else
constexpr bool kIsWindows = false;
#endif

/// The words that the project's compiler wants, and what is left when nothing else is.
extern const char kWanted[];
extern const char kSmallest[];

/// A rule for a crash of the compiler proper, in this function, on texts that have these words in
/// their order, under further conditions and with further actions.
std::string CrashOn(const std::string& words, const std::string& function,
                    const std::string& more = "");

/// A small project whose compiler fails, in a fresh folder: "pool.cpp", which includes "pool.h".
/// The only programs in PATH are the project's own, the fake compiler "fake_g++", and those that a
/// test adds to "test_bin". Whatever a run does, the files that were there must stay byte for byte,
/// and nothing may be left in the temporary folder or running.
class Project {
 public:
  Project();

  const std::filesystem::path& Folder() const { return work.Folder(); }
  std::string Read(const std::string& name) const { return work.ReadBytes(name); }
  bool Exists(const std::string& name) const { return work.Exists(name); }
  /// Makes folders too.
  void Write(const std::string& name, const std::string& text);
  /// A script for sh, or for the command interpreter, which wants a name with a suffix.
  void WriteScript(const std::string& name, const std::string& forShell,
                   const std::string& forInterpreter);
  /// Puts a copy of a test program into "test_bin" under this name.
  void AddCompiler(const std::string& name, const std::string& program = "fake_g++");
  void SetRules(const std::string& rules) { Write("test_rules", rules); }

  /// Runs a tool in a folder of the project with these arguments. Checks what must never happen.
  Outcome Run(const std::string& tool, const std::vector<std::string>& arguments,
              const std::vector<std::string>& environment = {}, const std::string& folder = ".");
  Outcome Snipwell(const std::vector<std::string>& arguments,
                   const std::vector<std::string>& environment = {},
                   const std::string& folder = ".") {
    return Run("snipwell", arguments, environment, folder);
  }
  /// The same with "-j1" before the arguments and the usual command behind them.
  Outcome Reduce(std::vector<std::string> arguments = {},
                 const std::vector<std::string>& environment = {});

  /// Names of the files that runs have added, sorted and joined with blanks.
  std::string Added() const;
  /// The runs of the fake compilers, one a line.
  std::string Runs() const { return Read("test_runs"); }

 private:
  using Texts = std::map<std::string, std::string>;

  Texts AllTexts() const;
  void ExpectNothingLeft() const;

  Workspace work;
  Texts given;
};

/// The number of times that `part` stands in a text.
std::size_t Count(const std::string& text, const std::string& part);

}  // namespace snipwell::testing
