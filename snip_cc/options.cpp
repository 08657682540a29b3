#include "snip_cc/options.h"

#include <cstdlib>

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

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  bool clMode = false;
  for (const std::string& argument : arguments) {
    if (StartsWith(argument, kCompiler)) {
      options.compiler = argument.substr(kCompiler.size());
    } else if (StartsWith(argument, kTest)) {
      options.testCommand = argument.substr(kTest.size());
      if (options.testCommand.empty()) options.complaint = "--test= names no command";
    } else if (StartsWith(argument, kLimit)) {
      if (!ParseLimit(argument.substr(kLimit.size()), options.limitSeconds)) {
        options.complaint = argument + " is no number of seconds";
      }
    } else {
      clMode = clMode || argument == "--driver-mode=cl";
      options.arguments.push_back(argument);
    }
  }
  if (!options.arguments.empty()) options.source = options.arguments.back();
  if (options.source.empty()) options.complaint = "no source file given";
  const std::string program = options.compiler.substr(options.compiler.rfind('/') + 1);
  if (!clMode && !StartsWith(program, "clang-cl")) {
    for (std::string& argument : options.arguments) argument = Translated(argument);
  }
  if (options.compiler.empty()) options.compiler = DefaultCompiler(options.source);
  return options;
}

}  // namespace snipwell::snip_cc
