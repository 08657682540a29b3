#include "snipwell/status_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string_view>

namespace snipwell {

namespace {

constexpr std::string_view kBlocks = "▁▂▃▄▅▆▇█";
constexpr std::size_t kBlockBytes = 3;
constexpr std::string_view kAsciiBlocks = ".:-=+*#";

/// The parts of a line in their order.
enum Part : std::size_t { Stage, Size, Bars, Compilations, Jobs, Gain, Elapsed, PartCount };
using Parts = std::array<std::string, PartCount>;

std::string Joined(const Parts& parts) {
  std::string text;
  for (const std::string& part : parts) {
    if (!part.empty()) text += (text.empty() ? "" : "  ") + part;
  }
  return text;
}

/// "950 B", "12.3 kB", "4.6 MB"
std::string Bytes(std::size_t bytes) {
  constexpr std::size_t kPlain = 10000;
  constexpr double kThousand = 1000;
  if (bytes < kPlain) return std::to_string(bytes) + " B";
  double count = static_cast<double>(bytes) / kThousand;
  const char* unit = "kB";
  if (count >= kThousand) {
    count /= kThousand;
    unit = "MB";
  }
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.1f %s", count, unit);
  return text.data();
}

/// "0:07", "12:34", "1:02:03"
std::string Duration(double seconds) {
  const auto whole = static_cast<long>(seconds);
  std::array<char, 60> text{};
  if (whole < 3600) {
    std::snprintf(text.data(), text.size(), "%ld:%02ld", whole / 60, whole % 60);
  } else {
    std::snprintf(text.data(), text.size(), "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60,
                  whole % 60);
  }
  return text.data();
}

std::string Counted(std::size_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// Where a size stands among `levels`. The scale is the same for the whole run, from sizes of
/// which little can go to the one at the start.
std::size_t LevelOf(std::size_t bytes, std::size_t atStart, std::size_t levels) {
  constexpr double kSmallest = 32;
  const double range = std::log(std::max(static_cast<double>(atStart) / kSmallest, 2.0));
  const double above = std::log(std::max(static_cast<double>(bytes) / kSmallest, 1.0));
  const double level = std::floor(above / range * static_cast<double>(levels));
  return std::min(static_cast<std::size_t>(level), levels - 1);
}

std::string BarsOf(const std::vector<std::size_t>& sizes, std::size_t atStart, std::size_t columns,
                   bool utf8) {
  const std::string_view blocks = utf8 ? kBlocks : kAsciiBlocks;
  const std::size_t bytes = utf8 ? kBlockBytes : 1;
  const std::size_t count = std::min(columns, sizes.size());
  std::string bars;
  for (std::size_t i = 0; i < count; ++i) {
    // The last bar is the size now.
    const std::size_t size = sizes[(i + 1) * sizes.size() / count - 1];
    bars += blocks.substr(LevelOf(size, atStart, blocks.size() / bytes) * bytes, bytes);
  }
  return bars;
}

Parts PartsOf(const Progress& progress, double seconds, double withoutGain) {
  constexpr double kLong = 10;
  Parts parts;
  parts[Stage] = progress.stage;
  parts[Size] = Bytes(progress.bytesAtStart) + " -> " + Bytes(progress.bytes);
  parts[Compilations] = Counted(progress.compilations, "compilation");
  parts[Jobs] = Counted(progress.jobs, "job");
  if (withoutGain >= kLong) parts[Gain] = "no gain " + Duration(withoutGain);
  parts[Elapsed] = Duration(seconds);
  return parts;
}

/// Empties parts in this order until the line has at most so many columns.
void Shorten(Parts& parts, std::initializer_list<Part> order, std::size_t columns) {
  for (const Part part : order) {
    if (Joined(parts).size() <= columns) return;
    parts[part].clear();
  }
}

}  // namespace

void SizeHistory::Note(double seconds, std::size_t bytes) {
  constexpr double kMostSamples = 64;
  while (seconds / interval >= kMostSamples) HalveSamples();
  if (!sizes.empty() && bytes < sizes.back()) lastGain = seconds;
  const auto index = static_cast<std::size_t>(seconds / interval);
  const std::size_t before = sizes.empty() ? bytes : sizes.back();
  if (sizes.size() <= index) sizes.resize(index + 1, before);
  sizes.back() = bytes;
}

void SizeHistory::HalveSamples() {
  const std::size_t half = (sizes.size() + 1) / 2;
  // Of each two the later one stays, as the last sample is the size now.
  for (std::size_t i = 0; i < half; ++i) sizes[i] = sizes[std::min(2 * i + 1, sizes.size() - 1)];
  sizes.resize(half);
  interval *= 2;
}

std::string StatusText(const Progress& progress, const SizeHistory& history, double seconds,
                       std::size_t width, bool utf8) {
  constexpr std::size_t kFewestBars = 8;
  constexpr std::size_t kMostBars = 24;
  constexpr std::size_t kGap = 2;
  const std::size_t columns = width - std::min<std::size_t>(width, 1);
  Parts parts = PartsOf(progress, seconds, seconds - history.LastGain());
  Shorten(parts, {Jobs, Compilations, Gain}, columns - std::min(columns, kFewestBars + kGap));
  Shorten(parts, {Elapsed, Size}, columns);
  std::string text = Joined(parts);
  if (text.size() + kGap + kFewestBars > columns) return text.substr(0, columns);
  const std::size_t room = std::min(columns - text.size() - kGap, kMostBars);
  parts[Bars] = BarsOf(history.Sizes(), progress.bytesAtStart, room, utf8);
  return Joined(parts);
}

std::string StatusSentence(const Progress& progress, double seconds) {
  return progress.stage + ": " + Bytes(progress.bytesAtStart) + " -> " + Bytes(progress.bytes) +
         " after " + Counted(progress.compilations, "compilation") + ", " + Duration(seconds);
}

}  // namespace snipwell
