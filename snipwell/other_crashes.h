#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "failure/failure.h"
#include "judge/check.h"
#include "snipwell/findings.h"
#include "snipwell/result_file.h"

namespace snipwell {

/// Keeps programs that crash the compiler in another way than the one asked for: for each headline
/// the smallest, in a file of its own beside the result.
class OtherCrashes {
 public:
  static constexpr std::size_t kMost = 10;

  /// Keeps a copy of a program, if it is one to keep. No copy is written over a file that this
  /// object has not made.
  void Note(const Failure& failure, const Place& place, const ResultFile& result);

  std::vector<OtherCrash> All() const;

 private:
  struct Kept {
    std::string file;
    std::uintmax_t bytes;
  };

  std::map<std::string, Kept> kept;  // by headline
};

}  // namespace snipwell
