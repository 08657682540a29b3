#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "snipwell/report_text.h"

namespace snipwell {

TEST(ReportText, QuotesWordsForTheShell) {
  std::vector<std::string> words = {"",      "a b", "-DX=\"y\"", "it's", "$HOME", "`id`",
                                    "a\nb",  "\\",  "~",         "#",    "*",     "a;b",
                                    "{a,b}", "!",   "-I../x",    "\xff"};
  const std::string command = "printf '[%s]' " + CommandLine(words);
  const std::unique_ptr<FILE, int (*)(FILE*)> shell(popen(command.c_str(), "r"), pclose);
  std::string expected;
  for (const std::string& word : words) expected += '[' + word + ']';
  std::string read(expected.size() + 1, '\0');
  read.resize(fread(read.data(), 1, read.size(), shell.get()));
  EXPECT_EQ(read, expected);
  EXPECT_EQ(CommandLine({"g++", "-O2", "-std=c++20", "src/pool.cpp"}),
            "g++ -O2 -std=c++20 src/pool.cpp");
}

}  // namespace snipwell
