// One walk over the words. A statement starts a line when the braces around it are laid out over
// several lines; whether they are is decided when they open, by looking ahead no further than a
// short line reaches. What goes beyond a line is left to the filler.

#include "snipwell/layout.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "refine/tokenizer.h"
#include "refine/tree.h"
#include "snipwell/line_filler.h"
#include "snipwell/spacing.h"

namespace snipwell {

namespace {

constexpr std::uint32_t kNoEnd = 0;
constexpr std::size_t kStep = 2;
constexpr std::size_t kDeepest = 40;     // columns; deeper blocks are not indented further
constexpr std::size_t kShortLine = 60;   // columns of a line that may hold a body
constexpr std::uint32_t kShortBody = 1;  // statements in it

/// Lays one program out.
class Layout {
 public:
  explicit Layout(const Program& wholeProgram)
      : program(wholeProgram),
        tree(wholeProgram),
        spacing(wholeProgram, tree),
        ends(wholeProgram.Size(), kNoEnd),
        breaks(wholeProgram.Size()) {
    for (const List& list : tree.Lists()) {
      if (!list.commas) NoteStatements(list);
    }
  }

  std::string Run() {
    for (std::uint32_t i = 0; i < program.Size(); ++i) {
      if (inDirective) {
        DirectiveWord(i);
      } else {
        Word(i);
      }
      Remember(i);
    }
    return filler.Text();
  }

 private:
  /// Braces that are open.
  struct Braces {
    bool broken;  // over several lines
    std::size_t indent;
    std::size_t outerIndent;
  };

  std::string_view Text(std::uint32_t index) const {
    return index < program.Size() ? program.Text(index) : std::string_view();
  }
  TokenKind KindOf(std::uint32_t index) const { return program.Words()[index].kind; }
  Role RoleOf(std::uint32_t index) const { return spacing.RoleOf(index); }
  const Braces& Current() const { return braces.back(); }

  void NoteStatements(const List& list) {
    const std::uint32_t begin = list.inside.begin;
    if (list.depth > 0 && RoleOf(begin - 1) != Role::OpenBlock) return;
    for (const Range item : list.items) ends[item.begin] = item.end;
  }

  void Word(std::uint32_t index) {
    if (KindOf(index) == TokenKind::DirectiveStart) {
      StartDirective(index);
    } else if (atLineStart || MustBreak(index)) {
      ContinueStatement(index);
    } else if (BreaksBefore(index)) {
      StartLine(index);
    } else if (spacing.IsApart(index)) {
      filler.AppendBlank(BondBefore(index));
    }
    filler.Append(Text(index));
  }

  void StartDirective(std::uint32_t index) {
    const bool splices = index > 0 && Text(index - 1) == "\\";
    if (splices) filler.AppendBlank(LineFiller::kNeverBreak);
    if (braces.size() == 1) filler.StartBlock();
    filler.StartLine(0);
    inDirective = true;
  }

  /// Blanks in directives tell a macro's parameters from its text; they stay.
  void DirectiveWord(std::uint32_t index) {
    const Gap gap = program.Words()[index].gap;
    if (KindOf(index) != TokenKind::DirectiveEnd) {
      if (gap == Gap::Space) filler.AppendBlank(LineFiller::kNeverBreak);
      if (gap == Gap::Line) filler.Append(" \\\n    ");
      filler.Append(Text(index));
    } else if (gap != Gap::None && Text(index - 1).back() == '\\') {
      filler.AppendBlank(LineFiller::kNeverBreak);
    }
  }

  /// True behind a literal that only the line's end ends.
  bool MustBreak(std::uint32_t index) const {
    if (index == 0 || program.Words()[index].gap != Gap::Line) return false;
    const TokenKind before = KindOf(index - 1);
    if (before != TokenKind::String && before != TokenKind::Character) return false;
    const std::string_view text = Text(index - 1);
    return Tokenize(std::string(text) + ' ').front().length != text.size();
  }

  /// Starts the line of a word that has to start one.
  void ContinueStatement(std::uint32_t index) {
    if (ends[index] != kNoEnd || RoleOf(index) == Role::CloseBlock) return StartLine(index);
    filler.StartLine(Current().indent + 2 * kStep);
  }

  bool BreaksBefore(std::uint32_t index) const {
    if (!MayBreakBefore(index)) return false;
    if (RoleOf(index) == Role::CloseBlock) return Current().broken && !IsEmpty(index);
    const bool goesOn = IsAfterBraces(index) && IsChained(index);
    return breaks[index] || (ends[index] != kNoEnd && Current().broken && !goesOn);
  }

  /// True for what goes on with the statement before; bodies of such ones are laid out alike.
  bool IsChained(std::uint32_t index) const {
    return Text(index) == "else" || Text(index) == "catch";
  }

  bool IsEmpty(std::uint32_t close) const {
    return close > 0 && RoleOf(close - 1) == Role::OpenBlock;
  }
  bool IsAfterBraces(std::uint32_t index) const {
    return index > 0 && RoleOf(index - 1) == Role::CloseBlock;
  }

  /// False where a line feed would make another token: a directive, or a splice.
  bool MayBreakBefore(std::uint32_t index) const {
    const std::string_view text = Text(index);
    const bool directive = text.front() == '#' || text.substr(0, 2) == "%:";
    return !directive && !spacing.ContinuesToken(index) &&
           (index == 0 || Text(index - 1).back() != '\\');
  }

  void StartLine(std::uint32_t index) {
    if (RoleOf(index) == Role::CloseBlock) return filler.StartLine(Current().outerIndent);
    if (braces.size() == 1 && ends[index] != kNoEnd) filler.StartBlock();
    const bool label = ends[index] != kNoEnd && RoleOf(ends[index] - 1) == Role::Label;
    const std::size_t out = label ? std::min(Current().indent, kStep) : 0;
    filler.StartLine(Current().indent - out);
    NoteTemplateHeads(index);
  }

  /// A template's head gets its own line when the template does not fit on one with it.
  void NoteTemplateHeads(std::uint32_t index) {
    const std::uint32_t end = ends[index];
    if (Text(index) != "template" || Fits(index, end, filler.Indent())) return;
    while (Text(index) == "template" && Text(index + 1) == "<" && tree.Opens(index + 1)) {
      index = tree.Next(index + 1);
      if (index < end) breaks[index] = true;
    }
  }

  /// True when words fit on a short line from a column on, with one statement in them.
  bool Fits(std::uint32_t begin, std::uint32_t end, std::size_t column) const {
    std::uint32_t statements = 0;
    for (std::uint32_t i = begin; i < end; ++i) {
      if (KindOf(i) == TokenKind::DirectiveStart) return false;
      if (i > begin && ends[i] != kNoEnd && ++statements > kShortBody) return false;
      column += Text(i).size() + (i > begin && spacing.IsApart(i) ? 1 : 0);
      if (column > kShortLine) return false;
    }
    return true;
  }

  /// How much holds two words of a line together.
  int BondBefore(std::uint32_t index) const {
    constexpr int kAssignment = 1000;
    constexpr int kWords = 2000;
    if (!MayBreakBefore(index)) return LineFiller::kNeverBreak;
    const Role before = RoleOf(index - 1);
    if (Text(index - 1) == "=") return depth + kAssignment;
    const bool loose = before == Role::Comma || before == Role::Binary ||
                       before == Role::Semicolon || before == Role::CloseControl;
    return loose ? depth : depth + kWords;
  }

  /// What later words have to know of this one.
  void Remember(std::uint32_t index) {
    atLineStart = KindOf(index) == TokenKind::DirectiveEnd;
    if (atLineStart) inDirective = false;
    if (inDirective || atLineStart) return;
    if (ends[index] != kNoEnd) inChain = IsChained(index);
    if (tree.Opens(index)) depth = std::min(depth + 1, 500);
    if (tree.Closes(index)) depth = std::max(depth - 1, 0);
    if (RoleOf(index) == Role::OpenBlock && tree.Opens(index)) OpenBraces(index);
    if (RoleOf(index) == Role::CloseBlock && tree.Closes(index) && braces.size() > 1) {
      braces.pop_back();
    }
  }

  void OpenBraces(std::uint32_t index) {
    const std::uint32_t close = tree.Partner(index);
    const bool statements = close > index + 1 && ends[index + 1] != kNoEnd;
    const bool fits =
        !inChain && !IsChained(close + 1) && Fits(index, close + 1, filler.Column() - 1);
    const bool broken = statements && !fits;
    const std::size_t outer = broken ? filler.Indent() : Current().indent;
    braces.push_back({broken, broken ? std::min(outer + kStep, kDeepest) : outer, outer});
  }

  const Program& program;
  const Tree tree;
  const Spacing spacing;
  std::vector<std::uint32_t> ends;  // of the statements that begin at a word
  std::vector<bool> breaks;         // before words that are no statements
  std::vector<Braces> braces = {{true, 0, 0}};
  LineFiller filler;
  int depth = 0;  // brackets that are open
  bool inChain = false;
  bool inDirective = false;
  bool atLineStart = true;
};

/// True when a text ends in a line feed that is no part of another token.
bool EndsInLineFeed(const std::string& text) {
  const std::vector<Token> tokens = Tokenize(text);
  return tokens.empty() || tokens.back().kind == TokenKind::DirectiveEnd ||
         (tokens.back().kind == TokenKind::Blank && tokens.back().length == 1);
}

}  // namespace

std::string LaidOut(const Program& program) {
  std::string text = Layout(program).Run();
  if (!EndsInLineFeed(text)) text.pop_back();
  return text;
}

}  // namespace snipwell
