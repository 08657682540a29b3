#pragma once

#include <string>

#include "source/position.h"
#include "text/string_array.h"
#include "text/text_reader.h"

namespace snipwell {

/// Decides whether a compilation failed with the error that is being isolated. It holds the
/// criteria, short texts of which one must stand in a line of the compiler's output, and the
/// reference: the first such line of the first compilation, normalised so that line numbers and
/// addresses do not count. Copies carry the criteria and the reference along.
class ErrorMatch {
 public:
  /// `outputFileName` is the file that holds the compiler's output. Loads the criteria from the
  /// file `criteriaFileName` (may be empty), else from "ErrorMatch.txt" in the current directory,
  /// else takes the built-in ones, and lists them on standard error. There is no reference yet.
  ErrorMatch(const std::string& outputFileName, const std::string& criteriaFileName,
             bool traceLines);

  /// Finds the first line of the compiler's output that contains a criterion; false when there is
  /// none, or no such file. With `first`, makes that line, normalised, the reference and returns
  /// true. Without, returns true exactly when it equals the reference.
  bool Scan(bool first);

  /// The line without its parenthesised groups, and cut at an address.
  std::string FormatLine(const std::string& line) const;

 private:
  bool ReadCriteria(const std::string& fileName);
  void LoadCriteria(const std::string& fileName);
  std::string ReadLine(TextReader& in);
  bool FindMatchingLine(std::string& line);

  std::string errorFileName;
  Position reader;  // counts on from scan to scan
  StringArray criteria;
  std::string errorLine;  // the reference, or empty
  bool verbose;
};

}  // namespace snipwell
