#pragma once

#include <optional>
#include <string>
#include <vector>

#include "refine/program.h"
#include "snipwell/result_file.h"
#include "snipwell/settings.h"
#include "snipwell/workshop.h"

namespace snipwell {

/// One run, from the command that fails to the result.
class Reduction {
 public:
  explicit Reduction(const Settings& programSettings);

  /// Returns the exit status; throws RunEnd when the run ends without a result.
  int Run();

 private:
  void Understand();
  void NameFailure();
  void FindSecondCompiler();
  void Preprocess();
  void RefuseEmpty();
  bool Refine();
  void Deliver(const std::string& text);
  void Trace(const std::string& text) const;
  void Say(const std::string& sentence) const;

  const Settings& settings;
  Workshop workshop;
  std::string source;
  Form form;
  Question question;
  std::optional<ResultFile> result;
};

}  // namespace snipwell
