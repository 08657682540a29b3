// The clock checks after each compilation: a progress line every quarter of an hour, and the time
// limit.

#include <iostream>
#include <string>

#include "platform/clock.h"
#include "reduce/file_org.h"

namespace snipwell {

namespace {

constexpr int kReportInterval = 900;  // seconds
constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsPerHour = 3600;

/// The next quarter of an hour to report, counted from 1. One for the whole process.
int reportCount = 1;

bool ReportIsDue(double elapsed) {
  return static_cast<double>(reportCount) * kReportInterval < elapsed;
}

/// Writes hours:minutes:seconds, each without leading zeros.
void ReportProgress(double elapsed) {
  const auto seconds = static_cast<long long>(elapsed);
  std::cerr << "Total time so far is " << seconds / kSecondsPerHour << ':'
            << seconds % kSecondsPerHour / kSecondsPerMinute << ':' << seconds % kSecondsPerMinute
            << std::endl;
}

void ReportTimeout(double limitMinutes) {
  const std::string asterisks(84, '*');
  std::cerr << asterisks << std::endl
            << "Timeout limit of " << limitMinutes
            << " minutes exceeded, exitting as quickly as possible" << std::endl
            << asterisks << std::endl;
}

}  // namespace

void FileOrg::CheckClock() const {
  const double elapsed = std::difftime(platform::CurrentTime(), startTime);
  if (ReportIsDue(elapsed)) {
    ReportProgress(elapsed);
    // A compilation that passes several marks gets one line.
    while (ReportIsDue(elapsed)) ++reportCount;
  }
  if (timeoutMinutes != 0 && timeoutMinutes * kSecondsPerMinute < elapsed) {
    ReportTimeout(timeoutMinutes);
    throw elapsed;
  }
}

}  // namespace snipwell
