#include "platform/clock.h"

namespace snipwell::platform {

std::time_t CurrentTime() { return std::time(nullptr); }

}  // namespace snipwell::platform
