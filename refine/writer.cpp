#include "refine/writer.h"

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

Rendering Writer::WriteWhole(const Program& program) {
  Writer writer(program);
  Rendering whole;
  whole.ends.reserve(program.Size());
  for (const Word& word : program.Words()) {
    writer.Append(word);
    whole.ends.push_back(static_cast<std::uint32_t>(writer.text.size()));
    whole.inDirective.push_back(writer.inDirective);
  }
  whole.text = writer.Take();
  return whole;
}

void Writer::Append(const Word& word) {
  if (inDirective && program.WrittenBlanks() == Blanks::Needed) {
    // Here a blank can tell a macro's parameters from its text.
    if (word.gap != Gap::None) text += ' ';
  } else {
    AppendGap(word);
  }
  text.append(program.Pool(), word.begin, word.length);
  if (word.kind == TokenKind::DirectiveStart) inDirective = true;
  if (word.kind == TokenKind::DirectiveEnd) inDirective = false;
  before = word;
}

/// How a word is written depends on the one before it, and on whether both stand in a directive. So
/// behind the first word for which both are as they are in the whole text, that can be copied.
void Writer::Append(Range range, const Rendering& whole) {
  const std::vector<Word>& words = program.Words();
  std::uint32_t last = range.begin;
  Append(words[last]);
  while (last + 1 < range.end &&
         (words[last].length == 0 || inDirective != whole.inDirective[last])) {
    Append(words[++last]);
  }
  if (last + 1 == range.end) return;
  text.append(whole.text, whole.ends[last], whole.ends[range.end - 1] - whole.ends[last]);
  before = words[range.end - 1];
  inDirective = whole.inDirective[range.end - 1];
}

/// Writes what parts a word from the one before it.
void Writer::AppendGap(const Word& word) {
  const std::size_t written = text.size();
  const bool atLineStart = text.empty() || text.back() == '\n';
  if (program.WrittenBlanks() == Blanks::AsWritten) {
    text.append(program.Pool(), word.blank, word.begin - word.blank);
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
