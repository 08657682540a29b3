#include "driver/run_compiler.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>

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

/// What standard output and standard error were before the compiler run.
struct SavedStreams {
  Descriptor output;
  Descriptor error;
};

SavedStreams SaveStreams() {
  SavedStreams saved{platform::DuplicateStandard(platform::kStandardOutput), Descriptor()};
  if (!saved.output.IsOpen()) FailWithReason(" dup() failed");
  saved.error = platform::DuplicateStandard(platform::kStandardError);
  if (!saved.error.IsOpen()) FailWithReason(" dup() failed");
  return saved;
}

void RedirectStreams(const Descriptor& file) {
  if (!platform::PointStandardAt(platform::kStandardOutput, file)) {
    FailWithReason("Can't dup2 stdout");
  }
  if (!platform::PointStandardAt(platform::kStandardError, file)) {
    FailWithReason("Can't dup2 stderr");
  }
}

void RestoreStreams(const SavedStreams& saved) {
  platform::PointStandardAt(platform::kStandardOutput, saved.output);
  platform::PointStandardAt(platform::kStandardError, saved.error);
}

CompilerStatus StatusOf(platform::ProgramEnd end) {
  switch (end) {
    case platform::ProgramEnd::ExitedZero: return Succeeded;
    case platform::ProgramEnd::Failed: return Failed;
    case platform::ProgramEnd::NotStarted: return NotStarted;
  }
  return Failed;
}

/// Standard output still is the file here, so these lines follow the compiler's own.
void WriteStatusLines(CompilerStatus status) {
  if (status == Failed) {
    std::cout << "------------- ******* --------------------\nCompiler failed for this file.\n";
  } else if (status == NotStarted) {
    std::cout << "Spawn compiler failed.\n";
  }
  std::cout.flush();
  std::cerr.flush();
}

}  // namespace

int RunCompiler(const char* compilerPath, const char* outputFile, int /*argCount*/,
                char* const* argv) {
  std::cout.flush();
  std::cerr.flush();
  const SavedStreams saved = SaveStreams();
  Descriptor file = platform::OpenForWriting(outputFile);
  if (!file.IsOpen()) FailToOpen(outputFile);
  RedirectStreams(file);
  const CompilerStatus status = StatusOf(platform::RunProgram(compilerPath, argv));
  WriteStatusLines(status);
  file.Close();
  RestoreStreams(saved);
  return status;
}

}  // namespace snipwell
