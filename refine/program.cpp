#include "refine/program.h"

#include <algorithm>
#include <utility>

#include "refine/tokenizer.h"
#include "refine/writer.h"

namespace snipwell {

namespace {

Gap GapOf(std::string_view blank) {
  if (blank.empty()) return Gap::None;
  return blank.find('\n') == std::string_view::npos ? Gap::Space : Gap::Line;
}

/// A word of two angles is two words, of which the second one has no gap.
bool ClosesTwice(const Word& word, std::string_view text) {
  return word.kind == TokenKind::Punctuator && text.size() > 1 && text.substr(0, 2) == ">>";
}

}  // namespace

Program::Program(std::string source, Blanks writtenBlanks)
    : pool(std::move(source)), blanks(writtenBlanks) {
  AppendWords(0, words);
}

/// Appends the words of the pool from the byte `from` on.
void Program::AppendWords(std::uint32_t from, std::vector<Word>& to) const {
  const std::string_view text = std::string_view(pool).substr(from);
  std::uint32_t blank = from;
  for (const Token& token : Tokenize(text)) {
    if (IsBetweenTokens(token.kind)) continue;
    const std::uint32_t begin = from + token.begin;
    const Gap gap = GapOf(std::string_view(pool).substr(blank, begin - blank));
    Word word = {begin, token.length, blank, begin, token.kind, gap};
    blank = begin + token.length;
    if (ClosesTwice(word, Text(word))) {
      word.length = 1;
      to.push_back(word);
      word = {begin + 1, token.length - 1, begin + 1, begin + 1, token.kind, Gap::None};
    }
    to.push_back(word);
  }
}

std::vector<Word> Program::WordsOf(std::string_view text) {
  pool += ' ';  // it does not stand together with the text before it
  const auto from = static_cast<std::uint32_t>(pool.size());
  pool += text;
  std::vector<Word> put;
  AppendWords(from, put);
  return put;
}

std::string Program::Render(Range range) const {
  Writer writer(*this);
  for (std::uint32_t i = range.begin; i < range.end; ++i) writer.Append(words[i]);
  return writer.Take();
}

std::string Program::Render() const { return Render({0, static_cast<std::uint32_t>(Size())}); }

}  // namespace snipwell
