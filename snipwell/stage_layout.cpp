#include "snipwell/layout.h"
#include "snipwell/stages.h"

namespace snipwell {

void LayOut(Job& job) {
  const Program program(job.form.text);
  if (!job.TakeIfItHolds(LaidOut(program))) {
    job.status.PrintDetail("laid out for people, the program fails otherwise");
  }
}

}  // namespace snipwell
