#include "failure/failure_reader.h"

#include <algorithm>
#include <array>
#include <utility>

#include "failure/crash_headline.h"
#include "failure/line_rewriter.h"

namespace snipwell {

namespace {

// What a compiler that is out of memory says of it; what it then calls an internal error is none.
constexpr std::array<std::string_view, 5> kOutOfMemory = {
    "out of memory allocating", "LLVM ERROR: out of memory", "virtual memory exhausted",
    "what():  std::bad_alloc", "Killed signal terminated program"};

constexpr std::array<std::string_view, 6> kCrashes = {
    "internal compiler error: ", "Assertion `",      "error in backend: ", "LLVM ERROR: ",
    "UNREACHABLE executed at ",  "fatal error C1001"};

constexpr std::array<std::string_view, 2> kDumpStarts = {"PLEASE submit a bug report",
                                                         "Stack dump:"};

constexpr std::array<std::string_view, 4> kErrors = {": error: ", ": fatal error: ", ": error C",
                                                     ": fatal error C"};

template <std::size_t Count>
std::size_t FirstOf(const std::string& line, const std::array<std::string_view, Count>& marks) {
  std::size_t place = std::string::npos;
  for (const std::string_view mark : marks) place = std::min(place, line.find(mark));
  return place;
}

/// The signals that gcc names in the place of what went wrong; the stack dump behind tells more.
bool NamesSignal(const std::string& line) {
  return line.find("internal compiler error: ") != std::string::npos &&
         (line.find("Segmentation fault") != std::string::npos ||
          line.find("Aborted") != std::string::npos ||
          line.find("Illegal instruction") != std::string::npos ||
          line.find("Bus error") != std::string::npos ||
          line.find("Floating point exception") != std::string::npos);
}

}  // namespace

void FailureReader::Read(const std::string& output) {
  while (!decided) {
    const std::size_t end = output.find('\n', read);
    if (end == std::string::npos) return;
    ReadLine(WithoutColours(output.substr(read, end - read)));
    read = end + 1;
  }
}

void FailureReader::ReadLine(const std::string& line) {
  lines.push_back(line);
  if (FirstOf(line, kOutOfMemory) != std::string::npos) {
    Decide(FailureKind::OutOfMemory, "out of memory");
  } else if (!TakeCrash(line)) {
    TakeError(line);
  }
}

/// True when the line tells of a crash.
bool FailureReader::TakeCrash(const std::string& line) {
  if (FirstOf(line, kDumpStarts) != std::string::npos || NamesSignal(line)) crashed = true;
  // gcc's words behind the stack.
  if (crashed && line.rfind("Please submit a full bug report", 0) == 0) ConcludeCrash(0);
  if (FirstOf(line, kCrashes) == std::string::npos) return crashed;
  if (!NamesSignal(line)) ConcludeCrash(0);
  return true;
}

bool FailureReader::TakeError(const std::string& line) {
  const std::size_t mark = FirstOf(line, kErrors);
  if (mark == std::string::npos) return false;
  failure.errorsBefore = true;
  if (failure.kind != FailureKind::None) return true;
  failure.kind = FailureKind::Error;
  failure.headline = RewriteLine(line.substr(mark + 2), "");
  decided = !pastErrors;
  return true;
}

void FailureReader::Decide(FailureKind kind, std::string headline) {
  failure.kind = kind;
  failure.headline = std::move(headline);
  decided = true;
}

void FailureReader::ConcludeCrash(int signal) {
  Decide(FailureKind::Crash, CrashHeadline(lines, signal != 0));
}

Failure FailureReader::Conclude(const std::string& output, int signal, bool succeeded) {
  Read(output);
  if (!decided && read < output.size()) ReadLine(WithoutColours(output.substr(read)));
  if (decided) return failure;
  if (crashed || signal != 0) ConcludeCrash(signal);
  if (!decided && succeeded) return Failure();
  return failure;
}

}  // namespace snipwell
