#include "failure/crash_headline.h"

#include <algorithm>
#include <cstddef>

#include "failure/deciding_line.h"
#include "failure/stack_dump.h"

namespace snipwell {

namespace {

constexpr std::size_t kFramesToTell = 3;

/// What follows `mark` in the first line that holds it; "" when none does.
std::string TextBehind(const std::vector<std::string>& lines, const std::string& mark) {
  for (const std::string& line : lines) {
    const std::size_t place = line.find(mark);
    if (place != std::string::npos) return line.substr(place + mark.size());
  }
  return std::string();
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

std::string Identity(const std::vector<std::string>& lines, bool endedBySignal) {
  const auto tells = [](const std::string& line) {
    const LineMeaning meaning = MeaningOf(line);
    return meaning == LineMeaning::Failure || meaning == LineMeaning::Crash;
  };
  const auto first = std::find_if(lines.begin(), lines.end(), tells);
  if (first == lines.end() && !endedBySignal) return std::string();
  const std::string text = first != lines.end() ? FailureText(*first) : std::string();
  if (!text.empty()) return text;
  const std::string frames = TopFrames(lines);
  if (!frames.empty()) return frames;
  const std::string signal = TextBehind(lines, "internal compiler error: ");
  if (!signal.empty()) return signal;
  return endedBySignal ? std::string() : "a crash without a stack dump";
}

}  // namespace

std::string CrashHeadline(const std::vector<std::string>& lines, bool endedBySignal) {
  std::string identity = Identity(lines, endedBySignal);
  // The tool overlooks what is in parentheses.
  std::replace(identity.begin(), identity.end(), '(', '[');
  std::replace(identity.begin(), identity.end(), ')', ']');
  return identity;
}

}  // namespace snipwell
