#include "snipwell/portable_text.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "temp_folder.h"

namespace snipwell {

TEST(PortableText, IsAcceptedByBothCompilers) {
  if (std::system("g++ --version >/dev/null 2>&1 && clang++ --version >/dev/null 2>&1") != 0) {
    GTEST_SKIP() << "no g++ and clang++ here";
  }
  const TempFolder folder;
  const std::string source = folder.Write("in.cpp",
                                          "#include <cstdlib>\n#include <functional>\n"
                                          "using Four = std::make_integer_sequence<short, 4>;\n"
                                          "using Same = std::integer_sequence<short, 0, 1, 2, 3>;\n"
                                          "static_assert(std::is_same<Four, Same>::value, \"\");\n"
                                          "int f(int, long);\n"
                                          "auto g = std::bind(f, 1, 2L);\n"
                                          "int h = g();\n");
  const std::string given = folder.NameOf("given.ii");
  ASSERT_EQ(std::system(("g++ -std=c++17 -E -o " + given + " " + source).c_str()), 0);
  const std::string text = folder.Read("given.ii");
  const std::string portable = folder.Write("portable.ii", PortableText(text).value_or(text));
  for (const char* compiler : {"g++", "clang++"}) {
    EXPECT_EQ(std::system((compiler + (" -std=c++17 -w -fsyntax-only " + portable)).c_str()), 0);
  }
}

TEST(PortableText, ChangesOnlyWhatOneCompilerKnows) {
  const struct {
    const char* text;
    const char* portable;  // empty for no change
  } rows[] = {
      {"", ""},
      {"int __malloc__ (", ""},
      {"void *a() __attribute__ ((__malloc__)); int f(malloc (1));", ""},
      {"a ((__malloc__ (free, 1))) b ((__malloc__ (b, 2))) (1);",
       "a ((__malloc__)) b ((__malloc__)) (1);"},
      {"= _Index_tuple<__integer_pack(_Num)...>", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(PortableText(row.text).value_or(""), row.portable);
}

}  // namespace snipwell
