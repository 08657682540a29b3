// One walk over the words, with a stack of the brackets that are open. A word gets its role by the
// role of the word before, by the item that it is in, and by what a survey has found.

#include "snipwell/word_roles.h"

#include <string_view>

#include "snipwell/word_survey.h"

namespace snipwell {

namespace {

const Texts kControl = {"if",       "for",       "while",    "switch",   "catch",    "return",
                        "throw",    "case",      "else",     "do",       "new",      "delete",
                        "and",      "or",        "not",      "co_await", "co_yield", "co_return",
                        "requires", "constexpr", "namespace"};
const Texts kBeforeHead = {"if", "for", "while", "switch", "catch", "requires", "constexpr", "new"};
const Texts kTypes = {"void",     "bool",     "char",     "short",    "int",
                      "long",     "float",    "double",   "signed",   "unsigned",
                      "auto",     "const",    "volatile", "wchar_t",  "char8_t",
                      "char16_t", "char32_t", "static",   "constinit"};
const Texts kBeforeBlock = {"else",     "do",    "try",     "const",   "noexcept",
                            "override", "final", "mutable", "volatile"};
const Texts kAfterQualifier = {";", "{", "="};
const Texts kAfterName = {";", "=", ",", "[", "(", "{", ")", ":"};

/// The walk.
class Roles {
 public:
  Roles(const Program& wholeProgram, const Tree& wholeTree)
      : program(wholeProgram), tree(wholeTree), survey(wholeProgram, wholeTree) {}

  std::vector<Role> Run() {
    roles.reserve(program.Size());
    for (std::uint32_t i = 0; i < program.Size(); ++i) {
      roles.push_back(RoleOf(i));
      Remember(i);
    }
    return std::move(roles);
  }

 private:
  /// A bracket that is open, or the file, and the item of it at which the walk is.
  struct Frame {
    std::uint32_t itemBegin;
    bool parameters;  // of a function that is declared
    bool classKey = false;
    bool isAuto = false;
    bool arrow = false;  // a result type follows the parameters
    bool plain = true;   // only names so far
  };

  std::string_view Text(std::uint32_t index) const {
    return index < program.Size() ? program.Text(index) : std::string_view();
  }
  Role Before(std::uint32_t index) const { return index == 0 ? Role::Semicolon : roles[index - 1]; }
  std::string_view TextBefore(std::uint32_t index) const {
    return index == 0 ? std::string_view() : Text(index - 1);
  }

  Role RoleOf(std::uint32_t index) const {
    const Word& word = program.Words()[index];
    const std::string_view text = Text(index);
    if (word.kind == TokenKind::Name) return RoleOfName(text);
    if (word.kind == TokenKind::Punctuator) return RoleOfPunctuator(index, text);
    const bool literal = word.kind == TokenKind::Number || word.kind == TokenKind::String ||
                         word.kind == TokenKind::Character;
    return literal ? Role::Word : Role::Stray;
  }

  Role RoleOfName(std::string_view text) const {
    if (IsIn(text, kControl)) return Role::Control;
    return IsIn(text, kTypes) ? Role::Type : Role::Word;
  }

  Role RoleOfPunctuator(std::uint32_t index, std::string_view text) const {
    if (text == "{" || text == "<%") return IsBlock(index) ? Role::OpenBlock : Role::OpenList;
    if (text == "}" || text == "%>") return Closing(index, Role::OpenList, Role::CloseList);
    if (TextBefore(index) == "operator" && text != "(" && text != "[") return Role::Operator;
    if (text == "(" || text == "[" || text == "<:") return Role::Open;
    if (text == ")") return RoleOfParenthesis(index);
    if (text == "]" || text == ":>") return Role::Close;
    if (text == "<" || text == ">") return RoleOfAngle(index, text);
    if (text == ",") return Role::Comma;
    if (text == ";") return Role::Semicolon;
    if (text == ":") return IsLabel(index) ? Role::Label : Role::Binary;
    return RoleOfOperator(index, text);
  }

  Role Closing(std::uint32_t index, Role opening, Role closing) const {
    const bool other = tree.Closes(index) && roles[tree.Partner(index)] == opening;
    return other ? closing : Role::CloseBlock;
  }

  Role RoleOfParenthesis(std::uint32_t index) const {
    if (!tree.Closes(index)) return Role::Close;
    const std::uint32_t open = tree.Partner(index);
    if (IsIn(TextBefore(open), kBeforeHead)) return Role::CloseControl;
    return EndsOperand(Before(open)) || Before(open) == Role::Joining ? Role::Close
                                                                      : Role::CloseCast;
  }

  Role RoleOfAngle(std::uint32_t index, std::string_view text) const {
    const bool pair = tree.Partner(index) != Tree::kNone && !survey.Compares(index);
    if (!pair) return Role::Binary;
    return text == "<" ? Role::OpenAngle : Role::CloseAngle;
  }

  Role RoleOfOperator(std::uint32_t index, std::string_view text) const {
    const bool operand = EndsOperand(Before(index));
    if (text == "...") return Role::Ellipsis;
    if (text == "->") return IsBeforeResult(index) ? Role::Binary : Role::Joining;
    if (text == "::" || text == "." || text == ".*" || text == "->*") return Role::Joining;
    if (text == "!" || text == "~") return Role::Prefix;
    if (text == "++" || text == "--") return operand ? Role::Postfix : Role::Prefix;
    if (text == "*" || text == "&" || text == "&&") {
      return IsDeclarator(index) ? Role::Prefix : Role::Binary;
    }
    if (text == "+" || text == "-") return operand ? Role::Binary : Role::Prefix;
    const bool stray = text.front() == '#' || text.front() == '\\' || text.front() == '@' ||
                       text.front() == '`' || text.substr(0, 2) == "%:";
    return stray ? Role::Stray : Role::Binary;
  }

  /// True for what an operator can follow that stands between operands.
  static bool EndsOperand(Role role) {
    return role == Role::Word || role == Role::Type || role == Role::Close ||
           role == Role::CloseAngle || role == Role::CloseList || role == Role::Postfix ||
           role == Role::Ellipsis || role == Role::Operator || role == Role::CloseCast;
  }

  bool IsLabel(std::uint32_t index) const {
    const Role before = Before(index);
    if (before == Role::Type || Current().itemBegin == index) return false;
    return Current().itemBegin + 1 == index || Text(Current().itemBegin) == "case";
  }

  /// True for the arrow before the type that a function returns.
  bool IsBeforeResult(std::uint32_t index) const {
    if (Before(index) == Role::Word || Before(index) == Role::Type) {
      return IsIn(TextBefore(index), kBeforeBlock);
    }
    if (Text(index - 1) != ")" || !tree.Closes(index - 1)) return false;
    return Current().isAuto || TextBefore(tree.Partner(index - 1)) == "]";
  }

  /// True for a "*" or "&" that belongs to one operand, or makes a pointer or reference.
  bool IsDeclarator(std::uint32_t index) const {
    const Role before = Before(index);
    if (!EndsOperand(before) || before == Role::Type || before == Role::CloseAngle) return true;
    if (before == Role::Word && survey.IsType(TextBefore(index))) return true;
    if (EndsAbstractType(Text(index + 1))) return true;
    if (before == Role::CloseCast) return EndsWithType(tree.Partner(index - 1) + 1, index - 1);
    if (before == Role::Close) return IsIn(Text(index + 1), kAfterQualifier);
    return before == Role::Word && MayDeclare(index);
  }

  bool EndsWithType(std::uint32_t begin, std::uint32_t end) const {
    if (begin == end) return false;
    const Role last = roles[end - 1];
    return last == Role::Type || last == Role::CloseAngle || last == Role::Prefix ||
           survey.IsType(Text(end - 1));
  }

  /// True where the names before and behind can be a type and what is declared.
  bool MayDeclare(std::uint32_t index) const {
    const bool named =
        index + 1 < program.Size() && program.Words()[index + 1].kind == TokenKind::Name;
    const bool statement = frames.size() == 1 || inBlock.back();
    const bool typed = roles[Current().itemBegin] == Role::Type;
    return Current().plain && named && IsIn(Text(index + 2), kAfterName) &&
           (statement || typed || Current().parameters);
  }

  /// True for braces that hold statements, members or enumerators.
  bool IsBlock(std::uint32_t index) const {
    if (tree.Opens(index) && survey.HoldsSemicolon(index)) return true;
    const Role before = Before(index);
    if (before == Role::Word || before == Role::CloseAngle || before == Role::Type) {
      const bool string = index > 0 && program.Words()[index - 1].kind == TokenKind::String;
      return Current().classKey || Current().arrow || string ||
             IsIn(TextBefore(index), kBeforeBlock);
    }
    if (before == Role::Control) return TextBefore(index) != "return";
    if (TextBefore(index) == "]") return IsLambda(index - 1);
    return before != Role::Binary && before != Role::Comma && before != Role::Open &&
           before != Role::OpenList && before != Role::Prefix && before != Role::OpenAngle;
  }

  bool IsLambda(std::uint32_t close) const {
    return tree.Closes(close) && !EndsOperand(Before(tree.Partner(close)));
  }

  const Frame& Current() const { return frames.back(); }

  /// What later words have to know of this one.
  void Remember(std::uint32_t index) {
    const Role role = roles[index];
    if (tree.Closes(index) && frames.size() > 1) Leave();
    Frame& frame = frames.back();
    const std::string_view text = Text(index);
    if (IsClassKey(text)) frame.classKey = true;
    if (text == "=" || (text == "(" && !IsAttribute(index))) frame.classKey = false;
    if (text == "auto") frame.isAuto = true;
    if (text == "->" && role == Role::Binary) frame.arrow = true;
    if (role != Role::Word && role != Role::Type && text != "::") frame.plain = false;
    if (EndsItem(index, role)) frame = Frame{index + 1, frame.parameters};
    if (tree.Opens(index)) Enter(index);
  }

  /// True for the "(" of "struct alignas(8) A".
  bool IsAttribute(std::uint32_t open) const { return open > 1 && IsClassKey(Text(open - 2)); }

  bool EndsItem(std::uint32_t index, Role role) const {
    const bool directive = program.Words()[index].kind == TokenKind::DirectiveEnd;
    if (role == Role::CloseBlock) return Text(index + 1) != "(";
    return role == Role::Semicolon || role == Role::Comma || role == Role::Label || directive;
  }

  void Enter(std::uint32_t index) {
    const Role named = index > 1 ? roles[index - 2] : Role::Semicolon;
    const bool function =
        Before(index) == Role::Operator ||
        (Before(index) == Role::Word && (EndsOperand(named) || named == Role::Prefix));
    frames.push_back({index + 1, function && Text(index) == "("});
    inBlock.push_back(roles[index] == Role::OpenBlock);
  }

  void Leave() {
    frames.pop_back();
    inBlock.pop_back();
  }

  const Program& program;
  const Tree& tree;
  const WordSurvey survey;
  std::vector<Role> roles;
  std::vector<Frame> frames = {{0, false}};
  std::vector<bool> inBlock = {true};
};

}  // namespace

std::vector<Role> RolesOf(const Program& program, const Tree& tree) {
  return Roles(program, tree).Run();
}

}  // namespace snipwell
