#include "snip_cc/options.h"

#include <algorithm>
#include <cstdlib>

#include "compile/compiler_name.h"

namespace snipwell::snip_cc {

namespace {

const std::string kCompiler = "--cc=";
const std::string kLimit = "--limit=";
const std::string kTest = "--test=";

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The driver of the source's language.
std::string DefaultCompiler(const std::string& source) {
  return EndsWith(source, ".c") || EndsWith(source, ".i") ? "cc" : "c++";
}

std::string Translated(const std::string& argument) {
  if (argument == "/Zs") return "-fsyntax-only";
  if (argument == "/Od") return "-O0";
  if (argument == "/c") return "-c";
  return argument;
}

bool ParseLimit(const std::string& value, double& seconds) {
  char* end = nullptr;
  seconds = std::strtod(value.c_str(), &end);
  constexpr double kMost = 1e8;  // some years
  return end != value.c_str() && *end == '\0' && seconds > 0 && seconds <= kMost;
}

/// True when the argument is one of the adapter's own, whose value it has set.
bool SetOption(const std::string& argument, Options& options) {
  if (StartsWith(argument, kCompiler)) {
    options.compiler = argument.substr(kCompiler.size());
  } else if (StartsWith(argument, kTest)) {
    options.testCommand = argument.substr(kTest.size());
    if (options.testCommand.empty()) options.complaint = "--test= names no command";
  } else if (StartsWith(argument, kLimit)) {
    if (!ParseLimit(argument.substr(kLimit.size()), options.limitSeconds)) {
      options.complaint = argument + " is no number of seconds";
    }
  } else if (argument == "--valid") {
    options.mustBeValid = true;
  } else if (argument == "--first-line") {
    options.firstLine = true;
  } else {
    return false;
  }
  return true;
}

/// The first of the options that the tool tries on its own.
std::string TriedOption(const std::vector<std::string>& arguments) {
  const auto isTried = [](const std::string& text) { return text == "/Zs" || text == "/Od"; };
  const auto tried = std::find_if(arguments.begin(), arguments.end(), isTried);
  return tried == arguments.end() ? std::string() : *tried;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  bool plainOptions = false;
  for (const std::string& argument : arguments) {
    if (SetOption(argument, options)) continue;
    if (argument == "--plain-options") {
      plainOptions = true;
      continue;
    }
    options.speaksCl = options.speaksCl || argument == "--driver-mode=cl";
    options.arguments.push_back(argument);
  }
  if (!options.testCommand.empty()) options.mustBeValid = options.firstLine = false;
  if (plainOptions) options.refused = TriedOption(options.arguments);
  if (!options.arguments.empty()) options.source = options.arguments.back();
  if (options.source.empty()) options.complaint = "no source file given";
  options.speaksCl = options.speaksCl || IsClStyle(StyleOf(options.compiler));
  if (!options.speaksCl) {
    for (std::string& argument : options.arguments) argument = Translated(argument);
  }
  if (options.compiler.empty()) options.compiler = DefaultCompiler(options.source);
  return options;
}

}  // namespace snipwell::snip_cc
