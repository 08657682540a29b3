#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace snipwell {

/// How far a reduction is.
struct Progress {
  std::string stage;  ///< what is being done, in a word or two of ASCII
  std::size_t bytes;  ///< of the program so far
  std::size_t bytesAtStart;
  std::size_t compilations;  ///< that have ended
  std::size_t jobs;          ///< compilations at a time
};

/// A size over time, in a few samples however long it takes. Times are in seconds and must not
/// fall.
class SizeHistory {
 public:
  void Note(double seconds, std::size_t bytes);

  /// The sizes at even times, from the start to the last note; at most 64.
  const std::vector<std::size_t>& Sizes() const { return sizes; }
  /// When the size fell for the last time; 0 when it never did.
  double LastGain() const { return lastGain; }

 private:
  void HalveSamples();

  std::vector<std::size_t> sizes;
  double interval = 0.25;  // seconds from one sample to the next
  double lastGain = 0;
};

/// The text of a status line of less than `width` columns: the stage, the size now and at the
/// start and in bars over time, compilations, jobs, seconds without a gain when they are many, and
/// the seconds since the start. What matters less is left out where room is short.
/// Bars are logarithmic, block characters in UTF-8 or ASCII.
std::string StatusText(const Progress& progress, const SizeHistory& history, double seconds,
                       std::size_t width, bool utf8);

/// The same as a sentence for a log, without bars.
std::string StatusSentence(const Progress& progress, double seconds);

}  // namespace snipwell
