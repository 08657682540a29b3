#pragma once

#include <fstream>
#include <string>
#include <vector>

namespace snipwell {

/// The file for the best program so far, and the report beside it. The program is whole at every
/// moment: a new one is written beside it and takes its place in one step.
class ResultFile {
 public:
  /// The result of `source` has the name given, or lies beside the source when that is empty.
  /// Throws RunEnd when the result is the source itself, or when a file of one of both names is no
  /// earlier result and may not be written over.
  ResultFile(const std::string& source, const std::string& givenName, bool mayWriteOver);

  /// Another file to be written: throws RunEnd as above, when two things would be written to one
  /// file, or when the system refuses it. An empty name is none.
  void AddFile(const std::string& fileName);

  /// Throws RunEnd when the system refuses; what was there is then as before. The first call also
  /// puts a report there, which tells that it is not finished.
  void Write(const std::string& text);
  void WriteReport(const std::string& report);

  const std::string& Name() const { return name; }
  const std::string& ReportName() const { return reportName; }
  /// "pool.KIND-1.cpp" for a result "pool.min.cpp" or "pool.cpp".
  std::string NameBeside(const std::string& kind, std::size_t number) const;
  /// True when there is a result of an earlier run.
  bool HasEarlier() const { return hasEarlier; }

 private:
  std::string name;
  std::string stem;
  std::string suffix;
  std::string reportName;
  std::vector<std::string> names;  // of the source and of all that is written
  bool mayReplace = false;
  bool hasEarlier = false;
  bool marked = false;
};

/// Writes a file in one step. Throws RunEnd when the system refuses.
void WriteWhole(const std::string& fileName, const std::string& text);

/// What a user's file holds. Throws RunEnd when it cannot be read.
std::string ReadSource(const std::string& fileName);

}  // namespace snipwell
