#include "failure/error_match.h"

#include <iostream>
#include <iterator>

namespace snipwell {

namespace {

constexpr char kDefaultCriteriaFile[] = "ErrorMatch.txt";

constexpr const char* kBuiltInCriteria[] = {
    ": error",       "internal error :", "internal error:",       "Illegal READ",
    "Illegal WRITE", "compiler error:",  ": catastrophic error:", "Catastrophic error:",
};

StringArray BuiltInCriteria() {
  return StringArray(static_cast<int>(std::size(kBuiltInCriteria)), kBuiltInCriteria);
}

}  // namespace

ErrorMatch::ErrorMatch(const std::string& outputFileName, const std::string& criteriaFileName,
                       bool traceLines)
    : errorFileName(outputFileName), verbose(traceLines) {
  LoadCriteria(criteriaFileName);
  std::cerr << criteria << std::endl;
}

void ErrorMatch::LoadCriteria(const std::string& fileName) {
  if (!fileName.empty() && ReadCriteria(fileName)) {
    std::cerr << "Matching Criteria from file " << fileName << std::endl;
  } else if (ReadCriteria(kDefaultCriteriaFile)) {
    std::cerr << "Matching Criteria from file \"" << kDefaultCriteriaFile << '"' << std::endl;
  } else {
    criteria = BuiltInCriteria();
    std::cerr << "Matching Criteria from default strings" << std::endl;
  }
}

bool ErrorMatch::ReadCriteria(const std::string& fileName) {
  return criteria.ReadFile(fileName, '"', '\\', true);
}

}  // namespace snipwell
