#pragma once

#include <optional>
#include <string>
#include <vector>

namespace snipwell::testing {

/// What a fake compiler is asked to do.
struct Compilation {
  std::vector<std::string> arguments;  ///< of the process, the file to compile last
  std::string file;
  std::string text;  ///< of the file to compile; empty when there is none
  int run = 1;       ///< the number of this run, from 1
};

/// What a file holds; nothing when it is none.
std::string ReadAll(const std::string& fileName);

/// True when the text has these words, parted by blanks, in their order.
bool HasInOrder(const std::string& text, const std::string& words);

/// Carries out the first rule of a file whose conditions all hold. Returns the exit status, or none
/// when no rule is for this compilation. The rules look like
///
///   rule
///   has int needed          the text holds this text
///   lacks ;;                ... does not hold this text
///   words int f (           ... holds these words in their order
///   arg /Zs                 this argument was given
///   noarg -O2               this argument was not given
///   source /snip/           the name of the file to compile holds this text
///   run 3                   this is the third run
///   until 9                 this is the ninth run, or an earlier one
///   even                    the number of this run is even
///   out {file}(2) : error   write a line on standard output; {file} is the file to compile
///   err warning             write a line on standard error
///   raw a\x00b              write bytes on standard output, without a line feed
///   clock 900               let the test clock go on by 900 seconds
///   delete                  delete the file to compile
///   litter                  leave a file in the temporary folder, and a process of its own session
///   signal 2 test_pid       send this signal to the process whose number the file holds
///   wait 10                 wait for so many milliseconds
///   hang                    do not end
///   flood                   write without end
///   exit 2                  end with this status (0 when nothing is said)
///   abort                   end by the signal of that name
///   crash                   end by an access to memory that is not there
std::optional<int> Obey(const std::string& rulesFile, const Compilation& made);

}  // namespace snipwell::testing
