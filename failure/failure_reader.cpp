#include "failure/failure_reader.h"

#include <algorithm>
#include <string_view>

#include "failure/crash_headline.h"

namespace snipwell {

namespace {

// What a compiler that is out of memory says of it; what it then calls an internal error is none.
// The system kills whoever has most of it.
constexpr std::string_view kOutOfMemory[] = {
    "out of memory allocating", "LLVM ERROR: out of memory", "virtual memory exhausted",
    "Killed signal terminated program", "unable to execute command: Killed"};

/// "compiler is out of heap space", for cl in its first pass and in its second.
bool IsNumberOfOutOfMemory(const std::string& number) {
  return number == "C1060" || number == "C1002";
}

/// Not what an error says, or the source that it shows: there the words are the program's.
bool TellsOutOfMemory(const std::string& line) {
  if (line == "  what():  std::bad_alloc" || IsNumberOfOutOfMemory(ErrorNumber(line))) return true;
  if (line.empty() || line[0] == ' ' || MeaningOf(line) == LineMeaning::Error) return false;
  return std::any_of(std::begin(kOutOfMemory), std::end(kOutOfMemory),
                     [&](std::string_view mark) { return line.find(mark) != std::string::npos; });
}

}  // namespace

void FailureReader::Read(const std::string& output) {
  while (!IsDecided() && lines.TakeNext(output)) Take(lines.All().back());
}

void FailureReader::Take(const std::string& line) {
  outOfMemory = TellsOutOfMemory(line);
  deciding.Take(line);
  if (deciding.HasCrashed()) return;
  if (awaitsWarning && !WarningText(line).empty()) error += ": " + WarningText(line);
  awaitsWarning = error.empty() && MakesWarningAnError(line);
  if (error.empty()) error = ErrorText(line);
}

bool FailureReader::TellsCrash(int signal) const {
  if (deciding.Meaning() != LineMeaning::None) return deciding.Meaning() == LineMeaning::Failure;
  return deciding.HasCrashed() || signal != 0;
}

Failure FailureReader::Conclude(const std::string& output, int signal, bool succeeded) {
  Read(output);
  if (!IsDecided() && lines.TakeRest(output)) Take(lines.All().back());
  if (outOfMemory) return {FailureKind::OutOfMemory, "out of memory", !error.empty()};
  if (TellsCrash(signal)) {
    return {FailureKind::Crash, CrashHeadline(lines.All(), signal), !error.empty()};
  }
  const bool isError = !error.empty() && (!succeeded || IsDecided());
  return isError ? Failure{FailureKind::Error, error, false} : Failure();
}

}  // namespace snipwell
