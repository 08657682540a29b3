// The cleaner, compared with its rules written down once more: what each stretch of a text becomes.

#include <gtest/gtest.h>

#include <regex>

#include "texts.h"

namespace snipwell {

namespace {

using namespace std::string_literals;

/// What one stretch of the text, as `kStretch` takes it, leaves.
std::string Left(const std::string& stretch) {
  const char first = stretch[0];
  if (stretch.compare(0, 2, "//") == 0 || stretch.compare(0, 2, "/*") == 0) return "";
  if (std::string(" \t\v\f\r\n").find(first) == std::string::npos) return stretch;
  return stretch.find('\n') == std::string::npos ? " " : "\n";
}

/// A directive, both comments, both literals, white space, a slash with the character behind it
/// (which is not looked at), anything else. What does not end goes to the end of the text.
const char kStretch[] =
    R"(#[^\n]*\n?|//[^\n]*\n?|/\*(?:[^*]|\*+[^*/])*(?:\*+/|\**$))"
    R"(|"(?:[^"\\]|\\[^])*(?:"|\\?$)|'(?:[^'\\]|\\[^])*(?:'|\\?$)|[ \t\v\f\r\n]+|/[^]?|[^])";

std::string Expected(const std::string& text) {
  static const std::regex stretch(kStretch);
  std::string expected;
  for (std::sregex_iterator i(text.begin(), text.end(), stretch), end; i != end; ++i) {
    expected += Left(i->str());
  }
  return expected;
}

}  // namespace

TEST(StreamCleaner, TreatsEveryTextByItsRules) {
  const auto complaint = [](const std::string& text) {
    return Cleaned(text) == Expected(text) ? ""s : "expected " + Expected(text);
  };
  TryEveryText(Characters("a/*\"'\\# \n"), 5, complaint);
  TryEveryText({"a", " ", "\t", "\v", "\f", "\r", "\n", "\0"s, "\xff"}, 3, complaint);
}

}  // namespace snipwell
