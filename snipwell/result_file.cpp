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

bool IsSame(const std::string& file, const std::string& other) {
  return platform::IsSameFile(file, other) ||
         fs::absolute(file).lexically_normal() == fs::absolute(other).lexically_normal();
}

[[noreturn]] void RefuseToWrite(const std::string& fileName) {
  throw RunEnd(Surroundings, "cannot write " + fileName + ": is there room, and the right to?");
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
  names = {source, name, reportName};
  const bool mine = IsReport(reportName);
  hasEarlier = mine && fs::exists(name);
  mayReplace = mine || mayWriteOver;
  for (const std::string& file : {name, reportName}) {
    if (mayReplace || !fs::exists(file)) continue;
    throw RunEnd(Surroundings, file + " exists and is no result of an earlier run: give another " +
                                   "name with -o, or --force to write over it");
  }
}

void ResultFile::AddFile(const std::string& fileName) {
  if (fileName.empty()) return;
  for (const std::string& other : names) {
    if (!IsSame(fileName, other)) continue;
    throw RunEnd(BadUsage, fileName + " is the source, or two things are to be written to it: " +
                               "give it another name");
  }
  const bool existed = fs::exists(fileName);
  if (!mayReplace && existed && !fs::is_other(fileName)) {
    throw RunEnd(Surroundings, fileName + " exists and is of no earlier run: give another name, " +
                                   "or --force to write over it");
  }
  if (!std::ofstream(fileName, std::ios::app)) RefuseToWrite(fileName);
  if (!existed) platform::RemoveFile(fileName);
  names.push_back(fileName);
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
  RefuseToWrite(fileName);
}

std::string ReadSource(const std::string& fileName) {
  std::ifstream in(fs::path(fileName), std::ios::binary);
  if (!in || fs::is_directory(fileName)) throw RunEnd(Surroundings, "cannot read " + fileName);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace snipwell
