#include <gtest/gtest.h>

#include <filesystem>

#include "compile/bug_report.h"
#include "compile/crash_script.h"
#include "taken_apart.h"
#include "temp_folder.h"

namespace snipwell {

TEST(CrashScript, HoldsTheCommandOfTheFrontEnd) {
  const TempFolder folder;
  const std::string script =
      folder.Write("pool-3f21aa.sh", R"(# Crash reproducer for clang version 14.0.6
# Driver args: "-c" "pool.cpp"
# Original command:  "/l/clang" "-cc1" "-o" "pool.o" "pool.cpp"
 "/l/clang" "-cc1" "-triple" "x86_64-pc-linux-gnu" "-emit-obj" "-D" "A=\"x y\"" "-x" "c++" "pool-3f21aa.cpp"

)");
  const CommandWords found = ReadCrashScript(script);
  EXPECT_EQ(
      TakenApart(found.words, found.folder),
      "/l/clang -cc1 | -triple x86_64-pc-linux-gnu -D A=\"x y\" | -emit-obj c++ pool-3f21aa.cpp");
  EXPECT_EQ(std::filesystem::path(found.folder), folder.Path());
  EXPECT_FALSE(ReadCrashScript(folder.Write("empty.sh", "# nothing\n")).complaint.empty());
  EXPECT_FALSE(ReadCrashScript(folder.NameOf("gone")).complaint.empty());
}

TEST(BugReport, GivesTheCommandOfTheDriverAndTheSource) {
  const TempFolder folder;
  const std::string start =
      "// Target: x86_64-linux-gnu\n// Configured with: ../src/configure -v\n"
      "// gcc version 12.2.0 (Debian 12.2.0-14) \n// \n// b b.c: In function 'f':\n"
      "//     1 | int f() { return g(); }\n\n";
  const std::string source = "# 0 \"b b.c\"\nint f() { return g(); }\n// not taken away\n";
  const BugReport report = ReadBugReport(folder.Write(
      "ccX1.out",
      start +
          "// /usr/lib/gcc/x86_64-linux-gnu/12/cc1 -quiet -I /tmp/w b -imultiarch x86_64-linux-gnu "
          "-MD q.d "
          "-MF x.d -D_REENTRANT -D B=a  \"q\" \\x b b.c -quiet -dumpbase q.c -dumpbase-ext .c "
          "-march=x86-64 --param l1-cache-size=32 -g -O2 -std=gnu11 -fopenmp -freport-bug -o - "
          "-frandom-seed=0 -fdump-noaddr\n\n" +
          source));
  EXPECT_EQ(Joined(report.command.words),
            "gcc -march=x86-64 --param l1-cache-size=32 -g -O2 -std=gnu11 -fopenmp -c ccX1.i");
  EXPECT_EQ(Joined(report.compilers), "x86_64-linux-gnu-gcc-12 gcc-12 x86_64-linux-gnu-gcc gcc");
  EXPECT_EQ(report.text, source);
  const std::string cpp =
      folder.Write("cc2.out", start + "// /l/cc1plus -fpreprocessed a.ii -O1\n\n" + source);
  EXPECT_EQ(Joined(ReadBugReport(cpp).command.words), "g++ -O1 -c cc2.ii");
  EXPECT_FALSE(ReadBugReport(folder.Write("cc3.out", start + source)).command.complaint.empty());
  EXPECT_FALSE(ReadBugReport(folder.Write("cc4.out", start + "// /l/f951 a.f\n\n"))
                   .command.complaint.empty());
}

}  // namespace snipwell
