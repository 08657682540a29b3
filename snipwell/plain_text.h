#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace snipwell {

/// A change to a C++ source that spares a simple character scanner one hard thing and means the
/// same to the compiler. Nothing but what it names is touched, byte for byte; made twice, it does
/// no more than once. Any bytes are taken.
///
/// Lines may become fewer or more, and what the preprocessor turns into strings may be spelt
/// otherwise.
struct PlainTextStep {
  const char* name;
  /// The changed text; nothing when there is nothing to change.
  std::optional<std::string> (*change)(std::string_view text);
};

/// All steps, in the order in which they are best made.
const std::vector<PlainTextStep>& PlainTextSteps();

// Each with what it makes of a line.

/// in\<line feed>t a;  ->  int a;
std::optional<std::string> WithoutSplices(std::string_view text);
/// int a<:2:> = <%1, 2%>;  ->  int a[2] = {1, 2};
std::optional<std::string> WithUsualBrackets(std::string_view text);
/// u8R"x(a\b")x"_s  ->  u8"a\\b\""_s
std::optional<std::string> WithPlainStrings(std::string_view text);
/// Puts an empty line behind each directive that something follows.
std::optional<std::string> WithLinesBehindDirectives(std::string_view text);

}  // namespace snipwell
