#pragma once

#include <string>
#include <vector>

#include "snipwell/job.h"

namespace snipwell {

/// One of the steps that make a job's program smaller or plainer. Each leaves a program that fails,
/// in the same way as before.
struct Stage {
  const char* name;   ///< as --stages= has it
  const char* title;  ///< what is being done, for the status
  const char* done;   ///< what has become of the program, for the report
  /// It brings the program to where an earlier result is already.
  bool preparesOnly;
  void (*run)(Job& job);
};

const std::vector<Stage>& Stages();

std::vector<std::string> StageNames();
/// Those that are made when nobody chooses, in their order.
std::vector<std::string> DefaultStages();

/// Includes are put in and macros expanded.
void Preprocess(Job& job);
/// What a simple scanner stumbles over is spelt otherwise.
void MakePlain(Job& job);
/// Whole declarations and statements go.
void RunSnip(Job& job);
/// Single tokens go.
void Refine(Job& job);
/// Options of the command go that the failure does not need.
void ReduceOptions(Job& job);
/// The program is written as people would.
void LayOut(Job& job);

}  // namespace snipwell
