#pragma once

#include <string>
#include <vector>

#include "snipwell/workshop.h"

namespace snipwell {

/// A program that two commands build, and that behaves in different ways.
struct WrongCode {
  std::vector<std::string> words;       ///< one command, word by word, with its source
  std::vector<std::string> otherWords;  ///< the other, with the same
  std::string source;                   ///< the word that stands for the source in both
  std::string name;                     ///< file name of the source
};

/// Writes the test for such programs into the workshop's folder, and returns the command that runs
/// it in a program's folder: both commands build the program, what they build ends in time, and
/// then prints or returns different things. Of undefined behaviour it refuses what compilers warn
/// of, and what sanitizers and valgrind find, as far as they have no complaint about the source
/// itself; `file` is the path of that. What cannot be used so is told in `missing`, in sentences.
std::vector<std::string> WrongCodeTest(const WrongCode& wrong, const std::string& file,
                                       Workshop& workshop, std::vector<std::string>& missing);

}  // namespace snipwell
