#pragma once

namespace snipwell {

/// The whole tool: parses the command line, confirms the failure and isolates it. Returns the
/// `RunResult` that the caller writes on standard output. `envp` is not used. Ends the process with
/// exit status 1 when the compiler cannot be started or its output cannot be captured.
int Run(int argc, char** argv, char** envp);

}  // namespace snipwell
