#include "snipwell/result_file.h"

#include <filesystem>
#include <iterator>

#include "platform/files.h"
#include "snipwell/exit_status.h"
#include "snipwell/markdown_report.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;

constexpr char kUnfinished[] =
    "\n\nThis reduction is under way, or was broken off. The best program so far lies beside this "
    "file;\nthe same command with --resume goes on from it.\n";

std::string WithoutSuffix(const fs::path& path) {
  return (path.parent_path() / path.stem()).string();
}

bool IsReport(const std::string& fileName) {
  std::ifstream in{fs::path(fileName)};
  std::string line;
  return std::getline(in, line) && line == kReportMarker;
}

}  // namespace

ResultFile::ResultFile(const std::string& source, const std::string& givenName, bool mayWriteOver) {
  const fs::path path(source);
  suffix = (givenName.empty() ? path : fs::path(givenName)).extension().string();
  stem = WithoutSuffix(givenName.empty() ? path : fs::path(givenName));
  name = givenName.empty() ? stem + ".min" + suffix : givenName;
  reportName = stem + ".report.md";
  if (platform::IsSameFile(name, source)) {
    throw RunEnd(BadUsage, "the result would replace the source: give it another name with -o");
  }
  const bool mine = IsReport(reportName);
  hasEarlier = mine && fs::exists(name);
  for (const std::string& file : {name, reportName}) {
    if (mine || mayWriteOver || !fs::exists(file)) continue;
    throw RunEnd(Surroundings, file + " exists and is no result of an earlier run: give another " +
                                   "name with -o, or --force to write over it");
  }
}

std::string ResultFile::NameBeside(const std::string& kind, std::size_t number) const {
  return stem + '.' + kind + '-' + std::to_string(number) + suffix;
}

void ResultFile::Write(const std::string& text) {
  if (!marked) WriteReport(std::string(kReportMarker) + kUnfinished);
  WriteWhole(name, text);
}

void ResultFile::WriteReport(const std::string& report) {
  marked = true;
  WriteWhole(reportName, report);
}

void WriteWhole(const std::string& fileName, const std::string& text) {
  const std::string next = fileName + ".new";
  std::ofstream out(fs::path(next), std::ios::binary);
  out << text;
  out.close();
  if (out && platform::RenameOver(next, fileName)) return;
  platform::RemoveFile(next);
  throw RunEnd(Surroundings, "cannot write " + fileName + ": is there room, and the right to?");
}

std::string ReadSource(const std::string& fileName) {
  std::ifstream in(fs::path(fileName), std::ios::binary);
  if (!in || fs::is_directory(fileName)) throw RunEnd(Surroundings, "cannot read " + fileName);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace snipwell
