#include "snipwell/settings.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>

#include "platform/machine.h"
#include "snipwell/exit_status.h"
#include "snipwell/stages.h"
#include "snipwell/version.h"

namespace snipwell {

namespace {

const char kUsage[] =
    "  snipwell [OPTIONS] COMPILER ... SOURCE     put it before the command that fails\n"
    "  snipwell [OPTIONS] -p BUILD SOURCE         the command is in compile_commands.json\n"
    "  snipwell [OPTIONS] pool-3f21aa.sh          clang's crash script\n"
    "  snipwell [OPTIONS] ccX1.out                gcc's file from -freport-bug\n"
    "  snipwell [OPTIONS] --test=COMMAND SOURCE   a script decides\n";

/// Fits on one screen.
class Help : public CLI::Formatter {
 public:
  Help() { column_width(24); }

  std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override {
    return std::string(kUsage) + '\n';
  }
};

/// Adds the options of one group of the help.
class Group {
 public:
  Group(CLI::App& program, const char* groupName) : app(program), name(groupName) {}

  template <typename Value>
  CLI::Option* Add(const char* option, Value& value, const char* type, const char* help) {
    return app.add_option(option, value, help)->type_name(type)->group(name);
  }
  void Flag(const char* option, bool& value, const char* help) {
    app.add_flag(option, value, help)->group(name);
  }

 private:
  CLI::App& app;
  const char* name;
};

/// A check of an option's value that the help does not spell out.
CLI::Validator Quiet(CLI::Validator check) { return check.description(""); }

CLI::Validator Seconds() {
  const auto check = [](const std::string& word) -> std::string {
    constexpr double kMost = 1e9;  // some thirty years
    double seconds = 0;
    const bool isNumber = CLI::detail::lexical_cast(word, seconds);
    if (isNumber && seconds > 0 && seconds <= kMost) return "";
    return word + " is no number of seconds (above 0, at most 1e9)";
  };
  return {check, ""};
}

void AddWaysIn(CLI::App& app, Settings& settings) {
  Group group(app, "The program");
  group.Add("-p", settings.database, "BUILD", "folder of compile_commands.json");
  group.Add("--test", settings.test, "COMMAND", "ends with 0 when a program is interesting");
  group.Add("--wrong-code", settings.wrongCode, "COMMAND",
            "built with this too, it behaves in another way");
}

void AddFailure(CLI::App& app, Settings& settings) {
  Group group(app, "The failure");
  group.Add("--match", settings.match, "TEXT", "the line of the output that holds TEXT");
  group.Flag("--list", settings.list, "list the lines to choose from, and end");
  group.Add("--accepted-by", settings.acceptedBy, "COMMAND", "a compiler that has to accept it");
  group.Flag("--allow-errors", settings.allowErrors, "errors may come to stand before a crash");
  group.Add("--repeat", settings.repeat, "N", "a program has to fail N times of N")
      ->check(Quiet(CLI::Range(1, 1000)));
}

void AddLimits(CLI::App& app, Settings& settings) {
  Group group(app, "Time and processors");
  group.Add("-j,--jobs", settings.jobs, "N", "compilations at a time; all processors otherwise")
      ->check(Quiet(CLI::Range(1, 1024)));
  group.Add("--timeout", settings.timeoutSeconds, "SECONDS", "stop then, with the best so far")
      ->check(Seconds());
  group.Add("--limit", settings.limitSeconds, "SECONDS", "a compilation that takes longer hangs")
      ->check(Seconds())
      ->capture_default_str();
  group.Add("--launch", settings.launch, "COMMAND", "put before every compilation: srun -n1");
  group.Add("--work", settings.work, "FOLDER", "where the tries are made: a shared disk")
      ->check(Quiet(CLI::ExistingDirectory));
  group.Add("--stages", settings.stages, "LIST", "of preprocess,plain,snip,refine,options,layout")
      ->delimiter(',')
      ->allow_extra_args(false)  // the words behind it are the compiler's
      ->check(Quiet(CLI::IsMember(StageNames())));
}

void AddOutput(CLI::App& app, Settings& settings) {
  Group group(app, "What is written");
  group.Add("-o", settings.output, "FILE", "the result; SOURCE.min.SUFFIX otherwise");
  group.Flag("--force", settings.force, "write over a file that is no earlier result");
  group.Flag("--resume", settings.resume, "go on from the earlier result");
  group.Add("--html", settings.html, "FILE", "the report as a page");
  group.Add("--json", settings.json, "FILE", "the report for machines");
  group.Add("--trace", settings.trace, "FILE",
            "each step: seconds, bytes, tokens, compilations, pass");
  group.Flag("-q,--quiet", settings.quiet, "say only what went wrong");
  group.Flag("-v,--verbose", settings.verbose, "say more");
}

std::optional<int> Complain(const std::string& sentence) {
  std::cerr << "snipwell: " << sentence << '\n';
  return BadUsage;
}

/// An option that lacks its value, which would be the next word; empty when there is none.
std::string Valueless(const CLI::App& app, int argc, const char* const* argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word.size() < 3 || word.compare(0, 2, "--") != 0 || word.back() != '=') continue;
    const std::string name = word.substr(0, word.size() - 1);
    if (app.get_option_no_throw(name) != nullptr) return word;
  }
  return "";
}

/// An option behind the compiler, which would get it, that only this program knows; empty when
/// there is none.
std::string Misplaced(const CLI::App& app, const std::vector<std::string>& words) {
  const std::string shared[] = {"--help", "--version", "--quiet", "--verbose"};
  for (const std::string& word : words) {
    const std::string name = word.substr(0, word.find('='));
    if (name.compare(0, 2, "--") != 0 || app.get_option_no_throw(name) == nullptr) continue;
    if (std::find(std::begin(shared), std::end(shared), name) == std::end(shared)) return word;
  }
  return "";
}

std::optional<int> RefuseUnusable(const CLI::App& app, const Settings& settings) {
  if (settings.words.empty()) {
    return Complain(std::string("what fails? Put it before the command that fails:\n") + kUsage +
                    "snipwell --help tells the options");
  }
  const std::string& first = settings.words.front();
  if (first.size() > 1 && first[0] == '-') {
    return Complain("there is no option " + first + "; snipwell --help tells which there are");
  }
  const std::string misplaced = Misplaced(app, settings.words);
  if (!misplaced.empty()) {
    return Complain("options of snipwell stand before the compiler: snipwell " + misplaced + ' ' +
                    first + " ...");
  }
  if (!settings.test.empty() && !settings.wrongCode.empty()) {
    return Complain("--test= and --wrong-code= are two judges: choose one");
  }
  return std::nullopt;
}

}  // namespace

std::optional<int> ParseSettings(int argc, const char* const* argv, Settings& settings) {
  CLI::App app("Reduces a C or C++ program on which a compiler fails, and reports it.");
  app.formatter(std::make_shared<Help>());
  app.prefix_command();
  app.set_version_flag("--version", std::string("snipwell ") + kVersion);
  AddWaysIn(app, settings);
  AddFailure(app, settings);
  AddLimits(app, settings);
  AddOutput(app, settings);
  const std::string valueless = Valueless(app, argc, argv);
  if (!valueless.empty()) return Complain(valueless + " lacks its value");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {
    if (end.get_exit_code() != 0) return Complain(end.what());
    app.exit(end);
    return Reduced;
  }
  settings.words = app.remaining();
  if (!settings.words.empty() && settings.words[0] == "--") {
    settings.words.erase(settings.words.begin());
  }
  if (settings.jobs == 0) settings.jobs = platform::Processors();
  if (settings.stages.empty()) settings.stages = DefaultStages();
  return RefuseUnusable(app, settings);
}

}  // namespace snipwell
