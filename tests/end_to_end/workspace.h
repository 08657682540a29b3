#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/unit/temp_folder.h"

namespace snipwell::testing {

/// What a run of the tool left on its streams.
struct Outcome {
  std::string out;
  std::string err;
  int status = -1;  ///< exit status
};

/// One run of the fake compiler.
struct CompilerRun {
  std::string arguments;  ///< entry 0 included, joined with blanks
  std::string text;       ///< of the file to compile
};

/// How the tool is started. The second and third are for systems with a POSIX shell.
struct Start {
  std::string program = "snip";
  /// Redirections after those of the standard streams to files; empty changes nothing.
  std::string redirections = {};
  /// Commands or words before the program, such as "trap '' INT;".
  std::string prefix = {};
  std::vector<std::string> environment = {};  ///< further variables, "NAME=value"
  std::string processFile = {};  ///< gets the number of the tool's process; empty for none
};

/// What the first group of `pattern` matches in `text`, again and again.
std::vector<std::string> Matches(const std::string& text, const std::string& pattern);

/// A fresh folder to run the tool in, removed at the end. The tool and the fake compiler are found
/// in PATH, the environment holds nothing else but the time zone and the C locale.
class Workspace {
 public:
  const std::filesystem::path& Folder() const { return folder.Path(); }
  void Write(const std::string& name, const std::string& text) const { folder.Write(name, text); }
  /// The text of a file, with a line feed at the end of a line on every system; a text of its own
  /// when there is none, so that no expectation meets it.
  std::string Read(const std::string& name) const;
  /// The same as it stands in the file.
  std::string ReadBytes(const std::string& name) const;
  bool Exists(const std::string& name) const;
  /// The names of the files in the folder, sorted and joined with blanks; not the test's own.
  std::string Files() const;

  /// Writes the rules of the fake compiler.
  void SetRules(const std::string& rules) const { Write("fake_compiler.rules", rules); }
  /// Rules of a compiler that fails with one error as long as the text holds each of `needed`.
  void FailWhileItHas(const std::vector<std::string>& needed) const;

  /// Runs the tool in the folder with these arguments.
  Outcome Snip(const std::vector<std::string>& arguments, const Start& start = {}) const;
  /// Runs it with the fake compiler, the log file "log", these arguments and the source last.
  Outcome Isolate(const std::string& source, const std::vector<std::string>& arguments = {},
                  const Start& start = {}) const;

  /// The compiler runs so far, in order.
  std::vector<CompilerRun> Runs() const;
  /// Their texts, from run `first` (counted from 1) on.
  std::vector<std::string> Texts(std::size_t first = 1) const;

 private:
  TempFolder folder;
};

}  // namespace snipwell::testing
