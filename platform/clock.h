#pragma once

#include <ctime>

namespace snipwell::platform {

/// The calendar time in whole seconds. It stands in a source of its own so that a test program can
/// be linked with a clock that it sets.
std::time_t CurrentTime();

}  // namespace snipwell::platform
