// Parses the command line, in this order: argument files, quotes, help, verbose, language, compiler
// and log file, criteria file, time limit, compile-only option, compiler-output file. The tool's
// own options leave the list; whatever remains is the compiler's. Of each option the first
// spelling, in the order of its table, that stands anywhere in the list decides, and of that
// spelling its first position; any other occurrence stays with the compiler.

#include "snip/command_line.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iostream>
#include <limits>
#include <string>

#include "snip/argument_files.h"
#include "snip/help.h"

namespace snipwell {

namespace {

constexpr int kAbsent = -1;

using Spellings = std::initializer_list<const char*>;

const Spellings kHelp = {"-HELP", "/HELP", "-help", "/help", "-?", "/?"};
const Spellings kVerbose = {"-VERBOSE", "/VERBOSE", "-verbose", "/verbose"};
const Spellings kCSource = {"-TC", "/TC"};
const Spellings kCppSource = {"-TP", "/TP"};
const Spellings kCompiler = {"/COMPILER=", "-COMPILER=", "/compiler=", "-compiler="};
const Spellings kLogFile = {"/LOGFILE=", "-LOGFILE=", "/logfile=", "-logfile="};
const Spellings kCriteria = {"/ERRORMATCH=", "-ERRORMATCH=", "/errormatch=", "-errormatch="};
const Spellings kTimeout = {"/TIMEOUT=", "-TIMEOUT="};
const Spellings kCompileOnly = {"/c", "-c"};

/// Position of an option that is a whole argument.
int FindOption(const StringArray& arguments, const Spellings& spellings) {
  for (const char* spelling : spellings) {
    const int position = arguments.Find(spelling);
    if (position != kAbsent) return position;
  }
  return kAbsent;
}

/// Position of an option that is followed by its value.
int FindValueOption(const StringArray& arguments, const Spellings& spellings) {
  for (const std::string spelling : spellings) {
    const int position = arguments.FindPrefix(spelling, static_cast<unsigned int>(spelling.size()));
    if (position != kAbsent) return position;
  }
  return kAbsent;
}

/// An option with a value counts only between the program's name and the last argument.
bool IsUsable(int position, const StringArray& arguments) {
  return position > 0 && position + 1 < arguments.GetSize();
}

/// The text after the "=" of the option.
std::string ValueOf(const std::string& argument) { return argument.substr(argument.find('=') + 1); }

std::string Last(const StringArray& arguments) { return arguments.Get(arguments.GetSize() - 1); }

void StripQuotes(StringArray& arguments) {
  for (int i = 0; i < arguments.GetSize(); ++i) {
    const std::string argument = arguments.Get(i);
    if (argument.empty() || argument.front() != '"' || argument.back() != '"') continue;
    arguments.Set(i, argument.size() == 1 ? "" : argument.substr(1, argument.size() - 2));
  }
}

bool TakeVerbose(StringArray& arguments) {
  const int position = FindOption(arguments, kVerbose);
  if (position <= 0) return false;
  arguments.Remove(position);
  return true;
}

/// A name without any "." counts as C++: neither text is found, and the two results are equal.
bool HasCppSuffix(const std::string& name) { return name.rfind('.') == name.rfind(".cpp"); }

bool IsCpp(const StringArray& arguments, bool verbose) {
  const int tc = FindOption(arguments, kCSource);
  const int tp = FindOption(arguments, kCppSource);
  if (verbose) std::cerr << "TC: " << tc << "  TP: " << tp << std::endl;
  if (tp != kAbsent && tp > tc) return true;
  if (tc != kAbsent) return false;
  return HasCppSuffix(Last(arguments));
}

void TraceLanguage(bool isCpp) {
  const std::string asterisks(42, '*');
  std::cerr << asterisks << std::endl
            << "FileType is " << (isCpp ? "C++" : "C") << std::endl
            << asterisks << std::endl;
}

std::optional<RunResult> TakeCompilerAndLogFile(RunSettings& settings) {
  StringArray& arguments = settings.arguments;
  const int compiler = FindValueOption(arguments, kCompiler);
  const int logFile = FindValueOption(arguments, kLogFile);
  if (!IsUsable(compiler, arguments)) {
    std::cerr << "ERROR: Cannot determine which compiler to use" << std::endl
              << "       Use /COMPILER <COMPILER_PATH> argument to specify" << std::endl;
    return NoCompiler;
  }
  settings.compilerPath = ValueOf(arguments.Get(compiler));
  std::cerr << "Compiler Path is: " << settings.compilerPath << std::endl;
  if (!IsUsable(logFile, arguments)) {
    std::cerr << "ERROR: Cannot determine where to write to Snipwell logfile" << std::endl
              << "       Use /LOGFILE <Logfile_path and logfile_name>> argument to specify"
              << std::endl;
    return NoLogFile;
  }
  settings.logFilePath = ValueOf(arguments.Get(logFile));
  std::cerr << "Logfile Path is: " << settings.logFilePath << std::endl;
  arguments.Remove(std::max(compiler, logFile));
  arguments.Remove(std::min(compiler, logFile));
  return std::nullopt;
}

void TakeCriteriaFile(RunSettings& settings) {
  const int position = FindValueOption(settings.arguments, kCriteria);
  if (!IsUsable(position, settings.arguments)) return;
  settings.criteriaFileName = ValueOf(settings.arguments.Remove(position));
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The number that the digits at the start of `text` form, or the largest one if it is larger.
int LeadingNumber(const std::string& text) {
  constexpr int kLargest = std::numeric_limits<int>::max();
  long long number = 0;
  for (std::size_t i = 0; i < text.size() && IsDigit(text[i]) && number < kLargest; ++i) {
    number = number * 10 + (text[i] - '0');
  }
  return static_cast<int>(std::min<long long>(number, kLargest));
}

std::optional<RunResult> TakeTimeout(RunSettings& settings) {
  const int position = FindValueOption(settings.arguments, kTimeout);
  if (!IsUsable(position, settings.arguments)) return std::nullopt;
  const std::string value = ValueOf(settings.arguments.Remove(position));
  if (value.empty() || !IsDigit(value.front())) {
    std::cerr << "ERROR: /TIMEOUT=value, value \"" << value << "\" is invalid." << std::endl
              << "Value must be a number." << std::endl;
    return InvalidTimeout;
  }
  settings.timeoutMinutes = LeadingNumber(value);
  return std::nullopt;
}

void AddCompileOnly(StringArray& arguments) {
  if (FindOption(arguments, kCompileOnly) == kAbsent) arguments.Add("-c", arguments.GetSize() - 1);
}

void TraceArguments(const StringArray& arguments) {
  for (int i = 0; i < arguments.GetSize(); ++i) {
    std::cout << "ARGNUM " << i << ": " << arguments.Get(i) << std::endl;
  }
}

}  // namespace

std::optional<RunResult> ParseCommandLine(int argc, const char* const* argv,
                                          RunSettings& settings) {
  StringArray& arguments = settings.arguments;
  arguments = ExpandArgumentFiles(StringArray(argc, argv));
  StripQuotes(arguments);
  if (FindOption(arguments, kHelp) > 0) {
    PrintHelp();
    return NothingToIsolate;
  }
  settings.verbose = TakeVerbose(arguments);
  settings.isCpp = IsCpp(arguments, settings.verbose);
  if (settings.verbose) TraceLanguage(settings.isCpp);
  if (const auto result = TakeCompilerAndLogFile(settings)) return result;
  TakeCriteriaFile(settings);
  if (const auto result = TakeTimeout(settings)) return result;
  AddCompileOnly(arguments);
  if (settings.verbose) TraceArguments(arguments);
  // The source is opened by its name up to a NUL byte, which a word of an argument file can hold;
  // the suffix must not stand behind one, or the name would be the source's own.
  const std::string source = Last(arguments);
  settings.errorFileName = source.substr(0, source.find('\0')) + ".ZEDRerrfile";
  std::cerr << "ERRORFILE NAME: " << std::endl << settings.errorFileName << std::endl;
  return std::nullopt;
}

}  // namespace snipwell
