#include "refine/program.h"

#include <algorithm>
#include <utility>

#include "refine/tokenizer.h"

namespace snipwell {

namespace {

bool IsNameByte(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool StartsNumber(std::string_view text) {
  return IsDigit(text.front()) || (text.size() > 1 && text.front() == '.' && IsDigit(text[1]));
}

bool IsIn(char c, std::string_view set) { return set.find(c) != std::string_view::npos; }

Gap GapOf(std::string_view blank) {
  if (blank.empty()) return Gap::None;
  return blank.find('\n') == std::string_view::npos ? Gap::Space : Gap::Line;
}

/// A word of two angles is two words, of which the second one has no gap.
bool ClosesTwice(const Word& word, std::string_view text) {
  return word.kind == TokenKind::Punctuator && text.size() > 1 && text.substr(0, 2) == ">>";
}

bool StoodTogether(const Word& left, const Word& right) {
  return left.begin + left.length == right.begin;
}

}  // namespace

bool MergeWhenJoined(std::string_view left, std::string_view right) {
  const char last = left.back();
  const char first = right.front();
  if (StartsNumber(left)) return IsNameByte(first) || IsIn(first, "'.+-");
  if (IsNameByte(last)) return IsNameByte(first) || IsIn(first, "\"'");
  if (IsIn(last, "\"'")) return IsNameByte(first) || IsIn(first, "\"'");
  if (last == '.') return IsDigit(first) || first == '.' || first == '*';
  return IsIn(last, "+-<>=&|:#/*%!^") && IsIn(first, "+-<>=&|:#/*%");
}

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

void Writer::Append(const Word& word) {
  if (inDirective && program.blanks == Blanks::Needed) {
    // Here a blank can tell a macro's parameters from its text.
    if (word.gap != Gap::None) text += ' ';
  } else {
    AppendGap(word);
  }
  text.append(program.pool, word.begin, word.length);
  if (word.kind == TokenKind::DirectiveStart) inDirective = true;
  if (word.kind == TokenKind::DirectiveEnd) inDirective = false;
  before = word;
}

/// Writes what parts a word from the one before it.
void Writer::AppendGap(const Word& word) {
  const std::size_t written = text.size();
  const bool atLineStart = text.empty() || text.back() == '\n';
  if (program.blanks == Blanks::AsWritten) {
    text.append(program.pool, word.blank, word.begin - word.blank);
  } else if ((word.gap == Gap::Line || word.kind == TokenKind::DirectiveStart) && !atLineStart) {
    // A stray backslash, which a comment parted from the line's end, stays one.
    text += text.back() == '\\' ? "/**/\n" : "\n";
  }
  if (before && !atLineStart && text.size() == written && !StoodTogether(*before, word) &&
      MergeWhenJoined(program.Text(*before), program.Text(word))) {
    text += ' ';
  }
}

}  // namespace snipwell
