#include "snipwell/settings.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "platform/machine.h"
#include "snipwell/exit_status.h"
#include "snipwell/version.h"

namespace snipwell {

namespace {

const char kUsage[] = "snipwell [OPTIONS] COMPILER [COMPILER OPTIONS] SOURCE";

void AddFailure(CLI::App& app, Settings& settings) {
  const std::string group = "The failure";
  app.add_option("--match", settings.match, "the line of the output that holds TEXT counts")
      ->type_name("TEXT")
      ->group(group);
  app.add_option("--test", settings.test,
                 "a script decides: status 0 when a program is interesting")
      ->type_name("COMMAND")
      ->group(group);
  app.add_option("--accepted-by", settings.acceptedBy, "this compiler has to accept the program")
      ->type_name("COMMAND")
      ->group(group);
  app.add_flag("--allow-errors", settings.allowErrors, "errors may come before a crash")
      ->group(group);
  app.add_option("--repeat", settings.repeat, "a program has to fail N times of N")
      ->type_name("N")
      ->check(CLI::Range(1, 1000))
      ->group(group);
}

void AddLimits(CLI::App& app, Settings& settings) {
  const std::string group = "Time and processors";
  app.add_option("-j,--jobs", settings.jobs, "compilations at a time; all processors otherwise")
      ->type_name("N")
      ->check(CLI::Range(1, 1024))
      ->group(group);
  app.add_option("--timeout", settings.timeoutSeconds, "stop then, with the best so far")
      ->type_name("SECONDS")
      ->check(CLI::PositiveNumber)
      ->group(group);
  app.add_option("--limit", settings.limitSeconds, "a first compilation that takes longer hangs")
      ->type_name("SECONDS")
      ->check(CLI::PositiveNumber)
      ->capture_default_str()
      ->group(group);
  app.add_option("--work", settings.work, "where the tries are made")
      ->type_name("FOLDER")
      ->check(CLI::ExistingDirectory)
      ->group(group);
}

void AddOutput(CLI::App& app, Settings& settings) {
  const std::string group = "What is written";
  app.add_option("-o", settings.output, "the result; SOURCE.min.SUFFIX otherwise")
      ->type_name("FILE")
      ->group(group);
  app.add_flag("--force", settings.force, "write over a file that is no earlier result")
      ->group(group);
  app.add_option("--trace", settings.trace, "a line for each step: seconds, bytes, tokens, tries")
      ->type_name("FILE")
      ->group(group);
  app.add_flag("-q,--quiet", settings.quiet, "only what went wrong")->group(group);
  app.add_flag("-v,--verbose", settings.verbose, "also what was tried")->group(group);
}

}  // namespace

std::optional<int> ParseSettings(int argc, const char* const* argv, Settings& settings) {
  CLI::App app("Reduces a C or C++ source on which a compiler fails, and reports it.");
  app.prefix_command();
  app.set_version_flag("--version", std::string("snipwell ") + kVersion);
  AddFailure(app, settings);
  AddLimits(app, settings);
  AddOutput(app, settings);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {
    return app.exit(end) == 0 ? Reduced : BadUsage;
  }
  settings.words = app.remaining();
  if (settings.jobs == 0) settings.jobs = platform::Processors();
  if (!settings.words.empty()) return std::nullopt;
  std::cerr << "snipwell: put it before the command that fails: " << kUsage << '\n';
  return BadUsage;
}

}  // namespace snipwell
