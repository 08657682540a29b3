#pragma once

#include <string>

#include "platform/child_set.h"

namespace snipwell::platform {

/// "status 3", "signal 9", "reason 2", and what ended it.
inline std::string Ended(const ChildEnd& end) {
  std::string told = end.signal != 0 ? "signal " + std::to_string(end.signal)
                                     : "status " + std::to_string(end.status);
  if (!end.started) told = "reason " + std::to_string(end.reason);
  return told + (end.timedOut ? ", timed out" : "") + (end.stopped ? ", stopped" : "");
}

}  // namespace snipwell::platform
