// The engine's construction and end: the two working files, the compiler's last argument, and the
// reference error.

#include "reduce/file_org.h"

#include <cstdlib>
#include <iostream>

#include "compile/run_compiler.h"
#include "text/file_helpers.h"

namespace snipwell {

namespace {

/// The name of a working file: the last "." of the whole name, directory part included, becomes
/// ".kind.". A name without any "." is followed by the kind, without a separator.
std::string WorkingName(const std::string& sourceName, const std::string& kind) {
  const std::size_t dot = sourceName.rfind('.');
  if (dot == std::string::npos) return sourceName + kind;
  return sourceName.substr(0, dot) + '.' + kind + '.' + sourceName.substr(dot + 1);
}

}  // namespace

FileOrg::FileOrg(int sourceIsCpp, const std::string& sourceName, const ErrorMatch& driverMatch,
                 const std::string& compiler, const std::string& outputFileName,
                 std::time_t runStart, double initialSeconds, double limitMinutes, bool traceLines,
                 int engineArgCount, char** engineArgv)
    : isolatedFileName(WorkingName(sourceName, "tsf")),
      candidateFileName(WorkingName(sourceName, "fut")),
      compilerPath(compiler),
      errorFileName(outputFileName),
      argv(engineArgv),
      argCount(engineArgCount),
      errorMatch(driverMatch),
      startTime(runStart),
      timeoutMinutes(limitMinutes),
      compileSeconds(initialSeconds),
      isCpp(sourceIsCpp),
      verbose(traceLines),
      lastArgument(candidateFileName) {
  argv[argCount - 1] = lastArgument.data();
  if (verbose) TraceArguments();
  TakeReference(MakeWorkingFiles(sourceName));
}

FileOrg::~FileOrg() {
  const std::string asterisks(35, '*');
  std::cerr << asterisks << std::endl
            << "FileOrg Compiler Time in seconds: " << compileSeconds << std::endl
            << asterisks << std::endl;
}

void FileOrg::TraceArguments() const {
  std::cerr << "ARGC: " << argCount << std::endl;
  for (int i = 0; i < argCount; ++i) {
    std::cerr << "ARGV[" << i << "]: " << argv[i] << std::endl;
  }
}

/// False when the candidate file could not be written as a whole.
bool FileOrg::MakeWorkingFiles(const std::string& sourceName) {
  ClaimFile(isolatedFileName, sourceName);
  ClaimFile(candidateFileName, sourceName);
  CopyTextFile(sourceName, isolatedFileName);
  return CopyTextFile(sourceName, candidateFileName);
}

/// Takes the reference from a compilation of the candidate file, since an error's text can hold the
/// name of the file. Without a matching line the driver's reference stays; so it does when the
/// candidate is cut off, for that can show an error which the source does not have.
void FileOrg::TakeReference(bool candidateIsWhole) {
  const int status = RunCompiler(compilerPath.c_str(), errorFileName.c_str(), argCount, argv);
  if (status == NotStarted) {
    std::cout << "Could not run the compiler" << std::endl;
    std::exit(EXIT_FAILURE);
  }
  errorMatch.Scan(candidateIsWhole);
}

}  // namespace snipwell
