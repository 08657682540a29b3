#include "failure/output_lines.h"

#include "failure/line_rewriter.h"

namespace snipwell {

namespace {

constexpr std::size_t kMostMemory = std::size_t{16} * 1024 * 1024;

}  // namespace

bool OutputLines::TakeNext(const std::string& output) {
  const std::size_t end = output.find('\n', searched);
  searched = end == std::string::npos ? output.size() : end + 1;
  return end != std::string::npos && TakeUpTo(end, output);
}

bool OutputLines::TakeRest(const std::string& output) {
  return start < output.size() && TakeUpTo(output.size(), output);
}

bool OutputLines::TakeUpTo(std::size_t end, const std::string& output) {
  if (size >= kMostMemory) return false;
  const bool isWindows = end > start && output[end - 1] == '\r';
  lines.push_back(WithoutColours(output.substr(start, end - start - (isWindows ? 1 : 0))));
  size += sizeof(std::string) + end - start;
  start = end + 1;
  return true;
}

}  // namespace snipwell
