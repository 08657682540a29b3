#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "refine/draft.h"
#include "refine/passes.h"
#include "refine/program.h"
#include "refine/tokenizer.h"
#include "refine/tree.h"
#include "refine/writer.h"

namespace snipwell {

/// What is wrong with the tokens of a text, or "".
inline std::string ComplaintAboutTokens(const std::string& text) {
  std::uint32_t end = 0;
  for (const Token& token : Tokenize(text)) {
    if (token.begin != end || token.length == 0) return "the tokens joined are not the text";
    end += token.length;
  }
  return end == text.size() ? "" : "the tokens end too early";
}

/// The texts of words, but for the line feeds that end directives.
inline std::vector<std::string> TextsOf(const Program& program, const std::vector<Word>& words) {
  std::vector<std::string> texts;
  for (const Word& word : words) {
    if (word.kind != TokenKind::DirectiveEnd) texts.emplace_back(program.Text(word));
  }
  return texts;
}

/// The texts of the words of a draft, and one more when its size is wrong.
inline std::vector<std::string> TextsOf(const Program& program, const Draft& draft) {
  std::vector<std::string> texts;
  for (const Word& word : draft.Words()) texts.emplace_back(program.Text(word));
  if (draft.GetSize().tokens != texts.size()) texts.push_back("(its size is wrong)");
  return texts;
}

/// The texts of the words that an edit puts in.
inline std::vector<std::string> TextsOf(const Program& program, const PutIn& put) {
  std::vector<std::string> texts;
  const Program own(put.text);
  for (std::size_t i = 0; i < own.Size(); ++i) texts.emplace_back(own.Text(i));
  for (std::uint32_t i = put.words.begin; i < put.words.end; ++i) {
    texts.emplace_back(program.Text(i));
  }
  return texts;
}

/// What is wrong with how a text is written anew, or "".
inline std::string ComplaintAboutRendering(const std::string& text) {
  // Blanks and comments behind the last word belong to none.
  const std::string asWritten = Program(text, Blanks::AsWritten).Render();
  if (text.compare(0, asWritten.size(), asWritten) != 0) return "written with other blanks";
  const Program program(text);
  const Program again(program.Render());
  return TextsOf(program, program.Words()) == TextsOf(again, again.Words())
             ? ""
             : "read again it has other tokens";
}

/// A draft's text, written without copying more than a word at a time.
inline std::string SlowlyRendered(const Program& program, const Draft& draft) {
  Writer writer(program);
  for (const Word& word : draft.Words()) writer.Append(word);
  return writer.Take();
}

inline bool Contains(Range outer, Range inner) {
  return outer.begin <= inner.begin && inner.begin <= inner.end && inner.end <= outer.end;
}

/// What is wrong with the tree of a program, or "".
inline std::string ComplaintAboutTree(const Program& program, const Tree& tree) {
  for (std::uint32_t i = 0; i < program.Size(); ++i) {
    const std::uint32_t partner = tree.Partner(i);
    if (partner != Tree::kNone && (partner == i || tree.Partner(partner) != i)) {
      return "brackets are no pairs";
    }
    if (tree.Opens(i)) {
      for (std::uint32_t at = i + 1; at < partner; ++at) {
        const bool crosses =
            tree.Partner(at) != Tree::kNone && (tree.Partner(at) < i || tree.Partner(at) > partner);
        if (crosses) return "pairs cross";
      }
    }
  }
  for (const List& list : tree.Lists()) {
    std::uint32_t end = list.inside.begin;
    for (const Range item : list.items) {
      if (item.begin < end || !Contains(list.inside, item)) return "items are not in their list";
      end = item.end;
    }
  }
  return "";
}

/// What is wrong with the edits of a pass, or "": each must leave, in their order, just the words
/// that no cut names, and what its texts put in their places.
inline std::string ComplaintAboutEdits(Program& program, const EditList& edits) {
  Draft draft(program, edits);
  const std::vector<std::string> whole = TextsOf(program, draft);
  // What is left of a directive, a literal or a comment may be read as something else.
  const bool isPlain = program.Pool().find_first_of("#\"'\\/") == std::string::npos;
  for (std::size_t number = 0; number < edits.Size(); ++number) {
    const Edit edit = edits[number];
    const std::size_t next = edits.Next(number);
    if (next <= number || next > edits.Size()) return "an edit is followed by none";
    std::vector<std::string> expected;
    for (std::uint32_t i = 0; i < program.Size(); ++i) {
      const Cut* taker = nullptr;
      for (const Cut& cut : edit) {
        if (cut.range.end > program.Size()) return "a cut is not in the program";
        if (taker == nullptr && cut.range.begin <= i && i < cut.range.end) taker = &cut;
      }
      if (taker == nullptr) expected.emplace_back(program.Text(i));
      if (taker == nullptr || taker->text == 0 || taker->range.begin != i) continue;
      const PutIn& put = edits.Text(taker->text);
      for (const std::string& text : TextsOf(program, put)) expected.push_back(text);
    }
    draft.Make(number);
    if (TextsOf(program, draft) != expected) return "an edit takes other words than it names";
    const std::string text = draft.Render();
    if (SlowlyRendered(program, draft) != text) return "an edit is written wrongly";
    draft.Undo();
    if (TextsOf(program, draft) != whole) return "an edit is not taken back";
    if (!isPlain) continue;
    const Program again(text);
    if (TextsOf(again, again.Words()) != expected) return "read again, an edit has other words";
  }
  return "";
}

/// What is wrong with anything that is made of a text before a compiler sees it, or "".
inline std::string ComplaintAboutRefining(const std::string& text) {
  std::string complaint = ComplaintAboutTokens(text);
  if (complaint.empty()) complaint = ComplaintAboutRendering(text);
  Program program(text);
  const Tree tree(program);
  if (complaint.empty()) complaint = ComplaintAboutTree(program, tree);
  if (!complaint.empty()) return complaint;
  for (const Pass& pass : Passes()) {
    complaint = ComplaintAboutEdits(program, pass.edits(program, tree));
    if (!complaint.empty()) return std::string(pass.name) + ": " + complaint;
  }
  return "";
}

}  // namespace snipwell
