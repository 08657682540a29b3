#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "refine/program.h"
#include "snipwell/line_map.h"

namespace snipwell {

/// Follows the words of a program through its changes back to the text whose lines are known.
class OriginTrail {
 public:
  /// Starts anew: the program is this text.
  void Start(MappedText text);
  /// The program has become another text: its words are found among those it had, in their order.
  /// A word that is nowhere takes the place of the one before it.
  void Follow(const std::string& text);
  /// The program has become this one, whose words carry their places.
  void Follow(const Program& program);

  /// A text of the program as it is, of the same words, as a program whose words carry their
  /// places.
  Program WithPlaces(std::string text, Blanks blanks) const;

  const LineMap& Map() const { return map; }
  /// Where the words stood in the text at the start.
  const std::vector<std::uint32_t>& Places() const { return places; }

 private:
  LineMap map{""};
  std::vector<std::string> texts;     // of the program's words
  std::vector<std::uint32_t> places;  // of the same
};

}  // namespace snipwell
