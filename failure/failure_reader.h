#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "failure/failure.h"

namespace snipwell {

/// Reads what a compiler writes while it writes it, and tells as early as possible how the
/// compilation fails: the first line that decides, decides.
class FailureReader {
 public:
  /// With `readsPastErrors` an error of the program does not decide: a crash may follow.
  explicit FailureReader(bool readsPastErrors) : pastErrors(readsPastErrors) {}

  /// Reads on in the whole output so far, which has grown since the last call.
  void Read(const std::string& output);
  /// True when nothing that is written now can change the failure.
  bool IsDecided() const { return decided; }

  /// The failure, when the compiler has ended or is ended now. `signal` is what ended it, or 0.
  Failure Conclude(const std::string& output, int signal, bool succeeded);

 private:
  void ReadLine(const std::string& line);
  bool TakeCrash(const std::string& line);
  bool TakeError(const std::string& line);
  void Decide(FailureKind kind, std::string headline);
  void ConcludeCrash(int signal);

  bool pastErrors;
  bool decided = false;
  bool crashed = false;  // a stack dump has begun
  bool dumpEnded = false;
  std::size_t read = 0;  // bytes of the output that were read as whole lines
  std::vector<std::string> lines;
  Failure failure;
};

}  // namespace snipwell
