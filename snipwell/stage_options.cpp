#include <algorithm>
#include <cstddef>
#include <utility>

#include "snipwell/stages.h"

namespace snipwell {

namespace {

using CommandOptions = std::vector<CommandOption>;

CommandOptions Without(const CommandOptions& options, std::size_t begin, std::size_t end) {
  CommandOptions left = options;
  left.erase(left.begin() + static_cast<std::ptrdiff_t>(begin),
             left.begin() + static_cast<std::ptrdiff_t>(end));
  return left;
}

bool Take(Job& job, const CommandOptions& options, bool byName) {
  if (job.workshop.IsTimeUp()) return false;
  Form next = job.form;
  next.command = WithOptions(next.command, options);
  if (byName) next.command.language.clear();
  return job.TakeIfItHolds(std::move(next));
}

void ReduceHalves(Job& job, CommandOptions& options, std::size_t begin, std::size_t end);

/// Takes out the options from `begin` to `end`, or else those of their halves that can go.
void Reduce(Job& job, CommandOptions& options, std::size_t begin, std::size_t end) {
  CommandOptions left = Without(options, begin, end);
  if (Take(job, left, false)) {
    options = std::move(left);
  } else {
    ReduceHalves(job, options, begin, end);
  }
}

/// The later half first, so that the options in front keep their numbers.
void ReduceHalves(Job& job, CommandOptions& options, std::size_t begin, std::size_t end) {
  if (end - begin < 2) return;
  const std::size_t middle = begin + (end - begin) / 2;
  Reduce(job, options, middle, end);
  Reduce(job, options, begin, middle);
}

}  // namespace

/// The language too: that a source is preprocessed, its text has told.
void ReduceOptions(Job& job) {
  if (job.IsTest()) return;
  CommandOptions options = Options(job.form.command);
  if (Take(job, {}, true)) return;
  if (!job.form.command.language.empty() && !options.empty()) Take(job, options, true);
  const bool allAreKnown = job.form.command.language.empty();  // to be needed, some of them
  if (allAreKnown) return ReduceHalves(job, options, 0, options.size());
  if (!options.empty()) Reduce(job, options, 0, options.size());
}

}  // namespace snipwell
