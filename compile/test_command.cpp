#include "compile/test_command.h"

#include <filesystem>
#include <system_error>

#include "compile/word_splitting.h"
#include "platform/shell.h"
#include "text/small_letters.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

Words PosixTestWords(const std::string& command) {
  const std::string program = command.substr(0, command.find(' '));
  const std::string path = platform::ProgramForShell(program);
  if (path.empty()) return platform::ShellWords(command);
  return platform::ShellWords(platform::ShellCommand({path}) + command.substr(program.size()));
}

struct Starter {
  const char* suffix;
  Words words;  // to put before the file
};

/// In the order in which files of the same name are found. A first word in quotes would lose them
/// to the interpreter's own rules, so something else has to stand before it.
const Starter kStarters[] = {
    {".exe", {}},
    {".com", {}},
    {".bat", {"cmd", "/d", "/c", "call"}},
    {".cmd", {"cmd", "/d", "/c", "call"}},
    {".ps1", {"powershell", "-NoProfile", "-ExecutionPolicy", "Bypass", "-File"}},
    {".sh", {"sh"}},
};

const Starter* StarterOf(const std::string& file) {
  const std::string suffix = InSmallLetters(fs::path(file).extension().string());
  for (const Starter& starter : kStarters) {
    if (suffix == starter.suffix) return &starter;
  }
  return nullptr;
}

/// The file from the root if there is one, else the name as it is.
std::string Found(const std::string& name) {
  std::error_code error;
  const auto absolute = [](const std::string& file) {
    return fs::absolute(file).lexically_normal().make_preferred().string();
  };
  if (fs::is_regular_file(name, error)) return absolute(name);
  for (const Starter& starter : kStarters) {
    if (fs::is_regular_file(name + starter.suffix, error)) return absolute(name + starter.suffix);
  }
  return name;
}

}  // namespace

Words WindowsTestWords(const std::string& command) {
  Words words = SplitWords(command, Quoting::Windows);
  if (!words.empty()) words.front() = Found(words.front());
  const Starter* const starter = words.empty() ? nullptr : StarterOf(words.front());
  const Words start = starter != nullptr ? starter->words : Words{"cmd", "/d", "/c"};
  words.insert(words.begin(), start.begin(), start.end());
  return words;
}

Words TestWords(const std::string& command) {
  return platform::kShellIsPosix ? PosixTestWords(command) : WindowsTestWords(command);
}

}  // namespace snipwell
