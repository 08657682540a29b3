#pragma once

namespace snipwell {

/// How a compilation ended. The codes are what `RunCompiler` returns.
enum CompilerStatus : int {
  Succeeded = 0,   ///< the compiler ended with exit status 0
  Failed = 1,      ///< it ended with another status, or abnormally
  NotStarted = 2,  ///< it could not be started
};

/// Runs the compiler once and waits for it. `compilerPath` is a path or a name looked up in PATH;
/// `argv` is its null-terminated argument list, entry 0 included. Everything it writes on standard
/// output and standard error goes into `outputFile`, created or truncated, followed by this tool's
/// status lines; the file is complete and closed on return. `argCount` is not used.
///
/// Returns a `CompilerStatus`. When the standard descriptors cannot be saved or redirected, or the
/// file cannot be opened, reports it and ends the process with exit status 1.
int RunCompiler(const char* compilerPath, const char* outputFile, int argCount, char* const* argv);

}  // namespace snipwell
