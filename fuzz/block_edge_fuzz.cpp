// A text is read in blocks. Where one ends must not show: the objects and the cleaned text are the
// same whether the edge falls into the text, at any place, or not.

#include "fuzz/fuzzing.h"
#include "tests/unit/invariants.h"

namespace snipwell::fuzz {

namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;  // as readers have it

/// Type, Block and the place of each object's end, without what stands before the text.
std::string Objects(Level level, const std::string& before, const std::string& text) {
  std::string described;
  for (const ObjOrg& object : Scan(level, before + text)) {
    const bool inFirstLine = object.GetEnd().GetLine() == 0;
    const int shift = inFirstLine ? static_cast<int>(before.size()) : 0;
    described += std::to_string(object.GetType()) + (object.GetBlock() ? "{} " : " ") +
                 std::to_string(object.GetEnd().GetLine()) + ':' +
                 std::to_string(object.GetEnd().GetCol() - shift) + '\n';
  }
  return described;
}

}  // namespace

}  // namespace snipwell::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  const std::string text = fuzz::TextOf(data, size);
  if (size < 2) return 0;
  // The first byte says where the edge falls. A declaration of one long name stands before it.
  const std::string before = std::string(fuzz::kBlock - data[0] % size - 1, 'a') + ';';
  for (const Level level : {Level::File, Level::Body}) {
    fuzz::Require(fuzz::Objects(level, before, text) == fuzz::Objects(level, "a;", text),
                  "objects do not depend on blocks");
  }
  fuzz::Require(Cleaned(before + text) == before + Cleaned(text),
                "cleaned text does not depend on blocks");
  return 0;
}
