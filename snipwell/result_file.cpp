#include "snipwell/result_file.h"

#include <filesystem>
#include <iterator>
#include <utility>

#include "platform/files.h"
#include "snipwell/exit_status.h"

namespace snipwell {

ResultFile::ResultFile(std::string fileName, bool mayWriteOver) : name(std::move(fileName)) {
  if (!mayWriteOver && std::filesystem::exists(name)) {
    throw RunEnd(Surroundings, name + " exists and is no result of an earlier run: give another " +
                                   "name with -o, or --force to write over it");
  }
}

void ResultFile::Write(const std::string& text) {
  const std::string next = name + ".new";
  std::ofstream out(next, std::ios::binary);
  out << text;
  out.close();
  if (!out || !platform::RenameOver(next, name)) {
    throw RunEnd(Surroundings, "cannot write " + name + ": is there room, and the right to?");
  }
}

std::string ReadSource(const std::string& fileName) {
  std::ifstream in(fileName, std::ios::binary);
  if (!in || std::filesystem::is_directory(fileName)) {
    throw RunEnd(Surroundings, "cannot read " + fileName);
  }
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace snipwell
