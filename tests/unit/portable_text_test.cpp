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
  const std::string source =
      folder.Write("in.cpp",
                   "#include <cstdlib>\n#include <functional>\n"
                   "#include <memory>\n#include <string>\n"
                   "using Four = std::make_integer_sequence<short, 4>;\n"
                   "using Same = std::integer_sequence<short, 0, 1, 2, 3>;\n"
                   "static_assert(std::is_same<Four, Same>::value, \"\");\n"
                   "int f(int, long);\n"
                   "auto g = std::bind(f, 1, 2L);\n"
                   "int h = g() + std::make_unique<std::string>()->size();\n");
  const std::string given = folder.NameOf("given.ii");
  for (const std::string standard : {" -std=c++17", " -std=c++20"}) {
    for (const std::string preprocessor : {"g++", "clang++"}) {
      const std::string preprocess = preprocessor + standard + " -E -o " + given + ' ' + source;
      ASSERT_EQ(std::system(preprocess.c_str()), 0);
      const std::string text = folder.Read("given.ii");
      const std::string portable = folder.Write("portable.ii", PortableText(text).value_or(text));
      for (const std::string compiler : {"g++", "clang++"}) {
        const std::string check = compiler + standard + " -w -fsyntax-only " + portable;
        EXPECT_EQ(std::system(check.c_str()), 0) << preprocess << '\n' << check;
      }
    }
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
