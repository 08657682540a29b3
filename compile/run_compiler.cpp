#include "compile/run_compiler.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string_view>

#include "platform/descriptor.h"
#include "platform/files.h"
#include "platform/process.h"

namespace snipwell {

namespace {

using platform::Descriptor;

/// Ends the process after a failed system call whose reason is in errno.
[[noreturn]] void FailWithReason(const char* text) {
  const int reason = errno;
  std::cerr << text << ": " << std::strerror(reason) << std::endl;
  std::exit(EXIT_FAILURE);
}

[[noreturn]] void FailToOpen(const char* fileName) {
  std::cout << "Can't open file: " << std::endl << fileName << std::endl << std::endl << std::endl;
  std::exit(EXIT_FAILURE);
}

/// Standard output and standard error are a file as long as this lives, and then again what they
/// were before.
class StreamsIntoFile {
 public:
  explicit StreamsIntoFile(const char* fileName)
      : output(Save(platform::kStandardOutput)), error(Save(platform::kStandardError)) {
    const Descriptor file = platform::OpenForWriting(fileName);
    if (!file.IsOpen()) FailToOpen(fileName);
    if (!platform::PointStandardAt(platform::kStandardOutput, file)) {
      FailWithReason("Can't dup2 stdout");
    }
    if (!platform::PointStandardAt(platform::kStandardError, file)) {
      FailWithReason("Can't dup2 stderr");
    }
  }
  ~StreamsIntoFile() {
    std::cout.flush();
    std::cerr.flush();
    platform::PointStandardAt(platform::kStandardOutput, output);
    platform::PointStandardAt(platform::kStandardError, error);
  }
  StreamsIntoFile(const StreamsIntoFile&) = delete;
  StreamsIntoFile& operator=(const StreamsIntoFile&) = delete;

 private:
  static Descriptor Save(int standard) {
    Descriptor saved = platform::DuplicateStandard(standard);
    if (!saved.IsOpen()) FailWithReason(" dup() failed");
    return saved;
  }

  Descriptor output;
  Descriptor error;
};

CompilerStatus StatusOf(platform::ProgramEnd end) {
  switch (end) {
    case platform::ProgramEnd::ExitedZero: return Succeeded;
    case platform::ProgramEnd::Failed: return Failed;
    case platform::ProgramEnd::NotStarted: return NotStarted;
  }
  return Failed;
}

/// Standard output still is the file here, so these lines follow the compiler's own. False when the
/// system refuses them.
bool WriteStatusLines(CompilerStatus status) {
  std::string_view lines;
  if (status == Failed) {
    lines = "------------- ******* --------------------\nCompiler failed for this file.\n";
  } else if (status == NotStarted) {
    lines = "Spawn compiler failed.\n";
  }
  return platform::WriteAll(platform::kStandardOutput, lines.data(), lines.size());
}

}  // namespace

int RunCompiler(const char* compilerPath, const char* outputFile, int /*argCount*/,
                char* const* argv) {
  std::cout.flush();
  std::cerr.flush();
  CompilerStatus status = NotStarted;
  bool complete = false;
  {
    const StreamsIntoFile redirection(outputFile);
    status = StatusOf(platform::RunProgram(compilerPath, argv));
    complete = WriteStatusLines(status);
  }
  // What the compiler wrote is cut off then as well, and two errors that differ could look alike.
  if (!complete) platform::OpenForWriting(outputFile);
  return status;
}

}  // namespace snipwell
