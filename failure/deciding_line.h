#pragma once

#include <string>

namespace snipwell {

/// What a line of a compiler's output says about the compilation, all by itself.
enum class LineMeaning {
  None,   ///< nothing that decides
  Error,  ///< an ordinary error: the program is wrong
  /// The compiler itself failed, and the line tells this failure from others: a failed assertion, a
  /// fatal error of the back end, an internal compiler error with a text of its own.
  Failure,
  /// The compiler itself failed, but only what follows can tell how, such as a stack dump.
  Crash,
  DumpEnd,  ///< behind a stack dump, whose functions have all been named
};

/// The meaning of a line without colours. One that begins with a blank shows the source or belongs
/// to a dump, and means nothing.
LineMeaning MeaningOf(const std::string& line);

/// Of a line that means a failure, the text that tells it from others, without places in the
/// program; of any other line, "".
std::string FailureText(const std::string& line);

/// Of a line that means an error, what it says, from the word "error" on and without places in the
/// program; of any other line, "".
std::string ErrorText(const std::string& line);

/// The number that the error of a line has: "C2065" of cl's, "LNK2019" of its linker's; of any
/// other line, "".
std::string ErrorNumber(const std::string& line);

/// True for cl's line that says of the next one that its warning is an error.
bool MakesWarningAnError(const std::string& line);

/// Of a line with a warning of cl's, what it says, from the word "warning" on and without places in
/// the program; of any other line, "".
std::string WarningText(const std::string& line);

/// Finds the line that decides what a compilation comes to, while the compiler still writes: the
/// first one that means a failure, or, if the program has to be right, an error; where a warning is
/// an error, the line with the warning. After a crash
/// whose kind only the rest of the output can tell, only the end of its dump decides.
class DecidingLine {
 public:
  explicit DecidingLine(bool mustBeRight) : errorsDecide(mustBeRight) {}

  /// Takes the next line, without colours. True when it, or one before it, has decided.
  bool Take(const std::string& line);

  /// What the line that decided means: None when there was none yet, else Error or Failure.
  LineMeaning Meaning() const { return meaning; }
  /// True when a crash was there whose kind only what follows can tell.
  bool HasCrashed() const { return crashed; }

 private:
  bool errorsDecide;
  bool crashed = false;
  bool awaitsWarning = false;  // the error is told in the next line
  LineMeaning meaning = LineMeaning::None;
};

}  // namespace snipwell
