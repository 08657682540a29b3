#pragma once

#include <string>
#include <vector>

#include "judge/check.h"

namespace snipwell {

/// Asks a test of the user's: it is run in a folder that holds nothing but the program, without an
/// argument, and ends with status 0 when the program is interesting.
class TestHolds : public Check {
 public:
  /// `testWords` is the command line of the test. A run that takes longer than the limit does not
  /// hold; 0 means no limit. The grace is that of `platform::ChildCommand`.
  TestHolds(std::vector<std::string> testWords, double limit, double grace);

  platform::ChildCommand Command(const Place& place) const override;
  std::unique_ptr<CheckRun> Run(const Place& place) override;

 private:
  std::vector<std::string> words;
  double limitSeconds;
  double graceSeconds;
};

}  // namespace snipwell
