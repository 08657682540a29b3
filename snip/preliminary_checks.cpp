#include "snip/preliminary_checks.h"

#include <ctime>
#include <iostream>
#include <string>

#include "compile/run_compiler.h"
#include "platform/clock.h"
#include "text/file_helpers.h"
#include "text/stream_cleaner.h"
#include "text/text_reader.h"
#include "text/text_writer.h"

namespace snipwell {

namespace {

void Trace(bool verbose, const char* line) {
  if (verbose) std::cerr << line << std::endl;
}

}  // namespace

void PreliminaryChecks::Run() {
  CheckCleaning();
  CheckFrontEnd();
  CheckOptimisation();
}

void PreliminaryChecks::CheckCleaning() {
  const bool written = WriteCleanedCandidate();
  Compile(engine.GetArgv());
  // What the disk did not take as a whole must not replace a whole program.
  if (ShowsSameError() && written) {
    engine.Update();
    Trace(settings.verbose, "Removing excess spaces and comments from stream");
  } else {
    engine.Restore();
    Trace(settings.verbose, "Not removing excess from stream");
  }
  CopyTextFile(engine.GetIsolatedFileName(), engine.GetCandidateFileName());
}

void PreliminaryChecks::CheckFrontEnd() {
  ArgumentVector& vector = VectorWith("/Zs");
  Compile(vector.Get());
  if (ShowsSameError()) {
    Adopt(vector);
    Trace(settings.verbose, "Using front-end only of compiler");
  } else {
    DropOption();
    Trace(settings.verbose, "Using full compiler");
  }
}

void PreliminaryChecks::CheckOptimisation() {
  ArgumentVector& vector = VectorWith("/Od");
  Compile(vector.Get());
  if (settings.verbose) {
    const std::string asterisks(28, '*');
    std::cerr << asterisks << std::endl
              << "Total pretime in seconds: " << preliminarySeconds << std::endl
              << asterisks << std::endl;
  }
  if (ShowsSameError()) {
    Trace(settings.verbose, "Using NO optimizations");
    Adopt(vector);
  } else {
    DropOption();
    Trace(settings.verbose, "Using given optimizations");
  }
}

/// Writes the isolated file without comments and excess white space into the candidate file. False,
/// reported, when it could not be written as a whole.
bool PreliminaryChecks::WriteCleanedCandidate() const {
  const std::string candidateFileName = engine.GetCandidateFileName();
  TextReader in(engine.GetIsolatedFileName(), LineEnds::Native);
  TextWriter out(candidateFileName);
  StreamCleaner(in, out).Run();
  const bool written = out.Close() && !in.Failed();
  if (!written) ReportError("Cannot write candidate file", candidateFileName.c_str());
  return written;
}

/// Compiles the candidate file; only the output counts, not the status.
void PreliminaryChecks::Compile(char** argv) {
  const std::time_t before = platform::CurrentTime();
  RunCompiler(settings.compilerPath.c_str(), settings.errorFileName.c_str(), arguments.GetSize(),
              argv);
  preliminarySeconds += std::difftime(platform::CurrentTime(), before);
}

bool PreliminaryChecks::ShowsSameError() const { return engine.GetErrorMatch().Scan(false); }

/// The argument vector with `option` just before the candidate file.
ArgumentVector& PreliminaryChecks::VectorWith(const char* option) {
  arguments.Add(option, engine.GetArgCount() - 1);
  return vectors.emplace_back(arguments);
}

void PreliminaryChecks::Adopt(ArgumentVector& vector) {
  engine.SetArgv(vector.Get());
  engine.SetArgCount(engine.GetArgCount() + 1);
}

void PreliminaryChecks::DropOption() { arguments.Remove(engine.GetArgCount() - 1); }

}  // namespace snipwell
