// Any bytes as an argument file and as a criteria file. The pieces are a part of the text, and
// written down again, with an escape before every character where there is one, they are read back
// as they were. So is any text that is written down like that.

#include "fuzz/fuzzing.h"
#include "tests/unit/invariants.h"
#include "tests/unit/temp_folder.h"
#include "text/string_array.h"

namespace snipwell::fuzz {

namespace {

StringArray PiecesOf(const std::string& text, char delimiter, char escape, bool keepNewlines) {
  static const TempFolder folder;
  StringArray pieces;
  Require(pieces.ReadFile(folder.Write("pieces", text), delimiter, escape, keepNewlines),
          "the file can be read");
  return pieces;
}

std::string Joined(const StringArray& pieces) {
  std::string joined;
  for (int i = 0; i < pieces.GetSize(); ++i) {
    Require(!pieces.Get(i).empty(), "no piece is empty");
    joined += pieces.Get(i);
  }
  return joined;
}

bool AreSame(const StringArray& a, const StringArray& b) {
  bool same = a.GetSize() == b.GetSize();
  for (int i = 0; same && i < a.GetSize(); ++i) same = a.Get(i) == b.Get(i);
  return same;
}

void CheckArguments(const std::string& text) {
  const StringArray words = PiecesOf(text, ' ', '\0', false);
  const std::string joined = Joined(words);
  Require(IsLeftOf(joined, text), "words are a part of the text");
  Require(joined.find_first_of(" \n") == std::string::npos, "words hold no blank or line feed");
  std::string again;
  for (int i = 0; i < words.GetSize(); ++i) again += words.Get(i) + ' ';
  Require(AreSame(PiecesOf(again, ' ', '\0', false), words), "words are read back");
}

std::string AsCriterion(const std::string& text) {
  std::string written = "remark \"";
  for (const char c : text) written += std::string("\\") + c;
  return written + '"';
}

void CheckCriteria(const std::string& text) {
  const StringArray criteria = PiecesOf(text, '"', '\\', true);
  Require(IsLeftOf(Joined(criteria), text), "criteria are a part of the text");
  std::string again;
  for (int i = 0; i < criteria.GetSize(); ++i) again += AsCriterion(criteria.Get(i));
  Require(AreSame(PiecesOf(again, '"', '\\', true), criteria), "criteria are read back");
  const StringArray whole = PiecesOf(AsCriterion(text), '"', '\\', true);
  Require(Joined(whole) == text && whole.GetSize() <= 1, "any text can be a criterion");
}

}  // namespace

}  // namespace snipwell::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const snipwell::fuzz::Silence silence;
  const std::string text = snipwell::fuzz::TextOf(data, size);
  snipwell::fuzz::CheckArguments(text);
  snipwell::fuzz::CheckCriteria(text);
  return 0;
}
