// Both scanners over any bytes: the objects make up the text, without a gap and without an overlap,
// and each takes at least one character, so a scan is over after one pass.

#include "fuzz/fuzzing.h"
#include "tests/unit/invariants.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  const std::string text = fuzz::TextOf(data, size);
  for (const Level level : {Level::File, Level::Body}) {
    const std::string complaint = ComplaintAboutScan(level, text);
    fuzz::Require(complaint.empty(), complaint.c_str());
  }
  return 0;
}
