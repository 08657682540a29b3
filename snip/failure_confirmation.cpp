#include "snip/failure_confirmation.h"

#include <cstdlib>
#include <iostream>
#include <string>

#include "compile/argument_vector.h"
#include "compile/run_compiler.h"
#include "failure/error_match.h"
#include "snip/isolation.h"
#include "text/file_helpers.h"

namespace snipwell {

int ConfirmFailure(const RunSettings& settings) {
  ArgumentVector vector(settings.arguments);
  ClaimFile(settings.errorFileName, vector.Get()[vector.Count() - 1]);
  const int status = RunCompiler(settings.compilerPath.c_str(), settings.errorFileName.c_str(),
                                 vector.Count(), vector.Get());
  if (status == Succeeded) return NothingToIsolate;
  if (status == NotStarted) {
    std::cout << "Could not run the compiler" << std::endl;
    std::exit(EXIT_FAILURE);
  }
  ErrorMatch match(settings.errorFileName, settings.criteriaFileName, settings.verbose);
  if (!match.Scan(true)) {
    std::cerr << "No errors were found that matched the given matching criteria" << std::endl;
    return NoMatchingError;
  }
  return Isolate(settings, vector, match);
}

}  // namespace snipwell
