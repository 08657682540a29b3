#include "platform/interrupt.h"

#include <csignal>

namespace snipwell::platform {

InterruptIgnored::InterruptIgnored() { std::signal(SIGINT, SIG_IGN); }

InterruptIgnored::~InterruptIgnored() { std::signal(SIGINT, SIG_DFL); }

}  // namespace snipwell::platform
