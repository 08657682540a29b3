#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "invariants.h"

namespace snipwell {

/// "StartParen EndParen | EndHeader | StartBody EndBody | End"
inline std::string Marks(const ObjOrg& object) {
  return At(object.GetStartParen()) + " " + At(object.GetEndParen()) + " | " +
         At(object.GetEndHeader()) + " | " + At(object.GetStartBody()) + " " +
         At(object.GetEndBody()) + " | " + At(object.GetEnd());
}

/// The name of a type, "{}" for a Block, "!" for an Error: "Function{}".
inline std::string Kind(Level level, const ObjOrg& object) {
  static const std::vector<std::string> fileTypes = {
      "None",      "Scope",    "Class",     "Struct",          "Declaration",
      "Directive", "Function", "Prototype", "FunctionTrailer", "ClassDeclaration"};
  static const std::vector<std::string> bodyTypes = {
      "None", "?", "?", "DoStatement", "Statement", "Directive", "BlockStatement"};
  const std::vector<std::string>& types = level == Level::File ? fileTypes : bodyTypes;
  return types.at(static_cast<std::size_t>(object.GetType())) + (object.GetBlock() ? "{}" : "") +
         (object.GetError() ? "!" : "");
}

/// A name and the objects, each "kind|text", into which their texts, joined, are to be cut.
struct ScanRow {
  const char* name;
  std::vector<std::string> objects;
};

/// The objects of `text`, read so that a block of the reader ends after `edge` of its characters.
/// A declaration stands before it, and a blank, since that scan takes one character more.
inline std::vector<std::string> Objects(Level level, const std::string& text, std::size_t edge) {
  constexpr std::size_t kBlock = std::size_t{64} * 1024;
  const std::string whole = std::string(kBlock - edge - 2, 'a') + "; " + text;
  std::vector<std::string> found;
  TextReader in = TextReader::OverMemory(whole);
  Position position;
  for (const ObjOrg& object : Scan(level, whole)) {
    found.push_back(Kind(level, object) + "|");
    while (position < object.GetEnd() && !in.AtEnd()) found.back() += position.Get(in);
  }
  found.erase(found.begin());
  found.at(0).erase(found.at(0).find('|') + 1, 1);
  return found;
}

/// The same wherever a block ends.
inline void ExpectObjects(Level level, const std::vector<ScanRow>& rows) {
  for (const ScanRow& row : rows) {
    std::string text;
    for (const std::string& object : row.objects) text += object.substr(object.find('|') + 1);
    for (std::size_t edge = 0; edge <= text.size(); ++edge) {
      EXPECT_EQ(Objects(level, text, edge), row.objects) << row.name << ", block ends at " << edge;
    }
  }
}

/// A text and the marks of one of its objects.
struct MarksRow {
  std::string text;
  std::size_t object;
  std::string marks;
};

inline void ExpectMarks(Level level, const std::vector<MarksRow>& rows) {
  for (const MarksRow& row : rows) {
    EXPECT_EQ(Marks(Scan(level, row.text).at(row.object)), row.marks) << row.text;
  }
}

using Strings = std::vector<std::string>;

/// Tries `text` and every text that goes on from it by up to `more` pieces, until `complaint` has
/// something to say.
template <typename Complaint>
bool TryEveryText(const Strings& pieces, int more, Complaint complaint, std::string text = "") {
  const std::string found = complaint(text);
  EXPECT_EQ(found, "") << testing::PrintToString(text);
  return found.empty() && (more == 0 || std::all_of(pieces.begin(), pieces.end(), [&](auto& piece) {
                             return TryEveryText(pieces, more - 1, complaint, text + piece);
                           }));
}

inline Strings Characters(const std::string& characters) {
  Strings pieces;
  for (const char c : characters) pieces.emplace_back(1, c);
  return pieces;
}

}  // namespace snipwell
