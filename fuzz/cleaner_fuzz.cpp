// The cleaner over any bytes. What it leaves is a part of the text, with every blank taken for a
// space. Cleaned again, it loses at most white space as long as it holds no slash: a comment
// that stood between blanks leaves two runs of them. The third time nothing changes. A text that
// held no slash to begin with does not even change the second time. Where nothing opens a comment,
// only white space goes.

#include <algorithm>

#include "fuzz/fuzzing.h"
#include "tests/unit/invariants.h"

namespace snipwell::fuzz {

namespace {

std::string WithoutWhiteSpace(std::string text) {
  const auto isWhiteSpace = [](char c) { return IsBlank(c) || c == '\n'; };
  text.erase(std::remove_if(text.begin(), text.end(), isWhiteSpace), text.end());
  return text;
}

bool HasSlash(const std::string& text) { return text.find('/') != std::string::npos; }

}  // namespace

}  // namespace snipwell::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace snipwell;
  using namespace snipwell::fuzz;
  const std::string text = TextOf(data, size);
  const std::string once = Cleaned(text);
  Require(IsLeftOf(WithSpaces(once), WithSpaces(text)), "cleaned text is a part of the text");
  if (text.find("//") == std::string::npos && text.find("/*") == std::string::npos) {
    Require(WithoutWhiteSpace(once) == WithoutWhiteSpace(text), "only a comment takes more");
  }
  if (HasSlash(once)) return 0;
  const std::string twice = Cleaned(once);
  Require(WithoutWhiteSpace(twice) == WithoutWhiteSpace(once), "only white space goes");
  Require(Cleaned(twice) == twice, "nothing changes the third time");
  if (HasSlash(text)) return 0;
  Require(twice == once, "nothing changes the second time");
  return 0;
}
