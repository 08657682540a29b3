// snipwell: one word before the command that fails.
//
//   snipwell [OPTIONS] COMPILER [COMPILER OPTIONS] SOURCE

#include <exception>
#include <filesystem>
#include <iostream>

#include "platform/arguments.h"
#include "platform/console.h"
#include "snipwell/exit_status.h"
#include "snipwell/reduction.h"
#include "snipwell/settings.h"

int main(int argc, char** argv) {
  const snipwell::platform::ConsoleStreams console;
  try {
    snipwell::Settings settings;
    snipwell::platform::Arguments arguments(argc, argv);
    const auto status = snipwell::ParseSettings(arguments.Count(), arguments.Pointers(), settings);
    if (status) return *status;
    return snipwell::Reduce(settings);
  } catch (const snipwell::RunEnd& end) {
    std::cerr << "snipwell: " << end.what() << '\n';
    return end.Status();
  } catch (const std::filesystem::filesystem_error& error) {
    std::cerr << "snipwell: " << error.what()
              << ": is there room, and the right to? TMPDIR names the folder for the tries\n";
    return snipwell::Surroundings;
  } catch (const std::exception& error) {
    std::cerr << "snipwell: " << error.what() << '\n';
    return snipwell::Surroundings;
  }
}
