#include "text/file_helpers.h"

#include <cstdlib>
#include <iostream>
#include <string_view>

#include "platform/files.h"
#include "text/text_reader.h"
#include "text/text_writer.h"

namespace snipwell {

void ReportError(const char* message, const char* detail) {
  std::cerr << "ERROR: " << message << ' ' << detail << std::endl;
}

bool CopyTextFile(const std::string& from, const std::string& to) {
  if (from == to || platform::IsSameFile(from, to)) return true;
  TextReader in(from, LineEnds::Native);
  TextWriter out(to);
  out.CutOff();  // a tool that is killed must not leave the end of an older text behind the copy
  if (!in.IsOpen()) ReportError("Cannot open input file", from.c_str());
  if (!out.IsOpen()) ReportError("Cannot open output file", to.c_str());
  for (std::string_view text = in.ReadSome(); !text.empty(); text = in.ReadSome()) out.Put(text);
  out.Close();
  if (in.Failed() || out.Failed()) ReportError("Something strange happened", "");
  return !out.Failed();
}

void DetachFile(const std::string& name) {
  if (!platform::LeadsElsewhere(name) || platform::RemoveFile(name)) return;
  ReportError("Cannot replace a link to another file:", name.c_str());
  std::exit(EXIT_FAILURE);
}

void ClaimFile(const std::string& name, const std::string& sourceName) {
  DetachFile(name);
  // The folder of one can be a link to that of the other, and there are systems that hide links.
  if (!platform::IsSameFile(sourceName, name)) return;
  ReportError("Working file is the source:", name.c_str());
  std::exit(EXIT_FAILURE);
}

}  // namespace snipwell
