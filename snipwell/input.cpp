#include "snipwell/input.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "compile/bug_report.h"
#include "compile/compilation_database.h"
#include "compile/crash_script.h"
#include "compile/test_command.h"
#include "compile/word_splitting.h"
#include "platform/machine.h"
#include "snipwell/exit_status.h"
#include "snipwell/result_file.h"
#include "snipwell/wrong_code.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

const std::string& OnlyWord(const Settings& settings, const char* option) {
  if (settings.words.size() == 1) return settings.words.front();
  throw RunEnd(BadUsage, std::string(option) + " takes one source and no more");
}

bool HasSuffix(const Settings& settings, const char* suffix) {
  return settings.words.size() == 1 && fs::path(settings.words.front()).extension() == suffix;
}

Input FromCommand(Words words, const std::string& folder) {
  CommandOrComplaint understood = TakeCommandApart(words, folder);
  if (!understood.complaint.empty()) throw RunEnd(BadUsage, understood.complaint);
  Input input;
  input.given = std::move(words);
  input.command = std::move(understood.command);
  input.source = (fs::path(input.command.folder) / input.command.source).string();
  return input;
}

Input FromFoundCommand(CommandWords found) {
  if (!found.complaint.empty()) throw RunEnd(BadUsage, found.complaint);
  return FromCommand(std::move(found.words), found.folder);
}

/// The first that there is, or the first.
std::string Installed(const Words& compilers) {
  for (const std::string& compiler : compilers) {
    if (platform::IsProgram(compiler)) return compiler;
  }
  return compilers.front();
}

Input FromBugReport(const std::string& fileName, const fs::path& folder) {
  BugReport report = ReadBugReport(fileName);
  if (!report.command.complaint.empty()) throw RunEnd(BadUsage, report.command.complaint);
  report.command.words.front() = Installed(report.compilers);
  Input input = FromCommand(std::move(report.command.words), "");
  input.source = (fs::path(fileName).parent_path() / input.command.source).string();
  input.text = std::move(report.text);
  input.command.source = (folder / input.command.source).string();
  std::ofstream(fs::path(input.command.source), std::ios::binary) << input.text;
  return input;
}

Input FromTest(const Settings& settings) {
  Input input;
  input.source = OnlyWord(settings, "--test=");
  input.command.source = input.source;
  input.given = {"snipwell", "--test=" + settings.test, input.source};
  input.test = TestWords(settings.test);
  return input;
}

/// Completes the second command with the source, and with the libraries that stand behind it in the
/// first.
void AddSource(WrongCode& wrong) {
  std::vector<std::string>& other = wrong.otherWords;
  if (std::count(other.begin(), other.end(), wrong.source) != 0) return;
  const auto isLibrary = [](const std::string& word) {
    return word.rfind("-l", 0) == 0 || word.rfind("-L", 0) == 0;
  };
  const auto source = std::find(wrong.words.begin(), wrong.words.end(), wrong.source);
  other.push_back(wrong.source);
  std::copy_if(source, wrong.words.end(), std::back_inserter(other), isLibrary);
}

Input FromWrongCode(const Settings& settings, Workshop& workshop) {
  Input input = FromCommand(settings.words, "");
  const std::string& source = input.command.source;
  WrongCode wrong = {settings.words, SplitWords(settings.wrongCode, UsersQuoting()), source,
                     fs::path(source).filename().string()};
  AddSource(wrong);
  input.given.insert(input.given.begin(), {"snipwell", "--wrong-code=" + settings.wrongCode});
  input.test = WrongCodeTest(wrong, input.source, workshop, input.remarks);
  return input;
}

Input Found(const Settings& settings, Workshop& workshop) {
  if (!settings.test.empty()) return FromTest(settings);
  if (!settings.wrongCode.empty()) return FromWrongCode(settings, workshop);
  if (!settings.database.empty()) {
    return FromFoundCommand(FindInDatabase(settings.database, OnlyWord(settings, "-p")));
  }
  if (HasSuffix(settings, ".sh")) return FromFoundCommand(ReadCrashScript(settings.words.front()));
  if (HasSuffix(settings, ".out")) return FromBugReport(settings.words.front(), workshop.Folder());
  return FromCommand(settings.words, "");
}

}  // namespace

Input ReadInput(const Settings& settings, Workshop& workshop) {
  Input input = Found(settings, workshop);
  if (input.text.empty()) input.text = ReadSource(input.source);
  return input;
}

}  // namespace snipwell
