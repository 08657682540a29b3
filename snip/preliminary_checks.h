#pragma once

#include <deque>

#include "compile/argument_vector.h"
#include "reduce/file_org.h"
#include "snip/run_settings.h"

namespace snipwell {

/// The three simplifications tried before the reduction: the source without comments and excess
/// white space, the compiler's front end only, no optimisation. Each costs one compilation, and
/// each that keeps the error holds for all later compilations.
class PreliminaryChecks {
 public:
  /// Borrows all three. `arguments` of the settings must be the engine's; the argument vectors made
  /// here are put into `vectorStore`, which must stay as long as the engine.
  PreliminaryChecks(const RunSettings& runSettings, FileOrg& fileOrg,
                    std::deque<ArgumentVector>& vectorStore)
      : settings(runSettings),
        arguments(runSettings.arguments),
        engine(fileOrg),
        vectors(vectorStore) {}

  /// Makes the three checks.
  void Run();

 private:
  void CheckCleaning();
  void CheckFrontEnd();
  void CheckOptimisation();
  bool WriteCleanedCandidate() const;
  void Compile(char** argv);
  ArgumentVector& VectorWith(const char* option);
  void Adopt(ArgumentVector& vector);
  void DropOption();
  bool ShowsSameError() const;

  const RunSettings& settings;
  StringArray arguments;
  FileOrg& engine;
  std::deque<ArgumentVector>& vectors;
  double preliminarySeconds = 0;
};

}  // namespace snipwell
