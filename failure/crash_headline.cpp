#include "failure/crash_headline.h"

#include <algorithm>
#include <cstddef>

#include "failure/deciding_line.h"
#include "failure/stack_dump.h"

namespace snipwell {

namespace {

constexpr std::size_t kFramesToTell = 3;

/// The first in the alphabet of the functions that stand in a dump again and again, or "": when
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
  const StackDump dump = ReadStackDump(lines);
  // A stack that could be written down as a whole was deep, but did not overflow.
  const std::string recursive = dump.whole ? "" : RecursiveFunction(dump.functions);
  if (!recursive.empty()) return "in a recursion through " + recursive;
  std::string told;
  for (std::size_t i = 0; i < dump.functions.size() && i < kFramesToTell; ++i) {
    told += (i == 0 ? "in " : ", called by ") + dump.functions[i];
  }
  return told;
}

/// What follows the words in which gcc names the signal that has ended it, or "".
std::string NameOfSignal(const std::string& line) {
  const std::string mark = "internal compiler error: ";
  const std::size_t place = line.find(mark);
  return place == std::string::npos ? std::string() : line.substr(place + mark.size());
}

bool TellsCrash(const std::string& line) {
  const LineMeaning meaning = MeaningOf(line);
  return meaning == LineMeaning::Failure || meaning == LineMeaning::Crash;
}

/// A crash of which the line `told` is the first to tell; null when none does.
std::string Identity(const std::vector<std::string>& lines, const std::string* told, int signal) {
  const std::string text = told != nullptr ? FailureText(*told) : std::string();
  if (!text.empty()) return text;
  const std::string frames = TopFrames(lines);
  if (!frames.empty()) return frames;
  if (told == nullptr) return "ended by signal " + std::to_string(signal);
  const std::string name = NameOfSignal(*told);
  return name.empty() ? "a crash without a stack dump" : name;
}

}  // namespace

std::string CrashHeadline(const std::vector<std::string>& lines, int signal) {
  const auto first = std::find_if(lines.begin(), lines.end(), TellsCrash);
  if (first == lines.end() && signal == 0) return std::string();
  std::string identity = Identity(lines, first == lines.end() ? nullptr : &*first, signal);
  // The tool overlooks what is in parentheses.
  std::replace(identity.begin(), identity.end(), '(', '[');
  std::replace(identity.begin(), identity.end(), ')', ']');
  return identity;
}

}  // namespace snipwell
