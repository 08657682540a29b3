// The clock of the binary that the clock tests run: it stands still until the file "test_clock" in
// the current directory says how many seconds have passed.

#include <fstream>

#include "platform/clock.h"

namespace snipwell::platform {

std::time_t CurrentTime() {
  constexpr std::time_t kStart = 1'000'086'400;
  long seconds = 0;
  std::ifstream("test_clock") >> seconds;
  return kStart + seconds;
}

}  // namespace snipwell::platform
