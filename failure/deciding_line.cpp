#include "failure/deciding_line.h"

#include <cctype>
#include <cstddef>
#include <initializer_list>

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

/// A failure; without a text it is a crash like any other.
Reading Failure(const std::string& text) {
  return {text.empty() ? LineMeaning::Crash : LineMeaning::Failure, text};
}

/// What follows ": error: ". The driver's word on how the compiler proper ended, and what the back
/// end gives up with, look like errors of the program.
Reading ReadError(const std::string& text) {
  const std::string backEnd = "error in backend: ";
  if (text.compare(0, backEnd.size(), backEnd) == 0) return Failure(text.substr(backEnd.size()));
  const bool byDriver =
      HoldsOneOf(text, {"unable to execute command: ", "frontend command failed",
                        "command failed due to signal", "signal terminated program"});
  return byDriver ? Failure(text) : Reading{LineMeaning::Error, ""};
}

/// "function: Assertion `...' failed." of "program: file:12: function: Assertion `...' failed."
std::string AssertionText(const std::string& line) {
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
  const std::size_t error = Behind(line, {": error: ", ": fatal error: "});
  if (Behind(line, {": warning: ", ": note: "}) < error) return {};
  if (error != kNowhere) return ReadError(line.substr(error));
  const std::size_t internal = Behind(line, {"internal compiler error: "});
  if (internal != kNowhere) {
    const std::string text = line.substr(internal);
    return Failure(IsGeneric(text) ? "" : text);
  }
  const std::string assertion = AssertionText(line);
  if (!assertion.empty()) return Failure(assertion);
  const std::size_t fatal =
      Behind(line, {"error in backend: ", "LLVM ERROR: ", "UNREACHABLE executed at "});
  if (fatal != kNowhere) return Failure(line.substr(fatal));
  const bool dump = HoldsOneOf(line, {"Stack dump:", "PLEASE submit a bug report"});
  return {dump ? LineMeaning::Crash : LineMeaning::None, ""};
}

}  // namespace

LineMeaning MeaningOf(const std::string& line) { return Read(line).meaning; }

std::string FailureText(const std::string& line) {
  const Reading reading = Read(line);
  return reading.meaning == LineMeaning::Failure ? reading.text : std::string();
}

bool DecidingLine::Take(const std::string& line) {
  if (crashed || meaning != LineMeaning::None) return meaning != LineMeaning::None;
  const LineMeaning found = MeaningOf(line);
  crashed = found == LineMeaning::Crash;
  if (found == LineMeaning::Failure || (found == LineMeaning::Error && errorsDecide)) {
    meaning = found;
  }
  return meaning != LineMeaning::None;
}

}  // namespace snipwell
