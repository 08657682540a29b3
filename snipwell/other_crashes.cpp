#include "snipwell/other_crashes.h"

#include <filesystem>
#include <system_error>

namespace snipwell {

namespace {

namespace fs = std::filesystem;

std::string FreeName(const ResultFile& result) {
  std::size_t number = 1;
  while (fs::exists(result.NameBeside("other", number))) ++number;
  return result.NameBeside("other", number);
}

}  // namespace

void OtherCrashes::Note(const Failure& failure, const Place& place, const ResultFile& result) {
  std::error_code error;
  const std::uintmax_t bytes = fs::file_size(place.program, error);
  const auto found = kept.find(failure.headline);
  if (error || (found == kept.end() ? kept.size() == kMost : found->second.bytes <= bytes)) return;
  const std::string file = found == kept.end() ? FreeName(result) : found->second.file;
  fs::remove(file, error);  // one library does not write over a file on Windows
  fs::copy_file(place.program, file, error);
  if (!error) kept[failure.headline] = {file, bytes};
}

std::vector<OtherCrash> OtherCrashes::All() const {
  std::vector<OtherCrash> all;
  for (const auto& [headline, crash] : kept) all.push_back({headline, crash.file});
  return all;
}

}  // namespace snipwell
