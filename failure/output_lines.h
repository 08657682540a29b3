#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace snipwell {

/// The lines of an output, without colours and without carriage returns at their ends, taken out of
/// it one by one while it grows. They are kept, up to 16 MB in memory; what comes then is not
/// looked at any more.
class OutputLines {
 public:
  /// Takes the next whole line of the whole output so far. False when there is none yet.
  bool TakeNext(const std::string& output);
  /// Takes what the last line feed is followed by, if anything. To be called once, when the output
  /// has come to its end and all its whole lines have been taken.
  bool TakeRest(const std::string& output);

  /// The lines taken so far.
  const std::vector<std::string>& All() const { return lines; }

 private:
  bool TakeUpTo(std::size_t end, const std::string& output);

  std::vector<std::string> lines;
  std::size_t size = 0;      // of the lines in memory, since they can be empty
  std::size_t start = 0;     // of the line to take next
  std::size_t searched = 0;  // up to here there is no further end of it
};

}  // namespace snipwell
