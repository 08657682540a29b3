#include "compile/bug_report.h"

#include <filesystem>
#include <sstream>
#include <string_view>
#include <utility>

#include "compile/option_groups.h"
#include "compile/whole_file.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

const std::string kTarget = "// Target: ";
const std::string kVersion = "// gcc version ";

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

Words AtBlanks(const std::string& text) {
  std::istringstream in(text);
  Words words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

/// The comments at the start of a report.
struct Comments {
  std::string target;
  std::string version;  // the first number
  Words command;        // the program's name without its folder first
  std::size_t end = 0;  // where the source starts
};

void TakeComment(const std::string& line, Comments& comments) {
  Words words = AtBlanks(line);
  if (StartsWith(line, kTarget) && words.size() > 2) comments.target = words[2];
  if (StartsWith(line, kVersion) && words.size() > 3) {
    comments.version = words[3].substr(0, words[3].find('.'));
  }
  const std::string program = words.size() > 1 ? ProgramName(words[1]) : "";
  if (program == "cc1" || program == "cc1plus") {
    words.erase(words.begin());
    words[0] = program;
    comments.command = std::move(words);
  }
}

Comments ReadComments(const std::string& text) {
  Comments comments;
  while (comments.end < text.size()) {
    const std::size_t end = text.find('\n', comments.end);
    const std::string line = text.substr(comments.end, end - comments.end);
    const bool isSource = !comments.command.empty() || !StartsWith(line, "//");
    if (!line.empty() && isSource) break;
    TakeComment(line, comments);
    comments.end = end == std::string::npos ? text.size() : end + 1;
  }
  return comments;
}

/// The options that decide how a preprocessed source compiles, for the driver.
Words DriverOptions(const Words& command) {
  Words kept;
  for (const OptionGroup& group :
       GroupOptions({command.begin() + 1, command.end()}, CompilerStyle::Gcc, false)) {
    const std::string& word = group.words[0];
    // The driver has set the seed for the report only, and says by itself what is preprocessed.
    const bool isReports = word == "-frandom-seed=0" || word == "-fpreprocessed";
    if (group.isFile || group.role != OptionRole::Compile || isReports) continue;
    kept.insert(kept.end(), group.words.begin(), group.words.end());
  }
  return kept;
}

Words CompilersFor(const std::string& driver, const Comments& comments) {
  const std::string versioned = driver + "-" + comments.version;
  return {comments.target + "-" + versioned, versioned, comments.target + "-" + driver, driver};
}

}  // namespace

BugReport ReadBugReport(const std::string& fileName) {
  BugReport report;
  report.text = ReadWholeFile(fileName).value_or("");
  const Comments comments = ReadComments(report.text);
  if (comments.command.empty()) {
    report.command.complaint = fileName + " is no report of gcc on C or C++: make one with" +
                               " -freport-bug, or give the compiler's command.";
    return report;
  }
  report.text.erase(0, comments.end);
  const bool isCpp = comments.command[0] == "cc1plus";
  report.compilers = CompilersFor(isCpp ? "g++" : "gcc", comments);
  Words& words = report.command.words;
  words = DriverOptions(comments.command);
  words.insert(words.begin(), report.compilers.back());
  words.insert(words.end(), {"-c", fs::path(fileName).stem().string() + (isCpp ? ".ii" : ".i")});
  return report;
}

}  // namespace snipwell
