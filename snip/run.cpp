#include "snip/run.h"

#include <iostream>

#include "platform/clock.h"
#include "snip/command_line.h"
#include "snip/failure_confirmation.h"
#include "snip/run_settings.h"
#include "text/string_array.h"

namespace snipwell {

int Run(int argc, char** argv, char** /*envp*/) {
  RunSettings settings;
  settings.startTime = platform::CurrentTime();
  std::cout << "***SNIPWELL ***" << std::endl;
  std::cerr << "INITIAL ARGUMENTS:" << std::endl << StringArray(argc, argv) << std::endl;
  if (const auto result = ParseCommandLine(argc, argv, settings)) return *result;
  return ConfirmFailure(settings);
}

}  // namespace snipwell
