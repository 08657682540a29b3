#pragma once

#include <string>

#include "judge/compiler_checks.h"

namespace snipwell {

/// Asks whether the compiler writes a line that holds a certain text.
class WritesLine : public Check {
 public:
  WritesLine(CompilerRun compilerRun, std::string wantedText);

  platform::ChildCommand Command(const Place& place) const override;
  std::unique_ptr<CheckRun> Run(const Place& place) override;

 private:
  CompilerRun run;
  std::string text;
};

}  // namespace snipwell
