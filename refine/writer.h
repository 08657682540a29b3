#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "refine/program.h"

namespace snipwell {

/// The text of a whole program, from which a writer copies.
struct Rendering {
  std::string text;
  std::vector<std::uint32_t> ends;  ///< of each word, where it ends in the text
  std::vector<bool> inDirective;    ///< of each word, whether what follows it stands in a directive
};

/// Writes words of a program, one after the other. Tokens that no blank parted stay together;
/// others are parted where they would be read as one.
class Writer {
 public:
  /// Borrows the program. What it writes goes over `space`, whose memory is used again.
  explicit Writer(const Program& wholeProgram, std::string space = {})
      : program(wholeProgram), text(std::move(space)) {
    text.clear();
  }

  static Rendering WriteWhole(const Program& program);

  /// Makes room for a text of so many bytes.
  void Reserve(std::size_t bytes) { text.reserve(bytes); }
  void Append(const Word& word);
  /// Appends words of the program that `whole` is of, at least one, most of them in one go.
  void Append(Range range, const Rendering& whole);
  /// What was written.
  std::string Take() { return std::move(text); }

 private:
  void AppendGap(const Word& word);

  const Program& program;
  std::string text;
  std::optional<Word> before;
  bool inDirective = false;
};

/// True when two tokens that stand side by side without a blank may be read as others.
bool MergeWhenJoined(std::string_view left, std::string_view right);

}  // namespace snipwell
