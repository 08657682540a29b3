#include "snipwell/spacing.h"

#include <string_view>

#include "refine/writer.h"

namespace snipwell {

namespace {

/// True for a role before which no blank stands.
bool FollowsClosely(Role role) {
  return role == Role::Comma || role == Role::Semicolon || role == Role::Close ||
         role == Role::CloseControl || role == Role::CloseCast || role == Role::CloseAngle ||
         role == Role::CloseList || role == Role::Label || role == Role::Postfix ||
         role == Role::Operator;
}

/// True for a role behind which no blank stands.
bool IsFollowedClosely(Role role) {
  return role == Role::Open || role == Role::OpenAngle || role == Role::OpenList ||
         role == Role::Prefix || role == Role::Joining;
}

bool IsOpening(Role role) {
  return role == Role::Open || role == Role::OpenAngle || role == Role::OpenList ||
         role == Role::OpenBlock;
}

bool IsKeyword(Role role) { return role == Role::Control || role == Role::Type; }

}  // namespace

bool Spacing::AreNeighbours(std::uint32_t index) const {
  const Word& left = program.Words()[index - 1];
  return left.begin + left.length == program.Words()[index].begin;
}

bool Spacing::ContinuesToken(std::uint32_t index) const {
  return index > 0 && AreNeighbours(index) && program.Text(index - 1) == ">" &&
         program.Text(index).front() == '>';
}

bool Spacing::IsApart(std::uint32_t index) const {
  if (ContinuesToken(index)) return false;
  if (IsWantedApart(index)) return true;
  const std::string_view left = program.Text(index - 1);
  const std::string_view right = program.Text(index);
  const bool scope = left == ">" && right == "::";
  return !scope && !AreNeighbours(index) && MergeWhenJoined(left, right);
}

bool Spacing::IsWantedApart(std::uint32_t index) const {
  const Role left = roles[index - 1];
  const Role right = roles[index];
  if (left == Role::Stray || right == Role::Stray) {
    return program.Words()[index].gap != Gap::None;
  }
  if (FollowsClosely(right) || IsFollowedClosely(left)) return false;
  if (left == Role::Comma || left == Role::Semicolon) return true;
  if (left == Role::Binary || right == Role::Binary) return true;
  if (right == Role::Joining) return IsKeyword(left) && program.Text(index) == "::";
  if (right == Role::Ellipsis) return false;
  if (left == Role::Ellipsis)
    return right == Role::Word && (index == 1 || roles[index - 2] != Role::Prefix);
  if (IsOpening(right) || left == Role::OpenBlock) return IsBracketApart(index);
  return left != Role::CloseCast;
}

bool Spacing::IsBracketApart(std::uint32_t index) const {
  const Role left = roles[index - 1];
  const Role right = roles[index];
  if (left == Role::OpenBlock) return right != Role::CloseBlock;
  if (right == Role::OpenBlock) return true;
  if (right == Role::OpenAngle) return program.Text(index - 1) == "template";
  if (right == Role::OpenList) return left == Role::Control;
  return program.Text(index) == "(" ? IsOpenApart(index) : IsSquareApart(index);
}

/// The "(" behind the result of a function that a pointer leads to stands apart: int (*f)().
bool Spacing::IsOpenApart(std::uint32_t index) const {
  const Role left = roles[index - 1];
  if (left == Role::Control || left == Role::CloseControl) return true;
  if (left != Role::Type && left != Role::Word) return false;
  const bool pointer = index + 1 < roles.size() && roles[index + 1] == Role::Prefix;
  return pointer && left == Role::Type;
}

bool Spacing::IsSquareApart(std::uint32_t index) const {
  const std::string_view left = program.Text(index - 1);
  if (roles[index - 1] == Role::Control) return left != "delete" && left != "new";
  const bool attribute = index + 1 < roles.size() && program.Text(index + 1) == "[";
  return left == "auto" || attribute;
}

}  // namespace snipwell
