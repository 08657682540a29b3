#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/child_set.h"

namespace snipwell {

/// Where a program lies while it is asked about. Both folders are fresh for each command.
struct Place {
  std::filesystem::path folder;     ///< holds nothing but the program
  std::filesystem::path temporary;  ///< for what compilers leave behind; may hold the other
  std::filesystem::path program;    ///< the program's file
};

/// One run of a check's command.
class CheckRun {
 public:
  virtual ~CheckRun() = default;
  /// The answer, as soon as what the command has written or its end tells it. A command that has
  /// ended always has one.
  virtual std::optional<bool> Look(const platform::Child& child) = 0;
};

/// One thing that is asked about programs, each time by one command.
class Check {
 public:
  virtual ~Check() = default;
  virtual platform::ChildCommand Command(const Place& place) const = 0;
  virtual std::unique_ptr<CheckRun> Run(const Place& place) = 0;
};

}  // namespace snipwell
