#pragma once

// What must hold for every text, for the tests that try many short ones and for the fuzz targets.

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "source/obj_org.h"
#include "text/stream_cleaner.h"
#include "text/text_reader.h"
#include "text/text_writer.h"

namespace snipwell {

inline std::string ReadAll(TextReader in) {
  std::string text;
  char c = '\0';
  while (in.Read(c)) text += c;
  return text;
}

/// A text cleaned, and read back the way the system reads text.
inline std::string Cleaned(const std::string& text) {
  std::string written;
  {
    TextReader in = TextReader::OverMemory(text);
    TextWriter out = TextWriter::IntoMemory(written);
    if (!StreamCleaner(in, out).Run() || !out.Close()) return "failed";
  }
  return ReadAll(TextReader::OverMemory(written));
}

enum class Level { File, Body };

/// All objects of a text, scanned from its first character to its end. Scans that get nowhere are
/// given up when there are more objects than characters.
inline std::vector<ObjOrg> Scan(Level level, const std::string& text, int language = 1) {
  TextReader in = TextReader::OverMemory(text);
  Position position;
  std::vector<ObjOrg> objects;
  for (bool more = !in.IsExhausted(); more; more = !in.AtEnd() && objects.size() <= text.size()) {
    ObjOrg& object = objects.emplace_back(position, static_cast<int>(objects.size()));
    const auto scan = level == Level::File ? &ObjOrg::ScanDeclarations : &ObjOrg::ScanBody;
    (object.*scan)(language, in, position);
  }
  return objects;
}

/// "line:column"
inline std::string At(const Position& position) {
  return std::to_string(position.GetLine()) + ":" + std::to_string(position.GetCol());
}

inline bool IsSame(const Position& a, const Position& b) { return !(a < b) && !(a > b); }

inline bool MarksAreWithin(const ObjOrg& object) {
  const auto before = [&](const Position& mark) { return mark < object.GetStart(); };
  const auto behind = [&](const Position& mark) { return mark > object.GetCurrent(); };
  const Position marks[] = {object.GetEndHeader(), object.GetStartBody(), object.GetEndBody()};
  return std::none_of(std::begin(marks), std::end(marks), before) &&
         std::none_of(std::begin(marks), std::end(marks), behind) &&
         !behind(object.GetStartParen()) && !behind(object.GetEndParen());
}

/// What is wrong with the objects of a text, or "". Each starts where the one before it ended and
/// holds at least one character, so a scan reads every character once, and they make up the text.
inline std::string ComplaintAboutScan(Level level, const std::string& text) {
  const std::vector<ObjOrg> objects = Scan(level, text);
  TextReader in = TextReader::OverMemory(text);
  Position reader;
  Position previous;
  std::string joined;
  for (const ObjOrg& object : objects) {
    if (!IsSame(object.GetStart(), previous)) return "an object starts elsewhere";
    previous = object.GetCurrent();
    if (!IsSame(object.GetEnd(), previous.Previous())) return "an object ends elsewhere";
    if (!(reader < object.GetEnd())) return "an object without text";
    while (reader < object.GetEnd() && !in.AtEnd()) joined += reader.Get(in);
    if (!IsSame(reader, object.GetEnd())) return "an end that no character has";
    if (!MarksAreWithin(object)) return "a mark outside its object";
  }
  return joined == text ? "" : "the objects do not make up the text";
}

/// True when leaving characters out of `whole` can give `part`.
inline bool IsLeftOf(const std::string& part, const std::string& whole) {
  std::size_t found = 0;
  for (const char c : whole) {
    if (found < part.size() && part[found] == c) ++found;
  }
  return found == part.size();
}

}  // namespace snipwell
