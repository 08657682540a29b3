#include <cstdlib>
#include <exception>
#include <iostream>

#include "platform/arguments.h"
#include "platform/console.h"
#include "snip/run.h"
#include "text/file_helpers.h"

int main(int argc, char** argv, char** envp) {
  const snipwell::platform::ConsoleStreams console;
  try {
    snipwell::platform::Arguments arguments(argc, argv);
    std::cout << snipwell::Run(arguments.Count(), arguments.Pointers(), envp) << std::flush;
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    snipwell::ReportError("Unexpected failure:", error.what());
  } catch (...) {
    snipwell::ReportError("Unexpected failure", "");
  }
  return EXIT_FAILURE;
}
