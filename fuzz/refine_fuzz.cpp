// The second stage over any bytes: tokens, brackets, and the edits of every pass.

#include "fuzz/fuzzing.h"
#include "tests/unit/refine_invariants.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  constexpr std::size_t kLongest = 400;  // each edit is made once
  const std::string complaint =
      ComplaintAboutRefining(fuzz::TextOf(data, std::min(size, kLongest)));
  fuzz::Require(complaint.empty(), complaint.c_str());
  return 0;
}
