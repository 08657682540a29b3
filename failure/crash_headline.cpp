#include "failure/crash_headline.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace snipwell {

namespace {

constexpr std::size_t kFramesToTell = 3;

bool Holds(const std::string& line, const std::string& text) {
  return line.find(text) != std::string::npos;
}

/// The rest of the first line that holds `mark`, from the mark or from behind it on; "" when none
/// does.
std::string TextAt(const std::vector<std::string>& lines, const std::string& mark, bool behind) {
  for (const std::string& line : lines) {
    const std::size_t place = line.find(mark);
    if (place != std::string::npos) return line.substr(behind ? place + mark.size() : place);
  }
  return std::string();
}

/// A frame of a stack dump: "#5 0x00007f function(arguments) (/lib/module.so+0x12)" or, from gcc,
/// "0x7f12 function(arguments)". The function's name without arguments, else module and offset.
struct Frame {
  std::string name;
  std::string module;
};

std::string LastPart(const std::string& path) { return path.substr(path.rfind('/') + 1); }

void Erase(std::string& text, const std::string& part) {
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part)) {
    text.erase(at, part.size());
  }
}

/// A function without its arguments.
std::string FunctionName(std::string function) {
  Erase(function, "(anonymous namespace)::");
  const std::string call = "operator()";
  const std::size_t operatorCall = function.find(call);
  const std::size_t from = operatorCall == std::string::npos ? 0 : operatorCall + call.size();
  function.resize(std::min(function.size(), function.find('(', from)));
  while (!function.empty() && function.back() == ' ') function.pop_back();
  return function;
}

/// True, and the frame is filled, when the line is one.
bool ParseFrame(const std::string& line, Frame& frame) {
  std::size_t at = line.find_first_not_of(' ');
  if (at == std::string::npos) return false;
  if (line[at] == '#') {
    at = line.find(' ', at);
    if (at == std::string::npos) return false;
    at = line.find_first_not_of(' ', at);
  }
  if (at == std::string::npos || line.compare(at, 2, "0x") != 0) return false;
  at = line.find(' ', at);
  if (at == std::string::npos) return false;
  const std::string rest = line.substr(at + 1);
  const std::size_t module = rest.rfind("(/");
  if (module != std::string::npos) {
    frame.module = LastPart(rest.substr(module + 1, rest.find(')', module) - module - 1));
  }
  frame.name = FunctionName(rest.substr(0, module));
  return true;
}

/// Frames of the code that reports a crash, and of the system's that calls it.
bool BelongsToHandler(const Frame& frame) {
  for (const char* name :
       {"crash_signal", "__restore_rt", "raise", "gsignal", "pthread_kill", "abort",
        "__pthread_kill_implementation", "__assert_fail", "__assert_fail_base", "std::terminate",
        "__gnu_cxx::__verbose_terminate_handler", "llvm::report_fatal_error",
        "llvm::llvm_unreachable_internal", "fancy_abort", "internal_error", "???", "main"}) {
    if (frame.name == name) return true;
  }
  for (const char* start : {"llvm::sys::", "llvm::CrashRecoveryContext", "__libc_start"}) {
    if (frame.name.rfind(start, 0) == 0) return true;
  }
  if (Holds(frame.name, "SignalHandler")) return true;
  return frame.name.empty() && (Holds(frame.module, "libLLVM") || Holds(frame.module, "libc.so"));
}

std::vector<std::string> FramesBelowHandler(const std::vector<std::string>& lines) {
  std::vector<std::string> names;
  for (const std::string& line : lines) {
    Frame frame;
    if (!ParseFrame(line, frame)) continue;
    if (names.empty() && BelongsToHandler(frame)) continue;
    if (frame.name == "main" || frame.name.rfind("__libc_start", 0) == 0) break;
    names.push_back(frame.name.empty() ? frame.module : frame.name);
  }
  return names;
}

/// The first in the alphabet of the functions that stand in the dump again and again, or "": when
/// the stack has overflowed, chance decides which of them is on top.
std::string RecursiveFunction(std::vector<std::string> names) {
  constexpr int kOften = 8;
  std::sort(names.begin(), names.end());
  for (auto first = names.begin(); first != names.end();) {
    const auto last = std::upper_bound(first, names.end(), *first);
    if (last - first >= kOften) return *first;
    first = last;
  }
  return std::string();
}

std::string TopFrames(const std::vector<std::string>& lines) {
  const std::vector<std::string> names = FramesBelowHandler(lines);
  const std::string recursive = RecursiveFunction(names);
  if (!recursive.empty()) return "in a recursion through " + recursive;
  std::string told;
  for (std::size_t i = 0; i < names.size() && i < kFramesToTell; ++i) {
    told += (i == 0 ? "in " : ", called by ") + names[i];
  }
  return told;
}

/// "Segmentation fault" and the like, with nothing that tells one such crash from another.
bool IsGeneric(const std::string& text) {
  for (const char* signal :
       {"Segmentation fault", "Aborted", "Illegal instruction", "Bus error",
        "Floating point exception", "Trace/breakpoint trap", "Bad system call"}) {
    if (Holds(text, signal)) return true;
  }
  return false;
}

/// "function: Assertion `...' failed." of "program: file:12: function: Assertion `...' failed."
std::string FailedAssertion(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    const std::size_t mark = line.find("Assertion `");
    if (mark == std::string::npos) continue;
    std::size_t start = mark;
    for (std::size_t at = line.find(": "); at < mark; at = line.find(": ", at + 1)) {
      if (at > 0 && std::isdigit(static_cast<unsigned char>(line[at - 1])) != 0) start = at + 2;
    }
    return line.substr(start);
  }
  return std::string();
}

std::string Identity(const std::vector<std::string>& lines, bool endedBySignal) {
  const std::string internal = TextAt(lines, "internal compiler error: ", true);
  const bool crashed = endedBySignal || !internal.empty() ||
                       !TextAt(lines, "Stack dump:", false).empty() ||
                       !TextAt(lines, "PLEASE submit a bug report", false).empty();
  if (!crashed) return std::string();
  const std::string assertion = FailedAssertion(lines);
  if (!assertion.empty()) return assertion;
  for (const char* mark : {"error in backend: ", "LLVM ERROR: ", "UNREACHABLE executed at "}) {
    const std::string fatal = TextAt(lines, mark, true);
    if (!fatal.empty()) return fatal;
  }
  if (!internal.empty() && !IsGeneric(internal)) return internal;
  const std::string frames = TopFrames(lines);
  if (!frames.empty()) return frames;
  if (!internal.empty()) return internal;
  return endedBySignal ? std::string() : "a crash without a stack dump";
}

}  // namespace

std::string CrashHeadline(const std::vector<std::string>& lines, bool endedBySignal) {
  std::string identity = Identity(lines, endedBySignal);
  // The tool overlooks what is in parentheses.
  std::replace(identity.begin(), identity.end(), '(', '[');
  std::replace(identity.begin(), identity.end(), ')', ']');
  return identity.empty() ? identity : "snip-cc: internal error: " + identity;
}

}  // namespace snipwell
