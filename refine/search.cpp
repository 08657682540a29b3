#include "refine/search.h"

#include <algorithm>
#include <utility>

namespace snipwell {

namespace {

/// True when a program has lost so much that the passes before this one are worth another try.
bool IsMuchLess(std::size_t now, std::size_t before, std::size_t parts) {
  return parts > 0 && now < before - before / parts;
}

}  // namespace

Search::Search(Judge& programJudge, Program start, Accepted onAccepted)
    : judge(programJudge), program(std::move(start)), accepted(std::move(onAccepted)) {
  for (std::size_t place = judge.Places(); place > 0; --place) freePlaces.push_back(place - 1);
}

bool Search::Run(const std::vector<Pass>& passes) {
  std::size_t next = 0;
  for (std::size_t idle = 0; idle < passes.size() && !stopped;) {
    const Pass& pass = passes[next];
    const std::size_t before = program.Size();
    const bool gained = RunPass(pass);
    idle = gained && !pass.renames ? 0 : idle + 1;
    next = IsMuchLess(program.Size(), before, pass.parts) ? 0 : (next + 1) % passes.size();
  }
  return !stopped;
}

/// True when the program has become smaller.
bool Search::RunPass(const Pass& pass) {
  passName = pass.name;
  const EditList edits = pass.edits(program, Tree(program));
  Draft draft(program, edits);
  size = draft.GetSize();
  const std::size_t acceptedBefore = counts.accepted;
  nextEdit = 0;
  for (AskAhead(edits, draft); !open.empty(); AskAhead(edits, draft)) {
    if (!open.front().answered) {
      AwaitAnswer();
      if (stopped) break;
    } else if (open.front().interesting) {
      Accept(edits, draft);
    } else {
      Reject();
    }
  }
  DropAll();
  const bool gained = counts.accepted > acceptedBefore;
  if (gained) program.SetWords(draft.Words());
  return gained;
}

/// Asks about the next edits, as if all that are in flight would fail, until no place is free.
void Search::AskAhead(const EditList& edits, Draft& draft) {
  for (; nextEdit < edits.Size() && !freePlaces.empty(); ++nextEdit) {
    if (edits.IsLeftOut(nextEdit, size.tokens)) continue;
    draft.Make(nextEdit);
    if (draft.GetSize() < size) {
      text = draft.Render(std::move(text));
      AskAbout(nextEdit);
    }
    draft.Undo();
  }
}

void Search::AskAbout(std::size_t edit) {
  const std::size_t hash = std::hash<std::string>()(text);
  const bool inFlight =
      std::any_of(open.begin(), open.end(), [hash](const Question& q) { return q.hash == hash; });
  if (inFlight || failed.count(hash) != 0) return;
  open.push_back({edit, freePlaces.back(), hash, false, false});
  freePlaces.pop_back();
  ++counts.asked;
  judge.Ask(open.back().place, text);
}

void Search::AwaitAnswer() {
  const std::optional<Judge::Answer> answer = judge.Await();
  stopped = !answer.has_value();
  if (stopped) return;
  const auto question = std::find_if(open.begin(), open.end(), [&](const Question& q) {
    return !q.answered && q.place == answer->place;
  });
  question->answered = true;
  question->interesting = answer->interesting;
  freePlaces.push_back(answer->place);
}

void Search::Reject() {
  failed.insert(open.front().hash);
  open.pop_front();
  ++counts.answered;
}

/// Makes the edit of the first question, and goes on behind it.
void Search::Accept(const EditList& edits, Draft& draft) {
  const std::size_t edit = open.front().edit;
  open.pop_front();
  DropAll();
  draft.Make(edit);
  size = draft.GetSize();
  nextEdit = edits.Next(edit);
  ++counts.answered;
  ++counts.accepted;
  accepted(program, draft.Render());
}

void Search::DropAll() {
  for (const Question& question : open) {
    if (question.answered) {
      if (!question.interesting) failed.insert(question.hash);
      continue;
    }
    judge.Drop(question.place);
    freePlaces.push_back(question.place);
  }
  open.clear();
}

}  // namespace snipwell
