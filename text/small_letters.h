#pragma once

#include <cctype>
#include <string>

namespace snipwell {

/// The text with small letters for capital ones, those of ASCII: as Windows compares names.
inline std::string InSmallLetters(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace snipwell
