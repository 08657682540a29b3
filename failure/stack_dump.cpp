#include "failure/stack_dump.h"

#include <algorithm>
#include <initializer_list>

#include "failure/deciding_line.h"
#include "failure/stack_frame.h"
#include "text/small_letters.h"

namespace snipwell {

namespace {

bool Holds(const std::string& line, const std::string& text) {
  return line.find(text) != std::string::npos;
}

bool StartsWithOneOf(const std::string& text, std::initializer_list<const char*> starts) {
  return std::any_of(starts.begin(), starts.end(),
                     [&](const char* start) { return text.rfind(start, 0) == 0; });
}

bool IsOneOf(const std::string& text, std::initializer_list<const char*> names) {
  return std::any_of(names.begin(), names.end(), [&](const char* name) { return text == name; });
}

/// Frames of the system's library: what calls the handler, and what ends the process.
bool BelongsToSystem(const StackFrame& frame) {
  return StartsWithOneOf(frame.module, {"libc.so", "libc-2.", "libpthread"}) ||
         StartsWithOneOf(InSmallLetters(frame.module),
                         {"kernel32.", "kernelbase.", "ntdll.", "ucrtbase", "vcruntime"}) ||
         IsOneOf(frame.name,
                 {"__restore_rt", "raise", "gsignal", "pthread_kill", "abort",
                  "__pthread_kill_implementation", "__assert_fail", "__assert_fail_base"});
}

/// Frames with a name of the code that reports a crash.
bool IsNamedHandler(const StackFrame& frame) {
  return IsOneOf(frame.name,
                 {"crash_signal", "std::terminate", "__gnu_cxx::__verbose_terminate_handler",
                  "llvm::report_fatal_error", "llvm::llvm_unreachable_internal", "fancy_abort",
                  "internal_error", "???"}) ||
         StartsWithOneOf(frame.name, {"llvm::sys::", "llvm::CrashRecoveryContext"}) ||
         Holds(frame.name, "SignalHandler");
}

bool IsHandler(const StackFrame& frame) {
  return IsNamedHandler(frame) || BelongsToSystem(frame) ||
         (frame.name.empty() && Holds(frame.module, "libLLVM"));
}

bool IsStart(const StackFrame& frame) {
  return frame.name == "main" || StartsWithOneOf(frame.name, {"__libc_start"});
}

/// The frames above the program's start, which `whole` tells of. A compiler may write a second
/// dump, which tells no more.
std::vector<StackFrame> Frames(const std::vector<std::string>& lines, bool& whole) {
  std::vector<StackFrame> frames;
  bool placeFollows = false;
  for (const std::string& line : lines) {
    if (MeaningOf(line) == LineMeaning::DumpEnd) break;
    StackFrame frame;
    const bool isPlace = placeFollows && ParsePlaceInCl(line, frame);
    placeFollows = !isPlace && (placeFollows || ErrorNumber(line) == "C1001");
    if (!isPlace && !ParseFrame(line, frame)) continue;
    whole = IsStart(frame);
    if (whole) break;
    frames.push_back(frame);
  }
  return frames;
}

/// The frame behind those of the system that call the handler, or the first one when no such frames
/// follow the handler's. So it is known where the handler's frames end although they have no names,
/// and the compiler's in the same module may have none either.
std::vector<StackFrame>::const_iterator BehindSignal(const std::vector<StackFrame>& frames) {
  const auto inHandler = [](const StackFrame& frame) {
    return !BelongsToSystem(frame) && (frame.name.empty() || IsNamedHandler(frame));
  };
  const auto system = std::find_if_not(frames.begin(), frames.end(), inHandler);
  const auto behind = std::find_if_not(system, frames.end(), BelongsToSystem);
  return behind == system || behind == frames.end() ? frames.begin() : behind;
}

}  // namespace

StackDump ReadStackDump(const std::vector<std::string>& lines) {
  StackDump dump;
  const std::vector<StackFrame> frames = Frames(lines, dump.whole);
  auto frame = BehindSignal(frames);
  const bool known = frame != frames.begin();
  frame = std::find_if_not(frame, frames.end(), known ? IsNamedHandler : IsHandler);
  for (; frame != frames.end(); ++frame) {
    dump.functions.push_back(frame->name.empty() ? frame->module : frame->name);
  }
  return dump;
}

}  // namespace snipwell
