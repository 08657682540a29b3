#pragma once

#include <fstream>
#include <string>

namespace snipwell {

/// The file for the best program so far. It is whole at every moment: a new program is written
/// beside it and takes its place in one step.
class ResultFile {
 public:
  /// Throws RunEnd when there is a file already, unless it may be written over.
  ResultFile(std::string fileName, bool mayWriteOver);

  void Write(const std::string& text);
  const std::string& Name() const { return name; }

 private:
  std::string name;
};

/// What a user's file holds. Throws RunEnd when it cannot be read.
std::string ReadSource(const std::string& fileName);

}  // namespace snipwell
