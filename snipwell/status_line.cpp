#include "snipwell/status_line.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <utility>

#include "platform/terminal.h"

namespace snipwell {

namespace {

constexpr double kFirst = -1e9;  // long before any time

const char* Setting(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

Look LookOf(int descriptor) {
  const bool terminal = platform::IsTerminal(descriptor);
  const bool colours = terminal && *Setting("NO_COLOR") == '\0';
  return {terminal, colours, NamesUtf8({Setting("LC_ALL"), Setting("LC_CTYPE"), Setting("LANG")})};
}

bool NamesUtf8(std::initializer_list<std::string> settings) {
  for (std::string setting : settings) {
    if (setting.empty()) continue;
    for (char& c : setting) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return setting.find("utf-8") != std::string::npos || setting.find("utf8") != std::string::npos;
  }
  return false;
}

StatusLine::Surroundings SurroundingsOf(int descriptor) {
  const auto seconds = [] {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
  };
  return {seconds, [descriptor] { return platform::TerminalWidth(descriptor); }};
}

StatusLine::StatusLine(std::ostream& stream, Look streamLook, Verbosity wanted, Surroundings from)
    : out(stream),
      look(streamLook),
      verbosity(wanted),
      surroundings(std::move(from)),
      start(surroundings.seconds()),
      lastShown(kFirst) {}

void StatusLine::Show(const Progress& progress) {
  if (verbosity == Verbosity::Quiet) return;
  const double now = surroundings.seconds() - start;
  history.Note(now, progress.bytes);
  if (look.terminal) {
    Rewrite(progress, now);
  } else {
    WriteLog(progress, now);
  }
}

void StatusLine::Rewrite(const Progress& progress, double now) {
  constexpr double kShortest = 0.1;
  if (now - lastShown < kShortest) return;
  lastShown = now;
  std::string text = StatusText(progress, history, now, surroundings.width(), look.utf8);
  if (look.colours) {
    const std::size_t stage = std::min(progress.stage.size(), text.size());
    text = "\x1b[36m" + text.substr(0, stage) + "\x1b[0m" + text.substr(stage);
  }
  out << '\r' << text << "\x1b[K" << std::flush;
  shown = true;
}

void StatusLine::WriteLog(const Progress& progress, double now) {
  constexpr double kLongest = 30;
  if (progress.stage == lastStage && now - lastShown < kLongest) return;
  lastShown = now;
  lastStage = progress.stage;
  out << StatusSentence(progress, now) << '\n' << std::flush;
}

void StatusLine::Print(const std::string& line) {
  Clear();
  out << line << '\n' << std::flush;
}

void StatusLine::PrintDetail(const std::string& line) {
  if (verbosity == Verbosity::Verbose) Print(line);
}

void StatusLine::Clear() {
  if (shown) out << "\r\x1b[K" << std::flush;
  shown = false;
}

}  // namespace snipwell
