#include <utility>

#include "refine/search.h"
#include "snipwell/exit_status.h"
#include "snipwell/stages.h"

namespace snipwell {

namespace {

/// The program as the search begins with it: with as few blanks as the tokens need, if it fails so.
Program StartOf(Job& job) {
  Program program = job.trail.WithPlaces(job.form.text, Blanks::Needed);
  if (job.TakeIfItHolds(program.Render())) return program;
  return job.trail.WithPlaces(job.form.text, Blanks::AsWritten);
}

}  // namespace

void Refine(Job& job) {
  Program start = StartOf(job);
  const auto judge = job.workshop.JudgeOf(job.form, job.question);
  Search search(*judge, std::move(start), [&job, &search](const Program&, const std::string& text) {
    job.Take(text, search.PassName());
    job.ShowProgress();
  });
  job.stopped = !search.Run(Passes());
  job.wasInterrupted = judge->StoppedBy() != 0;
  job.trail.Follow(search.Result());
}

}  // namespace snipwell
