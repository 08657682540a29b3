#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "failure/failure.h"
#include "judge/check.h"

namespace snipwell {

/// How a compiler is run on a program.
struct CompilerRun {
  /// The command line that compiles the file `program` and puts what comes of it to `output`.
  std::function<std::vector<std::string>(const std::string& program, const std::string& output)>
      words;
  std::string folder;                    ///< current directory; empty means this process's own
  std::vector<std::string> environment;  ///< further variables, "NAME=value"
  double limitSeconds = 0;               ///< 0 means none
  double graceSeconds = 0;               ///< as in `platform::ChildCommand`
  std::uint64_t memoryBytes = 0;         ///< for each of its processes; 0 means no limit
};

platform::ChildCommand CommandOf(const CompilerRun& run, const Place& place);

/// Asks whether the compiler fails on a program in one certain way.
class FailsAlike : public Check {
 public:
  /// Told of a program that crashes the compiler in another way.
  using OtherCrash = std::function<void(const Failure&, const Place&)>;

  /// Without `errorsAllowed` a program is none in which the compiler finds an error before it
  /// crashes.
  FailsAlike(CompilerRun compilerRun, Failure wantedFailure, bool errorsAllowed,
             OtherCrash onOtherCrash);

  platform::ChildCommand Command(const Place& place) const override;
  std::unique_ptr<CheckRun> Run(const Place& place) override;

 private:
  CompilerRun run;
  Failure wanted;
  bool allowErrors;
  OtherCrash otherCrash;
};

/// Asks whether a compiler takes a program without an error.
class Accepts : public Check {
 public:
  explicit Accepts(CompilerRun compilerRun);

  platform::ChildCommand Command(const Place& place) const override;
  std::unique_ptr<CheckRun> Run(const Place& place) override;

 private:
  CompilerRun run;
};

/// How the compiler fails on a program, given the run of it that has ended or is ended now.
Failure FailureOf(const platform::Child& child);

}  // namespace snipwell
