#include "failure/deciding_line.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <initializer_list>

#include "failure/line_rewriter.h"

namespace snipwell {

namespace {

constexpr std::size_t kNowhere = std::string::npos;

struct Reading {
  LineMeaning meaning = LineMeaning::None;
  std::string text;
};

using Texts = std::initializer_list<const char*>;

/// Behind the first of the marks that the line holds, or nowhere.
std::size_t Behind(const std::string& line, Texts marks) {
  for (const std::string mark : marks) {
    const std::size_t at = line.find(mark);
    if (at != kNowhere) return at + mark.size();
  }
  return kNowhere;
}

bool HoldsOneOf(const std::string& text, Texts parts) { return Behind(text, parts) != kNowhere; }

/// "Segmentation fault" and the like, with nothing that tells one such crash from another.
bool IsGeneric(const std::string& text) {
  return HoldsOneOf(text, {"Segmentation fault", "Aborted", "Illegal instruction", "Bus error",
                           "Floating point exception", "Trace/breakpoint trap", "Bad system call"});
}

// Of compilers, assemblers and linkers; behind a number sign or capital letters there is the
// error's own number.
constexpr const char* kErrors[] = {": error: ",
                                   ": fatal error: ",
                                   ": Error: ",
                                   ": error #",
                                   ": error C",
                                   ": fatal error C",
                                   ": error LNK",
                                   ": fatal error LNK",
                                   ": fatal  error C",
                                   ": Command line error D",
                                   ": catastrophic error: "};

constexpr const char* kRemarks[] = {": warning: ", ": note: ", ": warning C", ": warning LNK",
                                    ": Command line warning D"};

/// Where the first of the marks is, without the colon and the blank that it starts with; nowhere
/// when the line holds none.
template <typename Marks>
std::size_t FirstOf(const Marks& marks, const std::string& line) {
  std::size_t first = kNowhere;
  for (const char* const mark : marks) first = std::min(first, line.find(mark));
  return first == kNowhere ? kNowhere : first + 2;
}

/// The number that cl and its linker give an error: "C2065". For other errors nothing.
std::string NumberOf(const std::string& error) {
  std::string head = error.substr(0, error.find(':'));
  while (!head.empty() && head.back() == ' ') head.pop_back();
  const std::string number = head.substr(head.rfind(' ') + 1);
  const bool isNumber = !number.empty() && number[0] >= 'A' && number[0] <= 'Z' &&
                        std::isdigit(static_cast<unsigned char>(number.back())) != 0;
  return isNumber ? number : std::string();
}

/// A failure; without a text it is a crash like any other.
Reading Failure(const std::string& said) {
  const std::string text = WithoutPlaces(said);
  return {text.empty() ? LineMeaning::Crash : LineMeaning::Failure, text};
}

/// What an error says. The driver's word on how the compiler proper ended, and what the back end
/// gives up with, look like errors of the program.
Reading ReadError(const std::string& error) {
  const std::string text = error.substr(std::min(error.find(": ") + 2, error.size()));
  const std::string backEnd = "error in backend: ";
  if (text.compare(0, backEnd.size(), backEnd) == 0) return Failure(text.substr(backEnd.size()));
  const std::string number = NumberOf(error);
  if (number == "C1001") return Failure("");
  const bool ofCompiler =
      number == "LNK1000" ||
      HoldsOneOf(text, {"unable to execute command: ", "frontend command failed",
                        "command failed due to signal", "signal terminated program"});
  return ofCompiler ? Failure(text) : Reading{LineMeaning::Error, WithoutPlaces(error)};
}

/// "function: Assertion `...' failed." of "program: file:12: function: Assertion `...' failed.", or
/// "Assertion failed: ..., file f, line 12", as it is called on Windows.
std::string AssertionText(const std::string& line) {
  if (line.rfind("Assertion failed: ", 0) == 0) return line;
  const std::size_t mark = line.find("Assertion `");
  if (mark == kNowhere) return std::string();
  std::size_t start = mark;
  for (std::size_t at = line.find(": "); at < mark; at = line.find(": ", at + 1)) {
    if (at > 0 && std::isdigit(static_cast<unsigned char>(line[at - 1])) != 0) start = at + 2;
  }
  return line.substr(start);
}

Reading Read(const std::string& line) {
  if (line.empty() || std::isspace(static_cast<unsigned char>(line[0])) != 0) return {};
  const std::size_t error = FirstOf(kErrors, line);
  const std::size_t remark = FirstOf(kRemarks, line);
  if (remark < error) return {};
  if (error != kNowhere) return ReadError(line.substr(error));
  const std::size_t internal = Behind(line, {"internal compiler error: ", "internal error: "});
  if (internal != kNowhere) {
    const std::string text = line.substr(internal);
    return Failure(IsGeneric(text) ? "" : text);
  }
  const std::string assertion = AssertionText(line);
  if (!assertion.empty()) return Failure(assertion);
  const std::size_t fatal =
      Behind(line, {"error in backend: ", "LLVM ERROR: ", "UNREACHABLE executed at "});
  if (fatal != kNowhere) return Failure(line.substr(fatal));
  if (HoldsOneOf(line, {"Stack dump:", "PLEASE submit a bug report"}) ||
      line.rfind("INTERNAL COMPILER ERROR in ", 0) == 0) {
    return Failure("");
  }
  // gcc's words behind the stack.
  const bool dumpEnd = line.rfind("Please submit a full bug report", 0) == 0;
  return {dumpEnd ? LineMeaning::DumpEnd : LineMeaning::None, ""};
}

/// What a line says, if it has this meaning.
std::string TextIf(LineMeaning meaning, const std::string& line) {
  const Reading reading = Read(line);
  return reading.meaning == meaning ? reading.text : std::string();
}

}  // namespace

LineMeaning MeaningOf(const std::string& line) { return Read(line).meaning; }

std::string FailureText(const std::string& line) { return TextIf(LineMeaning::Failure, line); }

std::string ErrorText(const std::string& line) { return TextIf(LineMeaning::Error, line); }

std::string ErrorNumber(const std::string& line) {
  const std::size_t error = FirstOf(kErrors, line);
  const std::size_t remark = FirstOf(kRemarks, line);
  return error <= remark && error != kNowhere ? NumberOf(line.substr(error)) : std::string();
}

bool MakesWarningAnError(const std::string& line) { return ErrorNumber(line) == "C2220"; }

std::string WarningText(const std::string& line) {
  constexpr const char* kMarks[] = {": warning C"};
  const std::size_t warning = FirstOf(kMarks, line);
  return warning == kNowhere ? std::string() : WithoutPlaces(line.substr(warning));
}

bool DecidingLine::Take(const std::string& line) {
  if (awaitsWarning) meaning = LineMeaning::Error;
  if (meaning != LineMeaning::None) return true;
  const LineMeaning found = MeaningOf(line);
  if (crashed) {
    if (found == LineMeaning::DumpEnd) meaning = LineMeaning::Failure;
  } else if (found == LineMeaning::Failure || (found == LineMeaning::Error && errorsDecide)) {
    awaitsWarning = MakesWarningAnError(line);
    if (!awaitsWarning) meaning = found;
  }
  crashed = crashed || found == LineMeaning::Crash;
  return meaning != LineMeaning::None;
}

}  // namespace snipwell
