#include "source/lexical_layer.h"

#include <gtest/gtest.h>

#include <string>

namespace snipwell {

TEST(LexicalLayer, PutsEveryCharacterIntoItsClass) {
  using namespace std::string_literals;
  const std::string characters[] = {
      "\0"s,       "",           "",
      "#",         "/",          "\"",
      "'",         "0123456789", "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$",
      " \t\v\f\r", "\n",         ";",
      "{",         "=",          ":",
      "}",         "(",          ")"};
  for (int code = 0; code < 256; ++code) {
    int expected = 2;
    for (int i = 0; i < 18; ++i) {
      if (characters[i].find(static_cast<char>(code)) != std::string::npos) expected = i;
    }
    EXPECT_EQ(static_cast<int>(ClassOf(static_cast<char>(code))), expected) << "code " << code;
  }
}

}  // namespace snipwell
