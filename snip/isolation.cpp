#include "snip/isolation.h"

#include <array>
#include <ctime>
#include <deque>
#include <iostream>
#include <string>

#include "platform/clock.h"
#include "platform/files.h"
#include "reduce/file_org.h"
#include "snip/preliminary_checks.h"
#include "text/file_helpers.h"
#include "text/string_array.h"
#include "text/text_writer.h"

namespace snipwell {

namespace {

/// Reduces the whole file. Returns the elapsed seconds when the time limit stopped it, else 0.
double ReduceWithinLimit(FileOrg& engine) {
  try {
    engine.Reduce();
  } catch (double elapsed) {
    return elapsed;
  }
  return 0;
}

void TraceArguments(const FileOrg& engine) {
  for (int i = 0; i < engine.GetArgCount(); ++i) {
    std::cerr << "ARG#" << i << ": " << engine.GetArgv()[i] << std::endl;
  }
}

void ReportTotalTime(double seconds) {
  const std::string asterisks(37, '*');
  std::cerr << asterisks << std::endl
            << "TOTAL TIME FOR EVERYTHING:\t" << seconds << std::endl
            << asterisks << std::endl;
}

std::string FormatLocalTime(std::time_t time) {
  std::array<char, 100> buffer{};
  const std::tm* const local = std::localtime(&time);
  if (local == nullptr) return std::string();
  std::strftime(buffer.data(), buffer.size(), "%X on %a, %m/%d/%Y", local);
  return buffer.data();
}

/// Appends the completion line, which names the candidate file. A log file that cannot be opened
/// loses the line without a message.
void AppendCompletionLine(const std::string& logFilePath, const FileOrg& engine,
                          std::time_t endTime) {
  const std::string candidate = engine.GetArgv()[engine.GetArgCount() - 1];
  TextWriter log = TextWriter::Appending(logFilePath);
  const std::string line =
      "File \"" + candidate + "\" completed at " + FormatLocalTime(endTime) + '\n';
  for (const char c : line) log.Put(c);
}

/// True when appending to the log would spoil the source or the isolated code.
bool LogIsProgram(const std::string& logFilePath, const std::string& sourceName,
                  const FileOrg& engine) {
  return platform::IsSameFile(logFilePath, sourceName) ||
         platform::IsSameFile(logFilePath, engine.GetIsolatedFileName());
}

}  // namespace

int Isolate(const RunSettings& givenSettings, ArgumentVector& vector, const ErrorMatch& match) {
  RunSettings settings = givenSettings;
  const std::string sourceName = vector.Get()[vector.Count() - 1];
  std::deque<ArgumentVector> vectors;  // they outlive the engine
  double timeoutMarker = 0;
  {
    FileOrg engine(settings.isCpp ? 1 : 0, sourceName, match, settings.compilerPath,
                   settings.errorFileName, settings.startTime, 0.0, settings.timeoutMinutes,
                   settings.verbose, vector.Count(), vector.Get());
    settings.arguments = StringArray(engine.GetArgCount(), engine.GetArgv());
    PreliminaryChecks(settings, engine, vectors).Run();
    engine.BuildList();
    timeoutMarker = ReduceWithinLimit(engine);
    if (settings.verbose) TraceArguments(engine);
    const std::time_t endTime = platform::CurrentTime();
    ReportTotalTime(std::difftime(endTime, settings.startTime));
    if (LogIsProgram(settings.logFilePath, sourceName, engine)) {
      ReportError("Log file is the program, nothing appended:", settings.logFilePath.c_str());
    } else {
      AppendCompletionLine(settings.logFilePath, engine, endTime);
    }
  }
  std::cerr << (timeoutMarker != 0 ? "Timed out, Error isolation not complete"
                                   : "Error found and isolated")
            << std::endl;
  return Isolated;
}

}  // namespace snipwell
