#include "adapter/crash_headline.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace snipwell::adapter {

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
  frame.name = rest.substr(0, std::min(module, rest.find('(')));
  while (!frame.name.empty() && frame.name.back() == ' ') frame.name.pop_back();
  return true;
}

/// Frames of the code that reports the crash: the handler, the system's call of it, and nameless
/// ones among them.
bool BelongsToHandler(const Frame& frame) {
  for (const char* part : {"PrintStackTrace", "RunSignalHandlers", "SignalHandler",
                           "CleanupOnSignal", "CrashRecoveryContext", "llvm::sys::", "crash_signal",
                           "__restore_rt", "raise", "abort", "__assert_fail"}) {
    if (Holds(frame.name, part)) return true;
  }
  return frame.name.empty() && (Holds(frame.module, "libLLVM") || Holds(frame.module, "libc.so"));
}

std::string TopFrames(const std::vector<std::string>& lines) {
  std::string told;
  std::size_t count = 0;
  for (const std::string& line : lines) {
    Frame frame;
    if (!ParseFrame(line, frame)) continue;
    if (count == 0 && BelongsToHandler(frame)) continue;
    told +=
        (told.empty() ? "in " : ", called by ") + (frame.name.empty() ? frame.module : frame.name);
    if (++count == kFramesToTell) break;
  }
  return told;
}

/// "Segmentation fault" and the like, with nothing that tells one such crash from another.
bool IsGeneric(const std::string& text) {
  for (const char* signal : {"Segmentation fault", "Aborted", "Illegal instruction", "Bus error"}) {
    if (Holds(text, signal)) return true;
  }
  return false;
}

std::string Identity(const std::vector<std::string>& lines) {
  const std::string assertion = TextAt(lines, "Assertion `", false);
  if (!assertion.empty()) return assertion;
  const std::string fatal = TextAt(lines, "error in backend: ", true);
  if (!fatal.empty()) return fatal;
  const std::string internal = TextAt(lines, "internal compiler error: ", true);
  if (!internal.empty() && !IsGeneric(internal)) return internal;
  const bool crashed = !internal.empty() || !TextAt(lines, "Stack dump:", false).empty() ||
                       !TextAt(lines, "PLEASE submit a bug report", false).empty();
  if (!crashed) return std::string();
  const std::string frames = TopFrames(lines);
  return frames.empty() ? "a crash without a stack dump" : frames;
}

}  // namespace

std::string CrashHeadline(const std::vector<std::string>& lines) {
  const std::string identity = Identity(lines);
  return identity.empty() ? identity : "snip-cc: internal error: " + identity;
}

}  // namespace snipwell::adapter
