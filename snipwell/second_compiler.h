#pragma once

#include "snipwell/job.h"

namespace snipwell {

/// For an error, finds a compiler that accepts the program: what is left is then still right, and
/// only the failing compiler wrong. Looks among those that are installed, other versions of the
/// same compiler first, unless one is given.
void FindSecondCompiler(Job& job);

/// Finds another second compiler than the one found before, one that accepts this form of the
/// program too, and has it asked from then on. False when there is none, or one was given.
bool ChangeSecondCompiler(Job& job, const Form& form);

}  // namespace snipwell
