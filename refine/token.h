#pragma once

#include <cstdint>

namespace snipwell {

enum class TokenKind : unsigned char {
  Blank,           ///< white space, line splices included
  Comment,         ///< to the end of the line, without it, or between its marks
  Name,            ///< identifier or keyword
  Number,          ///< preprocessing number, separators and suffix included
  String,          ///< literal with prefix and suffix, raw or not, or the name of a header
  Character,       ///< literal with prefix and suffix
  Punctuator,      ///< by longest match
  DirectiveStart,  ///< a "#" that is the first on its line
  DirectiveEnd,    ///< the line feed that ends a directive
  Other,           ///< a byte that is no part of a token
};

/// A piece of a text, by its place: bytes `begin` to `begin + length` - 1.
struct Token {
  std::uint32_t begin;
  std::uint32_t length;
  TokenKind kind;
};

inline bool IsBetweenTokens(TokenKind kind) {
  return kind == TokenKind::Blank || kind == TokenKind::Comment;
}

}  // namespace snipwell
