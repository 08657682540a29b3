#include "snipwell/line_filler.h"

#include <utility>

namespace snipwell {

void LineFiller::StartLine(std::size_t newIndent) {
  EndLine();
  indent = newIndent;
  line.assign(indent, ' ');
}

void LineFiller::EndLine() {
  const bool empty = line.find_first_not_of(' ') == std::string::npos;
  if (!empty) lines.push_back(std::move(line));
  line.clear();
  lineBegin = 0;
  places.clear();
}

void LineFiller::Append(std::string_view text) {
  line += text;
  const std::size_t lineFeed = text.rfind('\n');
  if (lineFeed != std::string_view::npos) {
    lineBegin = line.size() - text.size() + lineFeed + 1;
    places.clear();
  }
  while (Column() > kWidth && !places.empty()) BreakLine();
}

void LineFiller::AppendBlank(int bond) {
  if (bond != kNeverBreak) {
    // A place that is further left and holds more is never taken.
    while (!places.empty() && places.back().bond >= bond) places.pop_back();
    places.push_back({line.size(), bond});
  }
  line += ' ';
}

/// Breaks the line at the best place, the first one. Those behind it move on with their words.
void LineFiller::BreakLine() {
  constexpr std::size_t kFurtherIn = 4;
  const std::size_t at = places.front().at;
  const std::string rest = std::string(indent + kFurtherIn, ' ') + line.substr(at + 1);
  const std::size_t taken = line.size() - rest.size();
  lines.push_back(line.substr(0, at));
  line = rest;
  lineBegin = 0;
  places.erase(places.begin());
  for (Place& place : places) place.at -= taken;
}

void LineFiller::StartBlock() {
  EndLine();
  blocks.push_back(lines.size());
}

std::string LineFiller::Text() {
  StartBlock();
  std::string text;
  std::size_t sizeBefore = 0;
  std::size_t at = 0;
  for (const std::size_t end : blocks) {
    const std::size_t size = end - at;
    if (at > 0 && size > 0 && (size > 1 || sizeBefore > 1)) text += '\n';
    for (; at < end; ++at) text += lines[at] + '\n';
    if (size > 0) sizeBefore = size;
  }
  return text;
}

}  // namespace snipwell
