#include "compile/crash_script.h"

#include <filesystem>
#include <optional>
#include <sstream>

#include "compile/whole_file.h"
#include "compile/word_splitting.h"

namespace snipwell {

CommandWords ReadCrashScript(const std::string& fileName) {
  CommandWords script;
  script.folder = std::filesystem::path(fileName).parent_path().string();
  std::istringstream lines(ReadWholeFile(fileName).value_or(""));
  for (std::string line; std::getline(lines, line);) {
    std::vector<std::string> words = SplitWords(line, Quoting::Shell);
    if (!words.empty() && words[0][0] != '#') script.words = std::move(words);
  }
  if (script.words.empty()) {
    script.complaint = fileName + " holds no command: name the script that clang has written" +
                       " beside the preprocessed source.";
  }
  return script;
}

}  // namespace snipwell
