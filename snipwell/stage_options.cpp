#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "snipwell/stages.h"

namespace snipwell {

namespace {

using CommandOptions = std::vector<CommandOption>;

std::vector<std::string> WordsOf(const CommandOptions& options) {
  std::vector<std::string> words;
  for (const CommandOption& option : options) {
    words.insert(words.end(), option.words.begin(), option.words.end());
  }
  return words;
}

/// Takes options out in halves, the later one first, so that those in front keep their numbers. No
/// command is tried twice.
class OptionSearch {
 public:
  /// With `byItsName` the source's name tells the language, and no option does.
  OptionSearch(Job& wholeJob, bool byItsName)
      : job(wholeJob), options(Options(wholeJob.form.command)), byName(byItsName) {}

  bool TakeNone() { return Take({}); }
  bool TakeAll() { return Take(options); }
  void ReduceHalves() { ReduceHalves(0, options.size()); }

 private:
  void ReduceHalves(std::size_t begin, std::size_t end) {
    if (end - begin < 2) return;
    const std::size_t middle = begin + (end - begin) / 2;
    Reduce(middle, end);
    Reduce(begin, middle);
  }

  /// Takes out the options from `begin` to `end`, or else those of their halves that can go.
  void Reduce(std::size_t begin, std::size_t end) {
    CommandOptions left = options;
    left.erase(left.begin() + static_cast<std::ptrdiff_t>(begin),
               left.begin() + static_cast<std::ptrdiff_t>(end));
    if (Take(left)) {
      options = std::move(left);
    } else {
      ReduceHalves(begin, end);
    }
  }

  bool Take(const CommandOptions& left) {
    if (refused.count(WordsOf(left)) != 0 || job.workshop.IsTimeUp()) return false;
    Form next = job.form;
    next.command = WithOptions(next.command, left);
    if (byName) next.command.language.clear();
    if (job.TakeIfItHolds(std::move(next))) return true;
    refused.insert(WordsOf(left));
    return false;
  }

  Job& job;
  CommandOptions options;
  const bool byName;
  std::set<std::vector<std::string>> refused;
};

}  // namespace

/// The language goes together with the options: that a source is preprocessed, its text has told.
/// Only where nothing goes so does it go by itself, or else they do.
void ReduceOptions(Job& job) {
  if (job.IsTest()) return;
  OptionSearch byName(job, true);
  if (byName.TakeNone()) return;
  byName.ReduceHalves();
  if (job.form.command.language.empty() || byName.TakeAll()) return;
  OptionSearch withLanguage(job, false);
  if (!withLanguage.TakeNone()) withLanguage.ReduceHalves();
}

}  // namespace snipwell
