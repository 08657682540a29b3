#include "snipwell/plain_text.h"
#include "snipwell/stages.h"

namespace snipwell {

namespace {

std::string Changed(const std::string& text) {
  std::string changed = text;
  for (const PlainTextStep& step : PlainTextSteps()) {
    if (auto next = step.change(changed)) changed = std::move(*next);
  }
  return changed;
}

bool Take(Job& job, const std::string& text) {
  if (!job.TakeIfItHolds(text)) return false;
  job.trail.Follow(text);
  return true;
}

}  // namespace

/// All steps at once, or else each by itself.
void MakePlain(Job& job) {
  const std::string all = Changed(job.form.text);
  if (all == job.form.text || Take(job, all)) return;
  for (const PlainTextStep& step : PlainTextSteps()) {
    if (const auto next = step.change(job.form.text)) Take(job, *next);
  }
}

}  // namespace snipwell
