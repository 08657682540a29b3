#pragma once

namespace snipwell::platform {

/// How a program that was to be run ended.
enum class ProgramEnd {
  ExitedZero,  ///< it ran and ended with exit status 0
  Failed,      ///< it ran and ended with another status, or abnormally
  NotStarted,  ///< there is no such program, or the system could not start it
};

/// Starts `program` with the argument list `argv` (null-terminated, entry 0 included as it stands)
/// and waits until it ends. The program is the name as given if there is such a program, else, when
/// the name has no directory part, the first one in the directories of PATH. A directory or a file
/// that cannot be executed is no program (on Windows, one without a program's suffix; the suffixes
/// are tried behind the name). Of this tool's own descriptors the child inherits the
/// standard ones only, and it starts with the default handling of every signal, but a hang-up that
/// this tool ignores it ignores as well.
ProgramEnd RunProgram(const char* program, char* const* argv);

}  // namespace snipwell::platform
