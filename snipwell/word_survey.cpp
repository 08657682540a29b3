#include "snipwell/word_survey.h"

#include "refine/names.h"

namespace snipwell {

bool IsClassKey(std::string_view text) {
  static const Texts keys = {"struct", "class", "union", "enum", "namespace"};
  return IsIn(text, keys);
}

bool EndsAbstractType(std::string_view text) {
  static const Texts ends = {")", ",", ">", "...", "]", "operator"};
  return IsIn(text, ends);
}

WordSurvey::WordSurvey(const Program& wholeProgram, const Tree& wholeTree)
    : program(wholeProgram),
      tree(wholeTree),
      holdsSemicolon(wholeProgram.Size()),
      compares(wholeProgram.Size()) {
  for (std::uint32_t i = 0; i < program.Size(); ++i) Take(i);
}

void WordSurvey::Take(std::uint32_t index) {
  const std::string_view text = Text(index);
  if (tree.Opens(index)) open.push_back(index);
  if (tree.Closes(index) && !open.empty()) open.pop_back();
  if (!open.empty() && text == ";") holdsSemicolon[open.back()] = true;
  if (!open.empty() && Text(open.back()) == "<" && OnlyCompares(index)) Unpair(open.back());
  if (IsClassKey(text) || text == "typename") NoteType(index + 1);
  // Of two names side by side the first one is a type, or a macro.
  if (IsFreeName(index + 1)) NoteType(index);
}

bool WordSurvey::IsFreeName(std::uint32_t index) const {
  return index < program.Size() && program.Words()[index].kind == TokenKind::Name &&
         !IsKeyword(Text(index));
}

void WordSurvey::NoteType(std::uint32_t index) {
  if (IsFreeName(index)) types.insert(Text(index));
}

/// True for operators that the arguments of a template seldom hold: a < b && c > d.
bool WordSurvey::OnlyCompares(std::uint32_t index) const {
  const std::string_view text = Text(index);
  if (text == "&&") return !EndsAbstractType(Text(index + 1));
  return text == "||" || text == "?" || text == "==" || text == "!=";
}

void WordSurvey::Unpair(std::uint32_t angle) {
  compares[angle] = true;
  compares[tree.Partner(angle)] = true;
}

}  // namespace snipwell
