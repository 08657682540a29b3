#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>

#include "snipwell/status_text.h"

namespace snipwell {

/// What the reader of a stream can be shown.
struct Look {
  bool terminal = false;  ///< lines can be rewritten
  bool colours = false;
  bool utf8 = false;
};

/// The look of a standard descriptor: colours on a terminal unless NO_COLOR is set, UTF-8 by
/// LC_ALL, LC_CTYPE and LANG.
Look LookOf(int descriptor);

/// True when the first of the locale settings that is not empty is one of UTF-8.
bool NamesUtf8(std::initializer_list<std::string> settings);

enum class Verbosity {
  Quiet,   ///< no status, only what is printed
  Normal,  ///< the status
  Verbose  ///< details too
};

/// Tells people how a reduction is getting on. On a terminal that is one line, written anew at most
/// ten times a second; elsewhere a line for each stage and one every 30 seconds. Other lines must
/// be printed through this class while it lives, so that the line makes room for them.
class StatusLine {
 public:
  /// Where the time, in seconds from any point, and the width of the terminal come from.
  struct Surroundings {
    std::function<double()> seconds;
    std::function<std::size_t()> width;
  };

  /// Borrows the stream. The time starts now.
  StatusLine(std::ostream& stream, Look streamLook, Verbosity wanted, Surroundings from);
  ~StatusLine() { Clear(); }
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;

  /// To be called whenever something has changed, and about once a second anyway.
  void Show(const Progress& progress);
  /// Prints a line, given without its line feed.
  void Print(const std::string& line);
  /// The same, but only when verbose.
  void PrintDetail(const std::string& line);
  /// Takes the status away until it is shown next.
  void Clear();

 private:
  void Rewrite(const Progress& progress, double now);
  void WriteLog(const Progress& progress, double now);

  std::ostream& out;
  Look look;
  Verbosity verbosity;
  Surroundings surroundings;
  SizeHistory history;
  double start;
  double lastShown;
  std::string lastStage;
  bool shown = false;
};

/// Surroundings of the process: a steady clock, and the width of a descriptor's terminal.
StatusLine::Surroundings SurroundingsOf(int descriptor);

}  // namespace snipwell
