#include "snip/help.h"

#include <iostream>

namespace snipwell {

namespace {

// Trailing blanks are part of the lines.
constexpr const char* kHelpLines[] = {
    "snip help",
    "---------",
    "snip ",
    "/COMPILER=<compiler_path>                   (required)",
    "/LOGFILE=<logfile_path>                     (required, logfile contains completion log)",
    "[/ERRORMATCH=<matching_criteria_file_path>] (default is ErrorMatch.txt)",
    "[/VERBOSE]                                  (prints out all the details)",
    "[/HELP or /?]                               (displays this message)",
    "source_file ",
    "",
    "source_file.suffix is any K&R C, ANSI C, or C++ file",
    "",
    "Example: snip /compiler=\\VexlabEnv\\COMPIL~1.0K\\bin\\qcx.exe /logfile=zarf.log zarf.i",
    "",
    "Note:",
    "---------------",
    "If preprocessor directives( like #line, #ifdef, #endif) cause problems,",
    "use qcx with /EP /P options to create a .i file.",
    "Process the .i file through snip like you would the original C/C++ file",
    "Example: qcx /EP /P <orig_file.cpp>",
    "followed by snip call on orig_file.i",
    "",
    "FILES PRODUCED:",
    "---------------",
    "source_file.tsf.suffix     the isolated code",
    "source_file.ZEDR_errfile   the results of the last run of the compiler",
    "logfile_path               ",
};

}  // namespace

void PrintHelp() {
  for (const char* line : kHelpLines) std::cout << line << std::endl;
}

}  // namespace snipwell
