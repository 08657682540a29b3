#pragma once

#include <string>

#include "failure/deciding_line.h"
#include "failure/failure.h"
#include "failure/output_lines.h"

namespace snipwell {

/// Reads what a compiler writes while it writes it, and tells as early as possible how the
/// compilation fails: the first line that decides, decides.
class FailureReader {
 public:
  /// With `readsPastErrors` an error of the program does not decide: a crash may follow.
  explicit FailureReader(bool readsPastErrors) : deciding(!readsPastErrors) {}

  /// Reads on in the whole output so far, which has grown since the last call.
  void Read(const std::string& output);
  /// True when nothing that is written now can change the failure.
  bool IsDecided() const { return outOfMemory || deciding.Meaning() != LineMeaning::None; }

  /// The failure, when the compiler has ended or is ended now. `signal` is what ended it, or 0.
  Failure Conclude(const std::string& output, int signal, bool succeeded);

 private:
  void Take(const std::string& line);
  bool TellsCrash(int signal) const;

  OutputLines lines;
  DecidingLine deciding;
  bool outOfMemory = false;
  bool awaitsWarning = false;  // the next line says more of the first error
  std::string error;           // what the first error says
};

}  // namespace snipwell
