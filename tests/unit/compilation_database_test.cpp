// Paths are those of POSIX systems here.

#include "compile/compilation_database.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "taken_apart.h"
#include "temp_folder.h"

namespace snipwell {

TEST(CompilationDatabase, FindsTheCommandOfASource) {
  const TempFolder folder;
  const CurrentFolder current(folder);
  const std::string here = std::filesystem::current_path().generic_string();
  folder.Write("compile_commands.json", R"([{"directory": ")" + here + R"(/b",
    "command": "g++ '-DA=\"x y\"' -c ../src/pool.cpp", "file": "../src/pool.cpp"},
    {"directory": "b", "arguments": ["g++", "-DB=x y", "src/main.cpp", 7], "file": "src/main.cpp"},
    {"directory": "/c", "command": "gcc -c main.cpp", "file": "main.cpp"},
    {"directory": "C:/d", "command": "cl /c C:\\d\\w.c", "file": "w.c"},
    {"directory": "/c", "command": "gcc -O2", "file": "pool.cc"}, {"file": 3}, 5])");
  const struct {
    const char* source;
    std::string found;  // "folder: word|word", or the complaint's start
  } rows[] = {
      {"src/pool.cpp", here + "/b: g++|-DA=\"x y\"|-c|../src/pool.cpp"},
      {"b/../src/./pool.cpp", here + "/b: g++|-DA=\"x y\"|-c|../src/pool.cpp"},
      {"src/main.cpp", here + "/b: g++|-DB=x y|src/main.cpp"},
      {"b/src/main.cpp", here + "/b: g++|-DB=x y|src/main.cpp"},
      {"/c/main.cpp", "/c: gcc|-c|main.cpp"},
      {"pool.cc", "/c: gcc|-O2"},
      {"main.cpp", "Several sources end in main.cpp (" + here + "/b/src/main.cpp, /c/main.cpp)"},
      {"pol.cpp", "pol.cpp is not among the 5 sources of " + here +
                      "/compile_commands.json: name one that is, such as " + here +
                      "/src/pool.cpp, /c/pool.cc"},
      {"ool.cpp", "ool.cpp is not among the 5 sources"},
  };
  for (const auto& row : rows) {
    for (const char* database : {".", "compile_commands.json"}) {
      const CommandWords command = FindInDatabase(database, row.source);
      const std::string found = Told(command);
      EXPECT_EQ(command.complaint.empty() ? found : found.substr(0, row.found.size()), row.found);
    }
  }
  EXPECT_EQ(FindInDatabase(".", "w.c").words[2], "C:\\d\\w.c");
  EXPECT_NE(FindInDatabase("gone", "w.c").complaint.find("cannot be read"), std::string::npos);
  folder.Write("bad.json", "[{\"file\": ");
  EXPECT_NE(FindInDatabase("bad.json", "w.c").complaint.find("no compilation database"),
            std::string::npos);
}

}  // namespace snipwell
