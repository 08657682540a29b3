#include "text/file_helpers.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>

#include "printed.h"
#include "temp_folder.h"

namespace snipwell {

TEST(CopyTextFile, CopiesByteForByteAndReportsWhatItCannotOpen) {
  const TempFolder folder;
  const std::string from = folder.Write("from", "a\r\n\xFF b");
  const std::string to = folder.Write("to", "a text that is longer");
  const std::string missing = folder.NameOf("missing");
  const std::string nowhere = folder.NameOf("nowhere/to");
  const std::string noInput = "ERROR: Cannot open input file ";
  const std::string noOutput = "ERROR: Cannot open output file ";
  const std::string strange = "\nERROR: Something strange happened \n";
  const Capture error(std::cerr);

  CopyTextFile(from, to);
  EXPECT_EQ(folder.Read("to"), "a\r\n\xFF b");
  CopyTextFile(missing, missing);
  EXPECT_EQ(error.Text(), "");
  CopyTextFile(from, nowhere);
  EXPECT_EQ(error.Text(), noOutput + nowhere + strange);
  CopyTextFile(missing, nowhere);
  EXPECT_EQ(error.Text(),
            noOutput + nowhere + strange + noInput + missing + '\n' + noOutput + nowhere + strange);
  CopyTextFile(missing, to);
  EXPECT_EQ(folder.Read("to"), "");
}

TEST(CopyTextFile, LeavesTwoNamesOfOneFileAlone) {
  const TempFolder folder;
  const std::string name = folder.Write("file", "text");
  std::filesystem::create_hard_link(name, folder.NameOf("other"));
  CopyTextFile(name, folder.NameOf("other"));
  CopyTextFile(name, folder.NameOf("./file"));
  EXPECT_EQ(folder.Read("file"), "text");
}

}  // namespace snipwell
