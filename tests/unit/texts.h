#pragma once

#include <gtest/gtest.h>

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

inline void ExpectObjects(Level level, const std::vector<ScanRow>& rows) {
  for (const ScanRow& row : rows) {
    std::string text;
    for (const std::string& object : row.objects) text += object.substr(object.find('|') + 1);
    for (const int language : {0, 1}) {
      std::vector<std::string> found;
      TextReader in = TextReader::OverMemory(text);
      Position position;
      for (const ObjOrg& object : Scan(level, text, language)) {
        found.push_back(Kind(level, object) + "|");
        while (position < object.GetEnd() && !in.AtEnd()) found.back() += position.Get(in);
      }
      EXPECT_EQ(found, row.objects) << row.name << ", language " << language;
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

}  // namespace snipwell
