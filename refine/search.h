#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "judge/judge.h"
#include "refine/draft.h"
#include "refine/passes.h"
#include "refine/program.h"

namespace snipwell {

/// How often a search has done what.
struct SearchCounts {
  std::size_t asked = 0;     ///< questions put to the judge, those taken back included
  std::size_t answered = 0;  ///< questions that were answered and counted
  std::size_t accepted = 0;
};

/// Makes a program smaller as long as a judge finds it interesting.
///
/// The edits of a pass are tried in their order. With several places, the next ones are asked about
/// as if those in flight would all fail, but the answers count strictly in order, and one that
/// holds throws away what was begun after it. So the programs that are accepted are the same
/// for any number of places. Programs that failed are not asked about again.
class Search {
 public:
  /// Told of each program that is accepted, at once.
  using Accepted = std::function<void(const Program&, const std::string& text)>;

  /// Borrows the judge. `start` must be interesting.
  Search(Judge& programJudge, Program start, Accepted onAccepted);

  /// Runs the passes, one after the other and round again, until none of them gains anything. One
  /// that gains much is followed by the first, unless it is to be followed by the next. False when
  /// the judge has stopped it.
  bool Run(const std::vector<Pass>& passes);

  const Program& Result() const { return program; }
  const SearchCounts& Counts() const { return counts; }
  /// Name of the pass at work.
  const char* PassName() const { return passName; }

 private:
  struct Question {
    std::size_t edit;
    std::size_t place;
    std::size_t hash;
    bool answered;
    bool interesting;
  };

  bool RunPass(const Pass& pass);
  void AskAhead(const EditList& edits, Draft& draft);
  void AskAbout(std::size_t edit);
  void AwaitAnswer();
  void Reject();
  void Accept(const EditList& edits, Draft& draft);
  void DropAll();

  Judge& judge;
  Program program;
  Accepted accepted;
  Size size;
  SearchCounts counts;
  std::unordered_set<std::size_t> failed;  // hashes of the texts
  std::deque<Question> open;               // in the order of their edits
  std::vector<std::size_t> freePlaces;
  std::string text;  // of the last question
  const char* passName = "";
  std::size_t nextEdit = 0;
  bool stopped = false;
};

}  // namespace snipwell
