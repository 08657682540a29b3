#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "refine/token.h"

namespace snipwell {

/// What stands before a word.
enum class Gap : unsigned char { None, Space, Line };

/// A token of a program, with its text in the program's pool.
struct Word {
  std::uint32_t begin;   ///< place of its text in the pool
  std::uint32_t length;  ///< bytes of its text
  std::uint32_t blank;   ///< place in the pool of the blanks and comments that stood before it
  std::uint32_t origin;  ///< byte of the first source at which it, or what it replaces, stood
  TokenKind kind;
  Gap gap;
};

/// Words `begin` to `end` - 1 of a program.
struct Range {
  std::uint32_t begin;
  std::uint32_t end;

  std::uint32_t Size() const { return end - begin; }
};

inline bool Overlap(Range a, Range b) { return a.begin < b.end && b.begin < a.end; }

/// How the blanks of a text are written.
enum class Blanks {
  Needed,    ///< line feeds as they were, otherwise no more than the tokens need to stay apart
  AsWritten  ///< as in the source, with the comments
};

/// A program as a sequence of words, and the pool that holds their texts: the source, and what
/// edits have put in since. A ">>" is two words, so that each can close a template's arguments.
class Program {
 public:
  /// Takes the source apart. It must be shorter than 2 GB.
  explicit Program(std::string source, Blanks writtenBlanks = Blanks::Needed);

  std::size_t Size() const { return words.size(); }
  Blanks WrittenBlanks() const { return blanks; }
  const std::string& Pool() const { return pool; }
  const std::vector<Word>& Words() const { return words; }
  std::string_view Text(std::size_t index) const { return Text(words[index]); }
  std::string_view Text(const Word& word) const {
    return std::string_view(pool).substr(word.begin, word.length);
  }

  /// Puts a text into the pool. Returns its words, which are not part of the program yet.
  std::vector<Word> WordsOf(std::string_view text);
  void SetWords(std::vector<Word> newWords) { words = std::move(newWords); }

  /// The text of some of this program's words.
  std::string Render(Range range) const;
  std::string Render() const;

 private:
  void AppendWords(std::uint32_t from, std::vector<Word>& to) const;

  std::string pool;
  std::vector<Word> words;
  Blanks blanks;
};

}  // namespace snipwell
