#include "tests/end_to_end/workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "tests/end_to_end/run_tool.h"

namespace snipwell::testing {

namespace {

namespace fs = std::filesystem;

bool IsOfTheTest(const std::string& name) {
  return name == "runs" || name == "fake_compiler.rules" || name.rfind("test_", 0) == 0;
}

}  // namespace

std::vector<std::string> Matches(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator i(text.begin(), text.end(), regex), end; i != end; ++i) {
    found.push_back(i->str(1));
  }
  return found;
}

std::string Workspace::Read(const std::string& name) const {
  std::string text = ReadBytes(name);
  if (!kTextHasCarriageReturns) return text;
  for (std::size_t i = text.find("\r\n"); i != std::string::npos; i = text.find("\r\n", i)) {
    text.erase(i, 1);
  }
  return text;
}

std::string Workspace::ReadBytes(const std::string& name) const {
  return Exists(name) ? folder.Read(name) : "(no file " + name + ")";
}

bool Workspace::Exists(const std::string& name) const {
  return fs::exists(fs::symlink_status(Folder() / name));
}

std::string Workspace::Files() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(Folder())) {
    const std::string name = entry.path().filename().string();
    if (!IsOfTheTest(name)) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  std::string joined;
  for (const std::string& name : names) joined += (joined.empty() ? "" : " ") + name;
  return joined;
}

void Workspace::FailWhileItHas(const std::vector<std::string>& needed) const {
  std::string rules = "rule\n";
  for (const std::string& text : needed) rules += "has " + text + '\n';
  SetRules(rules + "out {file}(1) : error 7: no\nexit 1\n");
}

Outcome Workspace::Snip(const std::vector<std::string>& arguments, const Start& start) const {
  Outcome outcome;
  outcome.status = RunTool(Folder(), arguments, start);
  outcome.out = Read("test_out");
  outcome.err = Read("test_err");
  // A tool that was built with sanitizers reports there what they find.
  EXPECT_EQ(outcome.err.find("Sanitizer"), std::string::npos) << outcome.err;
  return outcome;
}

Outcome Workspace::Isolate(const std::string& source, const std::vector<std::string>& arguments,
                           const Start& start) const {
  std::vector<std::string> all = {"/COMPILER=fake_compiler", "/LOGFILE=log"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  all.push_back(source);
  return Snip(all, start);
}

std::vector<CompilerRun> Workspace::Runs() const {
  std::vector<CompilerRun> runs;
  for (int i = 1; Exists("runs/" + std::to_string(i) + ".args"); ++i) {
    const std::string name = "runs/" + std::to_string(i);
    CompilerRun run{Read(name + ".args"), Read(name + ".text")};
    run.arguments.pop_back();
    std::replace(run.arguments.begin(), run.arguments.end(), '\n', ' ');
    runs.push_back(std::move(run));
  }
  return runs;
}

std::vector<std::string> Workspace::Texts(std::size_t first) const {
  std::vector<std::string> texts;
  const std::vector<CompilerRun> runs = Runs();
  for (std::size_t i = first; i <= runs.size(); ++i) texts.push_back(runs[i - 1].text);
  return texts;
}

}  // namespace snipwell::testing
